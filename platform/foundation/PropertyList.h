// Property lists as XML: dictionaries, lists, strings, integers, reals, booleans, dates and data.
#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/Error.h"
#include "platform/foundation/Value.h"

namespace clipwave {

// Reads an XML property list. Anything else (no XML, another root, an unknown element, a key without a value)
// is kPropertyListReadCorruptError with the reason in its description. Integers outside 64 bits saturate.
Result<Value> propertyListFromData(std::string_view data);

// The XML text, keys in byte order, dates in UTC to the second; an absent value, a record or a handle inside
// a container is left out. Characters that XML cannot carry are left out of strings.
std::string dataFromPropertyList(const Value& value);

}  // namespace clipwave
