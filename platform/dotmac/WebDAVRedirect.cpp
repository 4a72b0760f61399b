#include "platform/dotmac/WebDAVRedirect.h"

#include <algorithm>

#include "platform/dotmac/WebDAVErrors.h"
#include "platform/foundation/WebAddress.h"

namespace clipwave {
namespace {

Error refused(std::string sentence) {
  return dotMacError(kDMResourceNotFound, std::move(sentence));
}

// A server that moved a folder redirects what is in it: what the old and the new URL end in alike is the path
// within the folder, and the rest is where the folder was and where it is.
std::string movedAlong(std::string_view destination, std::string_view from, std::string_view to) {
  const auto ends = std::mismatch(from.rbegin(), from.rend(), to.rbegin(), to.rend());
  std::size_t common = static_cast<std::size_t>(ends.first - from.rbegin());
  while (common > 0 && from[from.size() - common] != '/') --common;
  const std::string_view oldFolder = from.substr(0, from.size() - common);
  if (common == 0 || !destination.starts_with(oldFolder)) return std::string(destination);
  return std::string(to.substr(0, to.size() - common)) + std::string(destination.substr(oldFolder.size()));
}

}  // namespace

bool isRedirect(const HTTPResponse& response) {
  return response.status >= 300 && response.status < 400;
}

Result<void> followRedirect(HTTPRequest& request, const HTTPResponse& response) {
  const std::string answered = "The server answered " + std::to_string(response.status);
  const auto location = response.headers.find("location");
  const long status = response.status;
  if (status != 301 && status != 302 && status != 307 && status != 308)
    return refused(answered + ", which is no answer to such a request.");
  if (location == response.headers.end() || location->second.empty())
    return refused(answered + ", and not where to ask instead.");
  const std::string target = resolvedURL(location->second, request.url);
  const auto server = webAddressOf(target);
  if (!server) return refused(answered + ", with an address that leads out of the web.");
  if (server->origin != webAddressOf(request.url).value_or(WebAddress()).origin)
    return refused(answered + " and leads to \u201c" + server->origin +
                   "\u201d, where the password must not go; enter that address if it is the right one.");
  for (auto& [name, value] : request.headers)
    if (name == "Destination") value = movedAlong(value, request.url, target);
  request.url = target;
  return {};
}

}  // namespace clipwave
