#include "publish/SubscriptionLinks.h"

#include <algorithm>
#include <array>

#include "platform/foundation/URLs.h"

namespace clipwave {
namespace {

constexpr std::string_view kWebScheme = "http://";
constexpr std::string_view kSubscriptionScheme = "itpc://";

// White space and line breaks outside ASCII, as UTF-8.
constexpr std::array<std::string_view, 20> kWideSpaces = {
    "\u0085", "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006",
    "\u2007", "\u2008", "\u2009", "\u200A", "\u200B", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

std::size_t endOfLink(std::string_view text, std::size_t from) {
  for (std::size_t i = from; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte == ' ' || (byte >= '\t' && byte <= '\r')) return i;
    if (byte < 0x80) continue;
    const std::string_view rest = text.substr(i);
    if (std::any_of(kWideSpaces.begin(), kWideSpaces.end(),
                    [rest](std::string_view space) { return rest.starts_with(space); })) {
      return i;
    }
  }
  return text.size();
}

}  // namespace

std::string subscriptionLink(std::string_view feedURL) {
  if (!feedURL.starts_with(kWebScheme)) return std::string(feedURL);
  return std::string(kSubscriptionScheme).append(feedURL.substr(kWebScheme.size()));
}

std::optional<std::string> feedURLForAddress(std::string_view address) {
  const std::size_t colon = address.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string scheme = schemeOf(address);
  if (scheme == "http" || scheme == "https") return std::string(address);
  if (scheme != "itpc" && scheme != "pcast" && scheme != "feed") return std::nullopt;
  const std::string_view rest = address.substr(colon + 1);
  if (isWebURL(rest)) return std::string(rest);
  return "http:" + std::string(rest);
}

std::string reportText(const std::vector<std::string>& feedURLs) {
  std::string text;
  for (const std::string& url : feedURLs) text.append(subscriptionLink(url)).push_back('\n');
  return text;
}

std::vector<TextRange> findSubscriptionLinks(std::string_view text) {
  std::vector<TextRange> links;
  std::size_t end = 0;
  for (std::size_t start = text.find(kSubscriptionScheme); start != std::string_view::npos;) {
    const std::size_t behindScheme = start + kSubscriptionScheme.size();
    // A scheme within a link begins a link of its own, which ends where the outer one does.
    if (behindScheme > end) end = endOfLink(text, behindScheme);
    links.push_back({start, end - start});
    start = text.find(kSubscriptionScheme, behindScheme);
  }
  return links;
}

}  // namespace clipwave
