// clipwavectl: works on the library from the command line, through the very classes that the window uses.
#include <algorithm>
#include <iostream>

#include "ctl/CommandHelp.h"
#include "ctl/CommandTable.h"
#include "ctl/Commands.h"
#include "ctl/Completion.h"
#include "platform/foundation/ProcessInfo.h"

namespace clipwave {

namespace {

int runCommand(const Command& command, const CommandLine& line, bool verbose) {
  // As far as it is no word that is only meant as one.
  if (std::find(line.begin(), std::ranges::find(line, "--"), "--help") != std::ranges::find(line, "--")) {
    std::cout << helpText(command);
    return kDone;
  }
  const auto arguments = CommandArguments::parse(command, line);
  if (!arguments) return kUsage;
  Companion companion(executablePath(), verbose);
  if (command.opensLibrary) {
    if (const ExitStatus opened = companion.openLibrary(); opened != kDone) return opened;
  }
  return command.run(companion, *arguments);
}

int run(CommandLine arguments) {
  bool verbose = false;
  while (!arguments.empty() && arguments.front().starts_with("-")) {
    const std::string option = arguments.front();
    arguments.erase(arguments.begin());
    if (option == "--complete") {
      printCompletions(arguments);
      return kDone;
    }
    if (option == "--verbose") {
      verbose = true;
    } else if (option == "--help") {
      std::cout << helpText();
      return kDone;
    } else if (option == "--version") {
      std::cout << "clipwavectl " CLIPWAVE_VERSION "\n";
      return kDone;
    } else {
      return usageError("There is no option " + option + ". See clipwavectl --help.");
    }
  }
  if (arguments.empty()) return usageError("Say a command. See clipwavectl --help.");
  const std::string name = arguments.front();
  arguments.erase(arguments.begin());
  if (const Command* command = commandNamed(name)) return runCommand(*command, arguments, verbose);
  return usageError("There is no command " + name + ". See clipwavectl --help.");
}

}  // namespace

}  // namespace clipwave

int main(int argc, char** argv) {
  const int status = clipwave::run({argv + 1, argv + argc});
  std::cout.flush();
  if (!std::cout) {
    clipwave::printError("clipwavectl", "The output could not be written.");
    return status == clipwave::kDone ? clipwave::kFailed : status;
  }
  return status;
}
