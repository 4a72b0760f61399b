// Where a member's iDisk is on the web, and the URLs of what is on it. Internal to this room.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clipwave {

class WebDAVAddress {
 public:
  // `text` is what a person entered: the URL of the iDisk's top level, with or without a "/" at its end.
  // Nothing when it is no web address, or has a query or a fragment.
  static std::optional<WebDAVAddress> fromText(std::string_view text);

  // Of a path within the iDisk, in UTF-8 and not escaped; that of a folder ends in "/". Nothing for a path
  // with a component that would lead out of the iDisk, "." or "..", which escaping does not hinder.
  std::optional<std::string> urlOf(std::string_view path, bool isFolder) const;

 private:
  explicit WebDAVAddress(std::string top) : top_(std::move(top)) {}
  std::string top_;  // escaped, without "/" at its end
};

// The path as it is told to a person: from "/" on, without empty components.
std::string diskPath(std::string_view path);

}  // namespace clipwave
