// The member's account as it was configured when somebody asked for it. Internal to this room.
#pragma once

#include <memory>
#include <string>

#include "platform/dotmac/MemberSettings.h"
#include "platform/dotmac/RealDotMacKit.h"
#include "platform/dotmac/WebDAVServer.h"

namespace clipwave {

class MemberAccount final : public DMMemberAccount {
 public:
  MemberAccount(const DotMacServices& services, const DotMacOptions& options, MemberSettings settings)
      : services_(services), options_(options), settings_(std::move(settings)) {}

  void setIsSynchronous(bool) override {}
  std::string name() const override { return settings_.name; }
  int validateCredentials() override;
  std::string errorDescription() const override { return errorDescription_; }
  std::shared_ptr<DMTransaction> daysLeftUntilExpiration() override;
  void upgradeAccount() override;

  // The member's iDisk. The password is looked up when it is first asked for.
  std::shared_ptr<WebDAVServer> server();

 private:
  DotMacServices services_;
  DotMacOptions options_;
  MemberSettings settings_;
  std::shared_ptr<WebDAVServer> server_;
  std::string errorDescription_;
};

// Shows the page whose URL the settings hold under `key`; says so in the log where they hold none.
void openServicePage(const DotMacServices& services, std::string_view key);

}  // namespace clipwave
