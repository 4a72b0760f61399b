// Records as JSON values and as plain text, and values read from a command line.
#pragma once

#include <string>
#include <string_view>

#include "model/Channel.h"
#include "model/Vodcast.h"
#include "platform/foundation/Error.h"
#include "platform/foundation/Value.h"

namespace clipwave {

// Every attribute by its key, derived ones included; absent is null. "id" besides; a channel has "image" and
// "children".
Value recordDictionary(ManagedObject& record);
// One "key: value" a line, without attributes that are absent or marks that are off.
std::string recordText(ManagedObject& record);
// The text with every run of white space as one blank, and none around it: titles of feeds may hold line
// breaks.
std::string oneLine(std::string_view text);
// A value as a person reads it.
std::string valueText(const Value& value);

// Whether a command line can give the attribute a value.
bool isSettable(const PropertyDescription& property);
// What `text` stands for as a value of that attribute: booleans are 0 and 1, dates ISO 8601; an empty text is
// the absent value. Fails for a key that is unknown or cannot be set and for text of the wrong type.
Result<Value> valueFromText(const EntityDescription& entity, std::string_view key, std::string_view text);

}  // namespace clipwave
