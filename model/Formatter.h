// The entry check of URL fields: nothing, or an http address.
#pragma once

#include <string_view>

#include "platform/appkit/Controls.h"

namespace clipwave {

class Formatter {
 public:
  // A TextField::Validator: true for "" and for text that begins with "http://".
  static bool isValidObject(const TextField& /*control*/, std::string_view proposed) {
    return proposed.empty() || proposed.starts_with("http://");
  }
};

}  // namespace clipwave
