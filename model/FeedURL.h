// The escaping of URLs in feeds, and the public URL of an episode's movie.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clipwave {

// Percent-escaped UTF-8 as RFC 2396 has it, with "=", "?" and "&" escaped as well.
std::string escapedURL(std::string_view text);
// The same, but an escape that is already there ("%" and two hexadecimal digits) stands.
std::string escapedURLKeepingEscapes(std::string_view text);
// A channel's feed URL: `vcURL` + "/" + `filename`, escaped; nothing when either is absent.
std::optional<std::string> feedURL(const std::optional<std::string>& vcURL,
                                   const std::optional<std::string>& filename);

}  // namespace clipwave
