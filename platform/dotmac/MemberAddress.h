// What the web addresses of a member account have to be like. Pure rules.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clipwave {

// The host of a web URL, with its port where that is not the scheme's own; "" for any other text.
std::string hostAndPortOf(std::string_view url);
// Whether whoever reads the network between here and there can read along: the URL is one of plain http, and
// its host is not this machine itself.
bool isReadableOnTheWay(std::string_view url);
// What is wrong with an address that a person entered, in one sentence that does not repeat it: a password
// may stand in it. Nothing when it is an address of the web to which paths can be added.
std::optional<std::string> troubleWithMemberAddress(std::string_view url);

}  // namespace clipwave
