#include "platform/dotmac/RealDotMacKit.h"

#include "platform/dotmac/DiskSession.h"
#include "platform/dotmac/MemberAccount.h"

namespace clipwave {
namespace {

class RealDotMacKit final : public DotMacKit {
 public:
  RealDotMacKit(DotMacServices services, DotMacOptions options)
      : services_(std::move(services)), options_(options) {}

  std::shared_ptr<DMMemberAccount> accountFromPreferencesWithApplicationID(std::string_view) override {
    auto settings = MemberSettings::fromDefaults(services_.defaults);
    if (!settings) return nullptr;
    return std::make_shared<MemberAccount>(services_, options_, std::move(*settings));
  }
  void signUpNewMember() override { openServicePage(services_, MemberSettings::kSignUpPage); }
  std::unique_ptr<DMiDiskSession> iDiskSessionWithCredentials(
      const std::shared_ptr<DMMemberAccount>& account) override {
    // Every account of this kit is of this one class.
    auto& member = static_cast<MemberAccount&>(*account);
    return std::make_unique<DiskSession>(services_, options_, member.server());
  }

 private:
  DotMacServices services_;
  DotMacOptions options_;
};

}  // namespace

std::unique_ptr<DotMacKit> makeDotMacKit(DotMacServices services, DotMacOptions options) {
  return std::make_unique<RealDotMacKit>(std::move(services), options);
}

}  // namespace clipwave
