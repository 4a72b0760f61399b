// Text that is to become the content or an attribute's value of an XML element. Internal to this room.
#pragma once

#include <string>
#include <string_view>

namespace clipwave {

// Appends text whose every character stands for itself.
void appendEscapedXML(std::string& out, std::string_view literal);

// Appends text that may hold references. Those to numbers, to XML's own names and to HTML's are resolved, or
// left out when XML cannot carry what they name; every other "&" stands for itself.
void appendRepairedXML(std::string& out, std::string_view text);

}  // namespace clipwave
