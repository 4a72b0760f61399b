// defaults: the user's settings, with the initial values behind them.
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iostream>

#include "ctl/Commands.h"
#include "ctl/RecordText.h"

namespace clipwave {

namespace {

constexpr double kLargestNumber = 1e15;  // every whole number up to here is one exactly

// The value that `text` stands for, of the kind that the key has now.
Result<Value> settingFromText(const Value& current, const std::string& key, const std::string& text) {
  if (text.empty()) return Value();
  switch (current.kind()) {
    case Value::Kind::Boolean:
      if (text == "0" || text == "1") return Value(text == "1");
      return cocoaError(kKeyValueValidationError, key + " takes 0 or 1, not \"" + text + "\".");
    case Value::Kind::Integer:
    case Value::Kind::Real: {
      double number = 0;
      const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
      if (error == std::errc() && end == text.data() + text.size() && std::abs(number) <= kLargestNumber) {
        const auto whole = static_cast<std::int64_t>(number);
        if (current.kind() == Value::Kind::Integer && static_cast<double>(whole) == number)
          return Value(whole);
        return Value(number);
      }
      return cocoaError(kKeyValueValidationError, key + " takes a number, not \"" + text + "\".");
    }
    default:
      return Value(text);
  }
}

}  // namespace

ExitStatus runDefaults(Companion& companion, const CommandArguments& arguments) {
  UserDefaultsController& defaults = companion.defaults();
  if (const auto& error = defaults.loadError()) return failure(*error);
  if (arguments.isEmpty()) {
    for (const auto& [key, value] : defaults.allValues()) std::cout << key << '=' << valueText(value) << '\n';
    return kDone;
  }
  // Everything is looked at before anything is set.
  std::vector<std::pair<std::string, Value>> settings;
  for (const std::string& argument : arguments.words()) {
    const std::size_t equals = argument.find('=');
    const std::string key = argument.substr(0, equals);
    const Value current = defaults.value(key);
    if (equals == 0) return usageError(argument + " is not KEY or KEY=VALUE.");
    // Every key that anything reads has an initial value: this one is misspelt.
    if (current.isNull()) return usageError("There is no default " + key + ".");
    if (equals == std::string::npos) continue;
    const auto value = settingFromText(current, key, argument.substr(equals + 1));
    if (!value) return usageError(value.error().localizedDescription);
    settings.emplace_back(key, *value);
  }
  for (const auto& [key, value] : settings) {
    if (const auto set = defaults.setValue(key, value); !set) return failure(set.error());
  }
  for (const std::string& argument : arguments.words()) {
    if (argument.find('=') == std::string::npos) std::cout << valueText(defaults.value(argument)) << '\n';
  }
  return kDone;
}

}  // namespace clipwave
