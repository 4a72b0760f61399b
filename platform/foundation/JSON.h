// Values written as JSON, for programs that read what the companion prints.
#pragma once

#include <string>

#include "platform/foundation/Value.h"

namespace clipwave {

// Indented by two spaces, keys in byte order, UTF-8 (bytes that are not become U+FFFD). Absent values,
// records and handles are null; dates are ISO 8601 in UTC; data is base64. No line break at the end.
std::string JSONFromValue(const Value& value);

}  // namespace clipwave
