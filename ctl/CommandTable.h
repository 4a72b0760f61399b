// The companion's commands: one table from which the dispatch, the parsing, the help, the manual page and the
// shells' completion are made.
#pragma once

#include <string>
#include <vector>

#include "ctl/CommandArguments.h"
#include "ctl/Companion.h"

namespace clipwave {

struct Command {
  std::string name;
  std::vector<Argument> arguments = {};  // optional ones come last, and at the most the last one is repeated
  std::vector<Option> options = {};
  std::string summary;            // one line without a full stop
  std::vector<std::string> help;  // paragraphs
  bool opensLibrary = false;
  bool mayMeetSecrets = false;  // wrong words of its command line are not repeated
  ExitStatus (*run)(Companion& companion, const CommandArguments& arguments);
};

const std::vector<Command>& commandTable();
// Null where there is none.
const Command* commandNamed(const std::string& name);

struct Term {
  std::string name;
  std::string meaning;
};

// What is to be said of the program as a whole.
struct ProgramDescription {
  std::string summary;                   // as a command's
  std::vector<std::string> description;  // paragraphs
  std::vector<Option> options;           // before the command
  std::vector<Term> exitStatuses;
  std::vector<Term> environment;
  std::vector<Term> files;
  std::vector<Term> examples;  // a command line and what it does
};

const ProgramDescription& programDescription();

}  // namespace clipwave
