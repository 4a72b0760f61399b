// A .Mac service in memory that fails as it is told to.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/dotmac/DotMacKit.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/RunLoop.h"

namespace clipwave::testing {

class FakeDotMac final : public DotMacKit {
 public:
  explicit FakeDotMac(RunLoop& runLoop) : runLoop_(runLoop) {}

  std::optional<std::string> member = "ann";  // none: no account is configured
  int credentials = kDMCredentialsAccepted;
  int daysLeft = DMMemberAccount::kNeverExpires;
  std::vector<std::string> openedPages;  // "sign-up", "renewal"
  std::string applicationID;             // of who asked last

  // What is on the iDisk, by paths from "/": of a file its bytes, of a folder nothing.
  std::map<std::string, std::optional<std::string>> disk = {{"/", std::nullopt}};
  std::map<std::string, int> failingUploads;  // by path: how they fail
  bool canCreateDirectories = true;
  // Uploads begun wait: for finishUpload, for an abort, or to be asked how far they are.
  bool uploadsWait = false;
  void finishUpload();
  void setProgress(std::int64_t transferred, std::int64_t length);
  bool isUploading() const { return upload_ != nullptr; }

  std::shared_ptr<DMMemberAccount> accountFromPreferencesWithApplicationID(std::string_view id) override;
  void signUpNewMember() override { openedPages.emplace_back("sign-up"); }
  std::unique_ptr<DMiDiskSession> iDiskSessionWithCredentials(
      const std::shared_ptr<DMMemberAccount>& account) override;

 private:
  class Account;
  class Session;
  class Transaction;

  static std::string placeOf(std::string_view path) {
    std::string place = "/";
    for (const std::string& component : pathComponents(path))
      place = stringByAppendingPathComponent(place, component);
    return place;
  }

  RunLoop& runLoop_;
  std::unique_ptr<FileManager> files_ = makeFileManager();
  std::shared_ptr<Transaction> upload_;  // the one that waits
};

}  // namespace clipwave::testing
