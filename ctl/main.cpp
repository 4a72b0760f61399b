// clipwavectl: works on the library from the command line, through the very classes that the window uses.
#include <algorithm>
#include <iostream>

#include "ctl/Commands.h"
#include "platform/foundation/ProcessInfo.h"

namespace clipwave {

namespace {

void printHelp() {
  std::cout << "Usage: clipwavectl [--verbose] COMMAND [ARGUMENT...]\n\n"
               "Works on the Clipwave library from the command line.\n\n";
  for (const Command& command : commandTable()) {
    std::cout << "  " << command.name << (command.arguments.empty() ? "" : " ") << command.arguments
              << "\n      " << command.summary << ".\n";
  }
  std::cout << "\n  --verbose  show log lines on standard error\n"
               "  --help     show this, or with a command what it does\n"
               "  --version  show the version\n\n"
               "Exit status: 0 done, 1 failed, 2 wrong usage, 75 the library is open elsewhere.\n";
}

void printHelp(const Command& command) {
  std::cout << "Usage: clipwavectl " << command.name << (command.arguments.empty() ? "" : " ")
            << command.arguments << "\n\n"
            << command.summary << ".\n\n"
            << command.help;
}

int runCommand(const Command& command, const CommandLine& arguments, bool verbose) {
  if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
    printHelp(command);
    return kDone;
  }
  if (arguments.size() < command.fewestArguments) {
    return usageError("Usage: clipwavectl " + command.name + " " + command.arguments);
  }
  Companion companion(executablePath(), verbose);
  if (command.opensLibrary) {
    if (const ExitStatus opened = companion.openLibrary(); opened != kDone) return opened;
  }
  return command.run(companion, arguments);
}

int run(CommandLine arguments) {
  bool verbose = false;
  while (!arguments.empty() && arguments.front().starts_with("-")) {
    const std::string option = arguments.front();
    arguments.erase(arguments.begin());
    if (option == "--verbose") {
      verbose = true;
    } else if (option == "--help") {
      printHelp();
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
  for (const Command& command : commandTable()) {
    if (command.name == name) return runCommand(command, arguments, verbose);
  }
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
