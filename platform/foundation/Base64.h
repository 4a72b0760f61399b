// Bytes as base64 text, for the property lists, the store and JSON.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clipwave {

// Appends the text in one line, padded with "=".
void appendBase64(std::string& out, std::string_view bytes);
// Nothing for text that is no padded base64; blanks and line breaks are none.
std::optional<std::string> parseBase64(std::string_view text);

}  // namespace clipwave
