#include "model/FeedURL.h"

#include "platform/foundation/URLEscapes.h"

namespace clipwave {

std::string escapedURL(std::string_view text) {
  return stringByAddingPercentEscapes(text, "", "=?&");
}

std::string escapedURLKeepingEscapes(std::string_view text) {
  std::string result;
  std::size_t begin = 0;
  for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
    if (!beginsWithPercentEscape(text.substr(at))) continue;
    result += escapedURL(text.substr(begin, at - begin));
    result += text.substr(at, 3);
    begin = at + 3;
  }
  return result + escapedURL(text.substr(begin));
}

std::optional<std::string> feedURL(const std::optional<std::string>& vcURL,
                                   const std::optional<std::string>& filename) {
  if (!vcURL || !filename) return std::nullopt;
  return escapedURL(*vcURL + "/" + *filename);
}

}  // namespace clipwave
