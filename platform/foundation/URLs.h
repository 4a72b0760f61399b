// The text of URLs: its form, its scheme, and the URL of a file. Pure rules.
#pragma once

#include <string>
#include <string_view>

namespace clipwave {

// Whether the text has the form of a URL: a scheme, a colon, and behind it something, of nothing but the
// characters that a URL may hold ("%" only before two hexadecimal digits).
bool isURL(std::string_view text);
// Whether the URL is one of the web: its scheme http or https, and a host behind it.
bool isWebURL(std::string_view url);
// What stands before the first colon, in lower case.
std::string schemeOf(std::string_view url);
// The file URL of an absolute path.
std::string fileURLWithPath(std::string_view path);

}  // namespace clipwave
