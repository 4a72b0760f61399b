#include "ctl/CommandArguments.h"

#include <algorithm>

#include "ctl/CommandHelp.h"
#include "ctl/CommandTable.h"
#include "ctl/Commands.h"

namespace clipwave {

const Option* optionSaid(const std::vector<Option>& options, const std::string& word) {
  const std::string name = word.substr(0, word.find('='));
  const auto option = std::ranges::find(options, name, &Option::name);
  return option == options.end() ? nullptr : &*option;
}

std::optional<CommandArguments> CommandArguments::parse(const Command& command, const CommandLine& line) {
  CommandArguments arguments;
  bool takesOptions = true;
  for (std::size_t place = 0; place < line.size(); ++place) {
    if (!takesOptions || !line[place].starts_with("--")) {
      arguments.words_.push_back(line[place]);
    } else if (line[place] == "--") {
      takesOptions = false;
    } else if (const std::string trouble = arguments.takeOption(command, line, place); !trouble.empty()) {
      usageError(trouble);
      return std::nullopt;
    }
  }
  if (const std::string trouble = arguments.troubleWith(command); !trouble.empty()) {
    usageError(trouble);
    return std::nullopt;
  }
  return arguments;
}

std::optional<std::string> CommandArguments::value(std::string_view option) const {
  const auto found = options_.find(option);
  return found == options_.end() ? std::nullopt : std::optional(found->second);
}

std::string CommandArguments::takeOption(const Command& command, const CommandLine& line,
                                         std::size_t& place) {
  const std::string& word = line[place];
  const Option* const option = optionSaid(command.options, word);
  if (option == nullptr) {
    const std::string which = command.mayMeetSecrets ? "such option" : "option " + word;
    return command.name + " has no " + which + ". See clipwavectl " + command.name + " --help.";
  }
  const std::size_t equals = word.find('=');
  if (option->value.empty()) {
    if (equals != std::string::npos) return option->name + " takes no value.";
    options_[option->name];
    return {};
  }
  if (equals != std::string::npos) {
    options_[option->name] = word.substr(equals + 1);
    return {};
  }
  if (place + 1 == line.size()) return option->name + " takes a value: " + option->value + ".";
  options_[option->name] = line[++place];
  return {};
}

std::string CommandArguments::troubleWith(const Command& command) const {
  for (const Option& option : command.options) {
    if (option.isRequired && !has(option.name)) return "Say " + option.name + " " + option.value + ".";
    for (const Option& other : command.options) {
      if (&other == &option) break;
      const bool isEither = option.group != 0 && option.group == other.group;
      if (isEither && has(option.name) && has(other.name))
        return "Say " + other.name + " or " + option.name + ", not both.";
    }
  }
  const auto& wanted = command.arguments;
  const auto fewest = static_cast<std::size_t>(
      std::ranges::count_if(wanted, [](const Argument& argument) { return !argument.isOptional(); }));
  const bool isOpen = !wanted.empty() && wanted.back().isRepeated();
  if (words_.size() < fewest || (words_.size() > wanted.size() && !isOpen))
    return "Usage: clipwavectl " + synopsisOf(command);
  return {};
}

}  // namespace clipwave
