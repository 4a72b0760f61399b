// The companion's commands: one table from which the dispatch and the help are made.
#pragma once

#include <string>
#include <vector>

#include "ctl/Companion.h"

namespace clipwave {

using CommandLine = std::vector<std::string>;

struct Command {
  std::string name;
  std::string arguments;  // as the synopsis shows them
  std::string summary;    // one line
  std::string help;       // the rest of --help; ends in a line break
  std::size_t fewestArguments;
  bool opensLibrary;
  ExitStatus (*run)(Companion& companion, const CommandLine& arguments);
};

const std::vector<Command>& commandTable();

// Reports wrong usage of a command.
ExitStatus usageError(const std::string& message);
// Reports a failure.
ExitStatus failure(const Error& error);
ExitStatus failure(const std::string& message);
// The absolute form of a path given on the command line.
std::string absolutePath(const std::string& path);

// One file of source a group of commands.
ExitStatus runChannels(Companion& companion, const CommandLine& arguments);
ExitStatus runShow(Companion& companion, const CommandLine& arguments);
ExitStatus runFeed(Companion& companion, const CommandLine& arguments);
ExitStatus runNew(Companion& companion, const CommandLine& arguments);
ExitStatus runOpen(Companion& companion, const CommandLine& arguments);
ExitStatus runAdd(Companion& companion, const CommandLine& arguments);
ExitStatus runSet(Companion& companion, const CommandLine& arguments);
ExitStatus runPublish(Companion& companion, const CommandLine& arguments);
ExitStatus runImport(Companion& companion, const CommandLine& arguments);
ExitStatus runMessage(Companion& companion, const CommandLine& arguments);
ExitStatus runRecord(Companion& companion, const CommandLine& arguments);
ExitStatus runAccount(Companion& companion, const CommandLine& arguments);
ExitStatus runDefaults(Companion& companion, const CommandLine& arguments);

}  // namespace clipwave
