// Asks for a password at the terminal, or takes it from standard input.
#pragma once

#include <optional>
#include <string>

namespace clipwave {

// One line of standard input without its line break; nothing for an empty line and at the end of input. On a
// terminal `prompt` is shown on standard error, and what is typed is not shown. A signal that ends the
// process finds the terminal as it was before.
std::optional<std::string> readPassword(const std::string& prompt);

}  // namespace clipwave
