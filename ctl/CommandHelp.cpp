#include "ctl/CommandHelp.h"

#include <algorithm>
#include <sstream>

namespace clipwave {

namespace {

constexpr std::size_t kColumns = 80;

// The parts with a blank between them, in lines that begin with `indent` blanks but for the first one, whose
// beginning is `text`.
std::string wrapped(std::string text, const std::vector<std::string>& parts, std::size_t indent) {
  std::size_t column = text.size();
  for (const std::string& part : parts) {
    const bool isAtStart = text.empty() || text.ends_with(' ');
    if (!isAtStart && column + 1 + part.size() > kColumns) {
      text += "\n" + std::string(indent, ' ');
      column = indent;
    } else if (!isAtStart) {
      text += ' ';
      ++column;
    }
    text += part;
    column += part.size();
  }
  return text + "\n";
}

std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

// A heading, and the terms below it in two columns.
std::string section(const std::string& heading, const std::vector<Term>& terms) {
  std::string text = "\n" + heading + "\n";
  std::size_t widest = 0;
  for (const Term& term : terms) widest = std::max(widest, term.name.size());
  for (const Term& term : terms) {
    const std::string name = "  " + term.name + std::string(widest - term.name.size() + 2, ' ');
    text += wrapped(name, wordsOf(term.meaning), name.size());
  }
  return text;
}

std::vector<Term> termsOf(const std::vector<Option>& options) {
  std::vector<Term> terms;
  for (const Option& option : options) terms.push_back({textOf(option), option.help});
  return terms;
}

std::string textOf(const Argument& argument) {
  const std::string text = argument.name + (argument.isRepeated() ? "..." : "");
  return argument.isOptional() ? "[" + text + "]" : text;
}

}  // namespace

std::string textOf(const Option& option) {
  return option.name + (option.value.empty() ? "" : " ") + option.value;
}

std::vector<std::string> synopsisPartsOf(const Command& command) {
  std::vector<std::string> parts = {command.name};
  for (const Argument& argument : command.arguments) parts.push_back(textOf(argument));
  for (auto option = command.options.begin(); option != command.options.end(); ++option) {
    std::string text = textOf(*option);
    // Those of a group stand side by side in the table.
    while (option->group != 0 && option + 1 != command.options.end() && (option + 1)->group == option->group)
      text += "|" + textOf(*++option);
    parts.push_back(option->isRequired ? text : "[" + text + "]");
  }
  return parts;
}

std::string synopsisOf(const Command& command) {
  std::string text;
  for (const std::string& part : synopsisPartsOf(command)) text += (text.empty() ? "" : " ") + part;
  return text;
}

std::string helpText() {
  const ProgramDescription& program = programDescription();
  std::string text = "Usage: clipwavectl [OPTION...] COMMAND [ARGUMENT...]\n\n" + program.summary + ".\n";
  std::vector<Term> commands;
  for (const Command& command : commandTable()) commands.push_back({command.name, command.summary});
  text += section("Commands:", commands) + section("Options:", termsOf(program.options)) +
          section("Exit status:", program.exitStatuses);
  return text + "\n\"clipwavectl COMMAND --help\" says what a command takes.\n";
}

std::string helpText(const Command& command) {
  std::string text = wrapped("Usage: clipwavectl ", synopsisPartsOf(command), 9);
  text += "\n" + command.summary + ".\n";
  for (const std::string& paragraph : command.help) text += "\n" + wrapped("", wordsOf(paragraph), 0);
  if (!command.options.empty()) text += section("Options:", termsOf(command.options));
  return text;
}

}  // namespace clipwave
