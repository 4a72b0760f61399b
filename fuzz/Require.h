// What a fuzz target insists on: a broken promise ends the process as a finding, with what was broken.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace clipwave::fuzz {

// `about`: what the promise was broken by, a text that was written, say.
inline void require(bool holds, std::string_view promise, std::string_view about = {}) {
  if (holds) return;
  std::fprintf(stderr, "Broken: %.*s\n%.*s\n", static_cast<int>(promise.size()), promise.data(),
               static_cast<int>(about.size()), about.data());
  std::abort();
}

}  // namespace clipwave::fuzz
