// What the web addresses of a member account have to be like. Pure rules.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clipwave {

// Addresses are as a person entered them.

// The host, with its port where that is not the scheme's own; "" for what is no address.
std::string hostAndPortOf(std::string_view address);
// Whether whoever reads the network between here and there can read along.
bool isReadableOnTheWay(std::string_view address);
// What is wrong with an address, in one sentence that does not repeat it: a password may stand in it. Nothing
// when it is an address of the web to which paths can be added.
std::optional<std::string> troubleWithMemberAddress(std::string_view address);

}  // namespace clipwave
