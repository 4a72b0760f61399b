// Where a member's iDisk is on the web, and the URLs of what is on it. Internal to this room.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/foundation/Error.h"
#include "platform/foundation/WebAddress.h"

namespace clipwave {

class WebDAVAddress {
 public:
  // `text` is what a person entered: the URL of the iDisk's top level, with or without a "/" at its end.
  // Fails, in a sentence that does not repeat the text, when it is no web address, has a user name, a query
  // or a fragment, or holds what no URL can hold.
  static Result<WebDAVAddress> fromText(std::string_view text);

  const WebAddress& server() const { return server_; }
  // Of a path within the iDisk, in UTF-8 and not escaped; that of a folder ends in "/". Nothing for a path
  // with a component that would lead out of the iDisk, "." or "..", which escaping does not hinder.
  std::optional<std::string> urlOf(std::string_view path, bool isFolder) const;

 private:
  WebDAVAddress(WebAddress server, std::string top) : server_(std::move(server)), top_(std::move(top)) {}

  WebAddress server_;
  std::string top_;  // escaped, without "/" at its end
};

// The path as it is told to a person: from "/" on, without empty components.
std::string diskPath(std::string_view path);

}  // namespace clipwave
