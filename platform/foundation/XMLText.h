// Text that is to become the content or an attribute's value of an XML element.
#pragma once

#include <string>
#include <string_view>

namespace clipwave {

// Where text stands, or is to stand.
enum class XMLPlace {
  Content,
  Attribute,
};

// Appends text escaped so that every character stands for itself, as a reader sees it: carriage returns, and
// in attributes line feeds and tabs too, become references. It holds only what XML can carry.
void appendEscapedXML(std::string& out, std::string_view literal, XMLPlace place);

// Appends text as a reader sees it in which all marks stand for themselves: line ends become line feeds, and
// in attributes blanks, as tabs do.
void appendLiteralXML(std::string& out, std::string_view text, XMLPlace place);

// The same for text that may hold references. Those to numbers, to XML's own names and to HTML's are
// resolved, or left out when XML cannot carry what they name; every other "&" stands for itself.
void appendResolvedXML(std::string& out, std::string_view text, XMLPlace place);

}  // namespace clipwave
