#include "platform/dotmac/MemberAccount.h"

#include <cmath>
#include <optional>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/NaturalLanguageDate.h"

namespace clipwave {
namespace {

// A query that was answered before it was made.
class CompletedQuery final : public DMTransaction {
 public:
  explicit CompletedQuery(Value result) : result_(std::move(result)) {}
  std::int64_t bytesTransferred() const override { return 0; }
  std::int64_t contentLength() const override { return 0; }
  int errorType() const override { return 0; }
  void abort() override {}
  Value result() const override { return result_; }

 private:
  Value result_;
};

// Days that have begun count; reals are exact for microseconds of some centuries.
std::int64_t daysBetween(Date now, Date end) {
  constexpr double kDay = 86'400e6;
  const double microseconds = static_cast<double>(end.microseconds) - static_cast<double>(now.microseconds);
  return static_cast<std::int64_t>(std::ceil(microseconds / kDay));
}

}  // namespace

int MemberAccount::validateCredentials() {
  const WebDAVRequest request = WebDAVRequest::question("/", true);
  const WebDAVAnswer answer = server()->send(request, options_.answerTimeout);
  errorDescription_ = answer.failure ? failureLine(request, *answer.failure) : "";
  if (!answer.failure) return kDMCredentialsAccepted;
  services_.log.write(errorDescription_);
  // A web server that knows no such question: the address is wrong.
  if (answer.status == 405 || answer.status == 501) return kDMResourceNotFound;
  return answer.failure->code;
}

std::shared_ptr<DMTransaction> MemberAccount::daysLeftUntilExpiration() {
  const Value entry = services_.defaults.value(MemberSettings::kExpiryDate);
  const std::string_view text = trimmed(entry.stringValue());
  std::optional<Date> expiry = entry.dateValue();
  if (!expiry) expiry = dateWithNaturalLanguageString(text, TimeZone::defaultTimeZone());
  if (expiry) return std::make_shared<CompletedQuery>(daysBetween(services_.clock.now(), *expiry));
  if (!entry.isNull() && !(entry.isString() && text.empty()))
    services_.log.write("The membership's expiry \"" + std::string(text) + "\" (" +
                        MemberSettings::kExpiryDate + ") is no date; it counts as never.");
  return std::make_shared<CompletedQuery>(kNeverExpires);
}

void MemberAccount::upgradeAccount() {
  openServicePage(services_, MemberSettings::kRenewalPage);
}

std::shared_ptr<WebDAVServer> MemberAccount::server() {
  if (server_) return server_;
  const auto password = services_.secrets.password({settings_.address, settings_.name});
  if (!password)
    services_.log.write("The password of \"" + settings_.name +
                        "\" could not be read: " + password.error().localizedDescription);
  // Without a password the name alone is tried: a server may want no password, and one that does says so.
  HTTPCredentials credentials{settings_.name, password ? password->value_or("") : "",
                              settings_.mayGoUnencrypted};
  server_ = std::make_shared<WebDAVServer>(services_.runLoop, services_.http, settings_.address,
                                           std::move(credentials));
  return server_;
}

void openServicePage(const DotMacServices& services, std::string_view key) {
  const std::string url = services.defaults.string(key);
  if (!url.empty()) return services.openURL(url);
  services.log.write("No page to show: the default " + std::string(key) + " is not set.");
}

}  // namespace clipwave
