#include "platform/foundation/URLs.h"

#include "platform/foundation/ASCII.h"
#include "platform/foundation/URLEscapes.h"

namespace clipwave {
namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kSchemeCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-.";
constexpr std::string_view kURLCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~:/?#[]@!$&'()*+,;=%";

}  // namespace

bool isURL(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == text.npos || colon + 1 == text.size()) return false;
  const std::string_view scheme = text.substr(0, colon);
  if (scheme.empty() || kLetters.find(scheme[0]) == kLetters.npos) return false;
  if (scheme.find_first_not_of(kSchemeCharacters) != scheme.npos) return false;
  if (text.find_first_not_of(kURLCharacters) != text.npos) return false;
  for (std::size_t i = text.find('%'); i != text.npos; i = text.find('%', i + 1)) {
    if (!beginsWithPercentEscape(text.substr(i))) return false;
  }
  return true;
}

bool isWebURL(std::string_view url) {
  const std::string scheme = schemeOf(url);
  if (scheme != "http" && scheme != "https") return false;
  const std::string_view rest = url.substr(scheme.size());
  return rest.starts_with("://") && rest.size() > 3 && std::string_view("/?#").find(rest[3]) == rest.npos;
}

std::string schemeOf(std::string_view url) {
  return lowerCased(url.substr(0, url.find(':')));
}

std::string fileURLWithPath(std::string_view path) {
  // "?" would begin a query.
  return "file://" + stringByAddingPercentEscapes(path, "", "?");
}

}  // namespace clipwave
