// What --help prints, of the program and of each command.
#pragma once

#include <string>
#include <vector>

#include "ctl/CommandTable.h"

namespace clipwave {

// The option with its value.
std::string textOf(const Option& option);
// The command with all that it takes, in parts that belong together.
std::vector<std::string> synopsisPartsOf(const Command& command);
// The same as one line, as usage errors show it.
std::string synopsisOf(const Command& command);

// Both end in a line break, and have lines of 80 columns at the most.
std::string helpText();
std::string helpText(const Command& command);

}  // namespace clipwave
