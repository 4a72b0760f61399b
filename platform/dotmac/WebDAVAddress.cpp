#include "platform/dotmac/WebDAVAddress.h"

#include "platform/foundation/ASCII.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/URLEscapes.h"
#include "platform/foundation/URLs.h"
#include "platform/foundation/WebAddress.h"

namespace clipwave {
namespace {

// Where the path of a web URL begins; its end when it has none.
std::size_t pathStart(std::string_view url) {
  return std::min(url.find_first_of("/?#", url.find("://") + 3), url.size());
}

}  // namespace

std::optional<WebDAVAddress> WebDAVAddress::fromText(std::string_view text) {
  text = trimmed(text);
  const std::size_t start = pathStart(text);
  const auto server = webAddressOf(text.substr(0, start));
  // A password in the address is nobody's to keep in the settings.
  if (!server || server->hasUserInfo || text.find_first_of("?#") != text.npos) return std::nullopt;
  // Blanks and letters as a person enters them are escaped; what is escaped already stands.
  std::string top = server->origin + stringByAddingPercentEscapes(text.substr(start), "%", "");
  while (top.ends_with('/')) top.pop_back();
  if (!isURL(top)) return std::nullopt;
  return WebDAVAddress(std::move(top));
}

std::optional<std::string> WebDAVAddress::urlOf(std::string_view path, bool isFolder) const {
  std::string url = top_;
  for (const std::string& component : pathComponents(path)) {
    if (component == "/") continue;
    if (component == "." || component == "..") return std::nullopt;
    url += "/" + stringByAddingPercentEscapes(component, "", ";/?:@&=+$,");
  }
  if (isFolder || url == top_) url += '/';
  return url;
}

std::string diskPath(std::string_view path) {
  std::string told;
  for (const std::string& component : pathComponents(path))
    if (component != "/") told += "/" + component;
  return told.empty() ? "/" : told;
}

}  // namespace clipwave
