// What could stand in place of the last word of a command line, for the shells that complete it.
#pragma once

#include "ctl/CommandArguments.h"

namespace clipwave {

// Prints every candidate for the last word, one a line, mostly not filtered by what is typed so far (the
// shells do that): the text, and where there is more to be said of it, a tab and that. A line that begins
// with a tab stands for files; behind the tab is what comes before the file's name, such as "vcPath=".
// `words` follow the program's name; the last one may be empty. Nothing where the library is open elsewhere;
// what is wrong otherwise is told on standard error, which nobody is to see.
void printCompletions(const CommandLine& words);

}  // namespace clipwave
