// The entry check of URL fields: nothing, or an http address.
#pragma once

#include <string_view>

namespace clipwave {

class Formatter {
 public:
  // Fits TextField::setValidator: true for "" and for text that begins with "http://".
  static bool isValidObject(std::string_view proposed) {
    return proposed.empty() || proposed.starts_with("http://");
  }
};

}  // namespace clipwave
