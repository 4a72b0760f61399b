// Percent-escaping of text for use in URLs.
#pragma once

#include <string>
#include <string_view>

namespace clipwave {

// RFC 2396: every byte of `text` (UTF-8) outside the legal URL characters becomes "%" and two upper-case
// hexadecimal digits; "%" and "#" are not legal characters. Of the others, those in
// `charactersToLeaveUnescaped` stand and those in `legalURLCharactersToBeEscaped` are escaped all the same.
// Both lists are ASCII.
std::string stringByAddingPercentEscapes(std::string_view text, std::string_view charactersToLeaveUnescaped,
                                         std::string_view legalURLCharactersToBeEscaped);

// Whether the text begins with "%" and two hexadecimal digits.
bool beginsWithPercentEscape(std::string_view text);

// Undoes percent-escapes; "%" without two hexadecimal digits stands.
std::string stringByRemovingPercentEscapes(std::string_view text);

}  // namespace clipwave
