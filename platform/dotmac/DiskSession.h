// A session on a member's iDisk. Internal to this room.
#pragma once

#include <memory>

#include "platform/dotmac/RealDotMacKit.h"
#include "platform/dotmac/WebDAVServer.h"

namespace clipwave {

class DiskSession final : public DMiDiskSession {
 public:
  DiskSession(const DotMacServices& services, const DotMacOptions& options,
              std::shared_ptr<WebDAVServer> server)
      : services_(services), options_(options), server_(std::move(server)) {}

  void setTransactionDelegate(std::shared_ptr<DMTransactionDelegate> delegate) override {
    delegate_ = std::move(delegate);
  }
  bool fileExistsAtPath(std::string_view path) override;
  bool fileExistsAtPath(std::string_view path, bool& isDirectory) override;
  bool createDirectoryAtPath(std::string_view path) override;
  std::shared_ptr<DMTransaction> putLocalFileAtPath(std::string_view localPath,
                                                    std::string_view toPath) override;

 private:
  // Logs what failed, unless it is that nothing is there.
  WebDAVAnswer ask(const WebDAVRequest& request);

  DotMacServices services_;
  DotMacOptions options_;
  std::shared_ptr<WebDAVServer> server_;
  std::shared_ptr<DMTransactionDelegate> delegate_;
};

}  // namespace clipwave
