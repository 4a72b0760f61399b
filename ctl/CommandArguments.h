// What a command takes on its command line, and what it was given.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace clipwave {

using CommandLine = std::vector<std::string>;

struct Argument {
  // What stands in its place, for those who complete it. Assignment: KEY=VALUE of the record named before;
  // Setting: KEY or KEY=VALUE of the user defaults.
  enum class Kind { Text, Channel, ChannelOrEpisode, File, Assignment, Setting };
  enum class Count { One, AtMostOne, OneOrMore, Any };

  std::string name;  // as the synopsis shows it
  Kind kind = Kind::Text;
  Count count = Count::One;

  bool isOptional() const { return count == Count::AtMostOne || count == Count::Any; }
  bool isRepeated() const { return count == Count::OneOrMore || count == Count::Any; }
};

struct Option {
  std::string name;        // with its hyphens
  std::string value = {};  // as the synopsis shows it; "" for an option that takes none
  std::string help;        // one line without a full stop
  int group = 0;           // of those in a group, but 0, only one may be said
  bool isRequired = false;
};

struct Command;

// A command line that is as its command wants it.
class CommandArguments {
 public:
  // Options are words that begin with two hyphens, up to a word of nothing else; a value follows as the next
  // word or behind "=", and the last value counts. Nothing after wrong usage was reported.
  static std::optional<CommandArguments> parse(const Command& command, const CommandLine& line);

  const std::vector<std::string>& words() const { return words_; }  // that are no options
  bool has(std::string_view option) const { return options_.contains(option); }
  std::optional<std::string> value(std::string_view option) const;
  bool isEmpty() const { return words_.empty() && options_.empty(); }

 private:
  // Takes the option at `place`, which is moved on to the last word that belongs to it; what is wrong
  // otherwise.
  std::string takeOption(const Command& command, const CommandLine& line, std::size_t& place);
  std::string troubleWith(const Command& command) const;

  std::vector<std::string> words_;
  std::map<std::string, std::string, std::less<>> options_;
};

// The option that the word says, be it with its value behind "="; null where there is none.
const Option* optionSaid(const std::vector<Option>& options, const std::string& word);

}  // namespace clipwave
