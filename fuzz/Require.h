// What a fuzz target insists on: a broken promise ends the process as a finding, with what was broken.
#pragma once

#include <cstdlib>
#include <initializer_list>
#include <iostream>
#include <string_view>

namespace clipwave::fuzz {

// `about`: what the promise was broken by, a text that was written, say.
inline void require(bool holds, std::string_view promise,
                    std::initializer_list<std::string_view> about = {}) {
  if (holds) return;
  std::cerr << "Broken: " << promise << '\n';
  for (const std::string_view text : about) std::cerr << text << '\n';
  std::abort();
}

inline void requireSame(std::string_view a, std::string_view b, std::string_view promise) {
  require(a == b, promise, {a, b});
}

}  // namespace clipwave::fuzz
