// The upload of one file to an iDisk, from the opening of the file to the word about how it ended. Internal
// to this room.
#pragma once

#include <memory>
#include <string>

#include "platform/dotmac/RealDotMacKit.h"
#include "platform/dotmac/WebDAVServer.h"

namespace clipwave {

// The file goes by a temporary name beside its destination and is moved there when it is whole. In progress
// it lives in what the run loop or the HTTP client is to call next, and ends with them.
class UploadTransaction final : public DMTransaction, public std::enable_shared_from_this<UploadTransaction> {
 public:
  UploadTransaction(const DotMacServices& services, const DotMacOptions& options,
                    std::shared_ptr<WebDAVServer> server, std::shared_ptr<DMTransactionDelegate> delegate,
                    std::string_view localPath, std::string_view toPath);

  void start();

  std::int64_t bytesTransferred() const override;
  std::int64_t contentLength() const override { return contentLength_; }
  int errorType() const override { return errorType_; }
  std::string errorDescription() const override { return errorDescription_; }
  void abort() override;
  Value result() const override { return {}; }

 private:
  enum class Phase { Starting, AskingDestination, Sending, Moving, CleaningUp, Ended };
  using Ending = void (DMTransactionDelegate::*)(DMTransaction&);
  using Step = void (UploadTransaction::*)(const WebDAVAnswer&);

  void openFile();
  void takeDestination(const WebDAVAnswer& answer);
  void sendFile();
  void takeSent(const WebDAVAnswer& answer);
  void takeMoved(const WebDAVAnswer& answer);
  void takeRemoved(const WebDAVAnswer& answer);

  // Sends the request; its answer goes to `next`.
  void ask(Phase phase, WebDAVRequest request, Step next);
  void fail(const std::string& why, int errorType);
  void failRequest(const WebDAVAnswer& answer);
  void note(const std::string& what);
  void beginCleanUp(Ending ending);
  void limitCleanUp(Seconds time);
  // Leaves nothing behind, then ends.
  void stopAndRemove();
  void removeTemporaryFile();
  void end(Ending ending);

  DotMacServices services_;
  DotMacOptions options_;
  std::shared_ptr<WebDAVServer> server_;
  std::shared_ptr<DMTransactionDelegate> delegate_;
  std::string localPath_;
  std::string toPath_;
  std::string temporaryPath_;

  Phase phase_ = Phase::Starting;
  Ending ending_ = nullptr;  // while it cleans up
  std::shared_ptr<FileHandle> file_;
  WebDAVRequest request_;  // the last that was sent
  std::shared_ptr<WebDAVExchange> exchange_;
  std::shared_ptr<Timer> cleanUpEnd_;
  bool mayHaveLeftFile_ = false;  // the temporary one
  bool isLocked_ = false;         // the same, while the server still waits for its rest
  bool mayStillAppear_ = false;   // the same, after it was removed
  std::int64_t bytesTransferred_ = 0;
  std::int64_t contentLength_ = 0;
  int errorType_ = 0;
  std::string errorDescription_;
};

}  // namespace clipwave
