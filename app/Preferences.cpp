#include "app/Preferences.h"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/dotmac/MemberAddress.h"
#include "platform/dotmac/MemberSettings.h"
#include "platform/foundation/Localization.h"

namespace clipwave {

namespace {

bool isNumber(const Value& value) {
  return value.kind() == Value::Kind::Integer || value.kind() == Value::Kind::Real;
}

std::string numberText(double number) {
  std::array<char, 64> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  return {text.data(), end};
}

std::optional<double> numberFromText(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (!std::isfinite(number) || number < 0) return std::nullopt;
  return number;
}

std::optional<std::string> troubleOf(const Result<void>& result) {
  return result ? std::nullopt : std::optional(result.error().localizedDescription);
}

}  // namespace

bool Preferences::has(std::string_view key) const {
  const Dictionary& initial = defaults_.initialValues();
  return key == kPassword || initial.empty() || initial.contains(key);
}

std::string Preferences::text(std::string_view key) const {
  if (key == kPassword) return {};
  const Value value = defaults_.value(key);
  return isNumber(value) ? numberText(value.doubleValue()) : std::string(value.stringValue());
}

SecretAccount Preferences::account() const {
  return {defaults_.string(MemberSettings::kAddress), defaults_.string(MemberSettings::kName)};
}

bool Preferences::hasPassword() const {
  const SecretAccount current = account();
  if (current.address.empty() || current.member.empty()) return false;
  const auto password = secrets_.password(current);
  return password && password->has_value();
}

std::optional<std::string> Preferences::troubleWithAddress(std::string_view key,
                                                           std::string_view address) const {
  const bool isServer = key == MemberSettings::kAddress;
  if (address.empty() || (!isServer && key != MemberSettings::kHomePage)) return std::nullopt;
  if (auto trouble = troubleWithMemberAddress(address)) return trouble;
  if (isServer && isReadableOnTheWay(address) && !defaults_.boolean(MemberSettings::kAllowsPlainHTTP))
    return localized("Account",
                     "Over plain http anyone on the way can read the password. Use https, or allow "
                     "unencrypted connections first.");
  return std::nullopt;
}

std::optional<std::string> Preferences::setText(std::string_view key, std::string_view text) {
  if (key == kPassword) return setPassword(text);
  if (auto trouble = troubleWithAddress(key, text)) return trouble;
  if (text.empty()) return set(key, {});
  const auto initial = defaults_.initialValues().find(key);
  if (initial == defaults_.initialValues().end() || !isNumber(initial->second)) return set(key, text);
  const std::optional<double> number = numberFromText(text);
  return number ? set(key, *number) : localized("Preferences", "Please enter a number that is not negative.");
}

std::optional<std::string> Preferences::setFlag(std::string_view key, bool flag) {
  return set(key, flag);
}

std::optional<std::string> Preferences::set(std::string_view key, const Value& value) {
  const SecretAccount before = account();
  if (auto trouble = troubleOf(defaults_.setValue(key, value))) return trouble;
  if (before == account() || before.address.empty() || before.member.empty()) return std::nullopt;
  // A password whose account goes would lie where nobody finds it.
  auto trouble = troubleOf(secrets_.setPassword(before, ""));
  passwordObservers_.call();
  return trouble;
}

std::optional<std::string> Preferences::setPassword(std::string_view password) {
  const SecretAccount current = account();
  if (current.address.empty() || current.member.empty())
    return localized("Account", "Please enter the server and the member name first.");
  auto trouble = troubleOf(secrets_.setPassword(current, password));
  passwordObservers_.call();
  return trouble;
}

Observation Preferences::observe(std::string_view key, std::function<void()> function) {
  return key == kPassword ? passwordObservers_.add(std::move(function))
                          : defaults_.observe(key, std::move(function));
}

}  // namespace clipwave
