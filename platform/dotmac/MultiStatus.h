// The answers in which a WebDAV server tells of several resources at once. Internal to this room.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace clipwave {

// What a multi-status answer says of one resource.
struct ResourceStatus {
  long status = 200;  // of the resource itself; that of single properties does not count
  bool isFolder = false;
};

// In the order of the answer; prefixes may be any. Nothing when the body is no multi-status.
std::optional<std::vector<ResourceStatus>> resourcesOfMultiStatus(std::string_view body);

}  // namespace clipwave
