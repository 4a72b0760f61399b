// Text that is to become the content or an attribute's value of an XML element.
#pragma once

#include <string>
#include <string_view>

namespace clipwave {

// Where escaped text is to stand.
enum class XMLPlace {
  Content,    // carriage returns become references, or a reader would make line feeds of them
  Attribute,  // so do line feeds and tabs, or a reader would make blanks of them
  Source,     // in text that is put right before a parser reads it; line ends and tabs stand as they are
};

// Appends text whose every character stands for itself. It holds only what XML can carry.
void appendEscapedXML(std::string& out, std::string_view literal, XMLPlace place);

// Appends text for XMLPlace::Source that may hold references. Those to numbers, to XML's own names and to
// HTML's are resolved, or left out when XML cannot carry what they name; every other "&" stands for itself.
void appendRepairedXML(std::string& out, std::string_view text);

}  // namespace clipwave
