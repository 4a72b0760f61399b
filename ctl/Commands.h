// What the companion's commands do, and how they report what is wrong.
#pragma once

#include <string>

#include "ctl/CommandArguments.h"
#include "ctl/Companion.h"

namespace clipwave {

// Reports wrong usage of a command.
ExitStatus usageError(const std::string& message);
// Reports a failure.
ExitStatus failure(const Error& error);
ExitStatus failure(const std::string& message);
// The absolute form of a path given on the command line.
std::string absolutePath(const std::string& path);

// One file of source a group of commands.
ExitStatus runChannels(Companion& companion, const CommandArguments& arguments);
ExitStatus runShow(Companion& companion, const CommandArguments& arguments);
ExitStatus runFeed(Companion& companion, const CommandArguments& arguments);
ExitStatus runNew(Companion& companion, const CommandArguments& arguments);
ExitStatus runOpen(Companion& companion, const CommandArguments& arguments);
ExitStatus runAdd(Companion& companion, const CommandArguments& arguments);
ExitStatus runSet(Companion& companion, const CommandArguments& arguments);
ExitStatus runPublish(Companion& companion, const CommandArguments& arguments);
ExitStatus runImport(Companion& companion, const CommandArguments& arguments);
ExitStatus runMessage(Companion& companion, const CommandArguments& arguments);
ExitStatus runRecord(Companion& companion, const CommandArguments& arguments);
ExitStatus runAccount(Companion& companion, const CommandArguments& arguments);
ExitStatus runDefaults(Companion& companion, const CommandArguments& arguments);

}  // namespace clipwave
