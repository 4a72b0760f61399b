// Uploads files to the member's iDisk, one at a time, after checking the membership.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/appkit/Application.h"
#include "platform/dotmac/DotMacKit.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/UserDefaultsController.h"
#include "transfer/CopyBackEnd.h"

namespace clipwave {

// What the iDisk back-end works with; all of it must outlive the back-end's last callback.
struct DotMacCopyServices {
  Application& application;
  RunLoop& runLoop;
  UserDefaultsController& defaults;
  Log& log;
  DotMacKit& dotMac;
};

// What an upload's transaction carries.
struct UploadContext {
  std::string command;  // "copyfile"
  CopyEntry source;
  std::string destination;
  std::deque<CopyEntry> filesToCopy;  // after this one
};

// Its troubles: why the service refused, and what an upload had to leave behind.
class CopyFiles final : public CopyBackEnd, public DMTransactionDelegate {
 public:
  // Tells the service who looks up the account.
  static constexpr std::string_view kApplicationID = "????";
  static constexpr Seconds kProgressInterval{0.5};

  // A back-end must be owned by a shared_ptr.
  explicit CopyFiles(DotMacCopyServices services);
  ~CopyFiles() override;

  // The configured member's name; none when no account is configured.
  static std::optional<std::string> dmusername(DotMacKit& dotMac);
  // Says that no account is configured; "OK" opens the page for signing up.
  static void offerToSignUp(Application& application, DotMacKit& dotMac);

  // Blocks while the service checks the membership and the destination. No directory: the iDisk's top level.
  bool copyFiles(const std::vector<CopyEntry>& files, const std::optional<std::string>& toDirectory,
                 CopyDelegate& sender) override;
  // copyAborted follows from the loop when files were being uploaded, and not at all otherwise. A file that
  // has just arrived is still reported before it.
  void abort() override;
  // What a person is told; writes to the log. Types that are not known read as kDMUnknownError.
  std::string errorMessageForType(int type);

  void transactionSuccessful(DMTransaction& transaction) override;
  void transactionHadError(DMTransaction& transaction) override;
  void transactionAborted(DMTransaction& transaction) override;

 private:
  bool isMembershipValid();
  bool makeFolders(DMiDiskSession& session, const std::string& toDirectory);
  void copyNextItemInArray(std::deque<CopyEntry> files, const std::string& toDirectory);
  void updateCopy(const std::weak_ptr<DMTransaction>& transaction);
  void stopTimer();
  void noteTrouble(std::string sentence);
  std::unique_ptr<DMiDiskSession> openSession();
  std::shared_ptr<CopyFiles> self() { return std::static_pointer_cast<CopyFiles>(shared_from_this()); }
  // The delegate for its last callback.
  CopyDelegate* lastWord() { return std::exchange(delegate_, nullptr); }

  DotMacCopyServices services_;
  std::shared_ptr<DMMemberAccount> ma_;
  // Neither is owned: an upload in progress and the timer that reports it own the back-end.
  std::weak_ptr<DMTransaction> currentTransaction_;
  std::weak_ptr<Timer> timer_;
  bool isAborted_ = false;
};

}  // namespace clipwave
