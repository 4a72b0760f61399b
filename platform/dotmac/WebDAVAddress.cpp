#include "platform/dotmac/WebDAVAddress.h"

#include <algorithm>

#include "platform/dotmac/WebDAVErrors.h"
#include "platform/foundation/ASCII.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/URLEscapes.h"
#include "platform/foundation/URLs.h"

namespace clipwave {
namespace {

Error refused(std::string sentence) {
  return dotMacError(kDMResourceNotFound, std::move(sentence));
}

// Where the path of a web URL begins; its end when it has none.
std::size_t pathStart(std::string_view url) {
  return std::min(url.find_first_of("/?#", url.find("://") + 3), url.size());
}

}  // namespace

Result<WebDAVAddress> WebDAVAddress::fromText(std::string_view text) {
  text = trimmed(text);
  const std::size_t start = pathStart(text);
  auto server = webAddressOf(text.substr(0, start));
  if (!server)
    return refused(
        localized("Account", "An address begins with http:// or https:// and the name of a host."));
  // A password in the address is nobody's to keep in the settings.
  if (server->hasUserInfo)
    return refused(localized(
        "Account",
        "An address with a user name or a password in it is not kept; say the address without them."));
  if (text.find_first_of("?#") != text.npos)
    return refused(localized("Account", "An address holds no “?” and no “#”."));
  // Blanks and letters as a person enters them are escaped; what is escaped already stands.
  std::string top = server->origin + stringByAddingPercentEscapes(text.substr(start), "%", "");
  while (top.ends_with('/')) top.pop_back();
  if (!isURL(top))
    return refused(localized("Account", "The address holds characters that no address can hold."));
  return WebDAVAddress(std::move(*server), std::move(top));
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
