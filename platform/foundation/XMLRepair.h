// Reads XML text that may be broken, keeping its text. Internal to this room.
#pragma once

#include <memory>
#include <string_view>

#include "platform/foundation/Error.h"
#include "platform/foundation/XMLTree.h"

namespace clipwave {

// The element that `text` holds, which is fit for XML, without what stands around it: bare "&" and "<" stand
// for themselves, HTML's named characters are resolved, attributes may lack their quotes and are kept once,
// missing end tags are supplied and stray ones dropped. An element whose end tag is missing ends where its
// text does, or before the next element of its own name, or with its parent. Comments, instructions and
// document types are left out, and so are tags below kMostXMLLevels and attributes beyond
// kMostXMLAttributes. Fails when there is no element, when there are more than kMostXMLNodes, or when far
// more of the text is tags that come to nothing than could be meant. Takes time in proportion to the text.
Result<std::unique_ptr<XMLTree>> readBrokenXML(std::string_view text);

}  // namespace clipwave
