// Reads well-formed XML text. Internal to this room.
#pragma once

#include <memory>
#include <string>

#include "platform/foundation/Error.h"
#include "platform/foundation/XMLTree.h"

namespace clipwave {

// The tree of a document in UTF-8 (without a byte-order mark), or the reason why it is not read, with its
// line where that is known: it is not well-formed, refers to an entity that XML does not predefine, or goes
// beyond the bounds that XMLDocument states. What a document type declares is passed over. With `fromAnyone`,
// references to Latin-1's control characters are such a reason too: their authors meant Windows-1252's.
// Throws std::bad_alloc.
Result<std::unique_ptr<XMLTree>> readXML(const std::string& text, bool fromAnyone);

}  // namespace clipwave
