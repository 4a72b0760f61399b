// The line in which a terminal shows how far a publish run is.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace clipwave {

// A run's status line in at most `columns` columns: "NAME completed N" as name, bar and percentage, any other
// line as it is. A text that is too long is cut between characters and ends in "..."; what would steer the
// terminal becomes "?". Characters that may be wide count as two columns.
std::string progressText(std::string_view statusLine, std::size_t columns);

// Of the terminal behind standard error; 80 where it does not say.
std::size_t terminalColumns();

}  // namespace clipwave
