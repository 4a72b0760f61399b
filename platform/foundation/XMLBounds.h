// The bounds on XML that anyone may send, and how text is refused. Internal to this room.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/foundation/Error.h"

namespace clipwave {

// No document is larger in UTF-8: twice the largest feed that is loaded, as its characters may take more
// bytes there.
inline constexpr std::size_t kMostXMLBytes = std::size_t{128} << 20;
// More than a feed of 64 MiB takes whose elements say anything. A node is an element, an attribute, or an
// instruction ahead of the root.
inline constexpr std::size_t kMostXMLNodes = 2'000'000;
// More attributes than any real tag carries; the parser compares each attribute of a tag with all the others.
inline constexpr std::size_t kMostXMLAttributes = 256;
// Deeper than any real document.
inline constexpr std::size_t kMostXMLLevels = 200;
// The parser builds content models and lists of attributes from it that we never look at.
inline constexpr std::size_t kLongestXMLDocumentType = 65'536;
// The parser's dictionary does not grow with its names and gets slow.
inline constexpr int kMostXMLNames = 65'536;

inline Error refusedXML(std::string_view reason) {
  return cocoaError(kPropertyListReadCorruptError, std::string(reason));
}

}  // namespace clipwave
