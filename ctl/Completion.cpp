#include "ctl/Completion.h"

#include <algorithm>
#include <iostream>
#include <map>

#include "ctl/CommandTable.h"
#include "ctl/RecordLookup.h"
#include "ctl/RecordText.h"
#include "platform/foundation/ProcessInfo.h"

namespace clipwave {

namespace {

void offer(const std::string& text, const std::string& description = {}) {
  std::cout << text << (description.empty() ? "" : "\t") << oneLine(description) << '\n';
}

void offerFiles(const std::string& beginning = {}) {
  std::cout << '\t' << beginning << '\n';
}

// Options that are yet to be said, and --help.
void offerOptions(const std::vector<Option>& options, const CommandLine& said) {
  for (const Option& option : options) {
    const bool isSpent = std::ranges::any_of(said, [&](const std::string& word) {
      const Option* const other = optionSaid(options, word);
      return other != nullptr && (other == &option || (option.group != 0 && other->group == option.group));
    });
    if (!isSpent) offer(option.name, option.help);
  }
}

struct Named {
  std::string name;  // how a command line can mean the record
  ManagedObject* record;
};

// By the title; by the id where that is no title of its own, or would be read as an option.
std::vector<Named> named(const std::vector<ManagedObject*>& records) {
  const auto titleOf = [](ManagedObject* record) { return oneLine(record->value("vcTitle").stringValue()); };
  std::map<std::string, int> counts;
  for (ManagedObject* record : records) ++counts[titleOf(record)];
  std::vector<Named> result;
  for (ManagedObject* record : records) {
    const std::string title = titleOf(record);
    const bool isClear = !title.empty() && counts[title] == 1 && !title.starts_with('-');
    result.push_back({isClear ? title : std::to_string(record->objectID()), record});
  }
  return result;
}

void offer(const Named& record, const std::string& before = {}) {
  const std::string title = oneLine(record.record->value("vcTitle").stringValue());
  offer(before + record.name, title == record.name ? "" : title);
}

// The episodes, too, once it is clear of which channel.
void offerRecords(Companion& companion, const std::string& typed, bool withEpisodes) {
  const auto channels = named(companion.controller().channelController().arrangedObjects());
  const auto begun =
      std::ranges::count_if(channels, [&](const Named& channel) { return channel.name.starts_with(typed); });
  for (const Named& channel : channels) {
    offer(channel);
    const bool isMeant =
        typed.starts_with(channel.name + "/") || (begun == 1 && channel.name.starts_with(typed));
    if (!withEpisodes || !isMeant) continue;
    for (const Named& episode : named(channel.record->relatedObjects("children")))
      offer(episode, channel.name + "/");
  }
}

// What the key could become: the other state of a switch, or what it is now, to be changed.
void offerValues(const std::string& key, const Value& now) {
  if (now.kind() == Value::Kind::Boolean) return offer(key + "=" + (now.boolValue() ? "0" : "1"));
  const std::string text = valueText(now);
  if (!text.empty() && oneLine(text) == text) offer(key + "=" + text);
}

void offerAssignments(Companion& companion, const std::string& recordName, const std::string& typed) {
  const auto found = findRecord(companion.controller().channelController(), recordName);
  if (!found) return;
  ManagedObject& record = **found;
  const std::string key = typed.substr(0, typed.find('='));
  const bool hasKey = key.size() < typed.size();
  if (hasKey && (key == "vcPath" || key == "mediaPath")) return offerFiles(key + "=");
  for (const PropertyDescription& property : record.entity().properties()) {
    if (!isSettable(property)) continue;
    const Value now = record.value(property.name);
    if (!hasKey) {
      offer(property.name + "=", valueText(now));
    } else if (property.name == key) {
      offerValues(key, property.type == PropertyType::Boolean ? Value(now.boolValue()) : now);
    }
  }
}

void offerSettings(const UserDefaultsController& defaults, const std::string& typed) {
  const std::string key = typed.substr(0, typed.find('='));
  for (const auto& [name, value] : defaults.allValues()) {
    if (key.size() == typed.size()) offer(name, valueText(value));
    if (key.size() == typed.size() && key == name) offer(name + "=");
    if (key.size() < typed.size() && key == name) offerValues(name, value);
  }
}

void offerArgument(Argument::Kind kind, const CommandLine& before, const std::string& typed) {
  using Kind = Argument::Kind;
  if (kind == Kind::Text) return;
  if (kind == Kind::File) return offerFiles();
  Companion companion(executablePath(), false);
  if (kind == Kind::Setting) return offerSettings(companion.defaults(), typed);
  if (companion.openLibrary() != kDone) return;
  if (kind == Kind::Assignment) return offerAssignments(companion, before.front(), typed);
  offerRecords(companion, typed, kind == Kind::ChannelOrEpisode);
}

void offerForCommand(const Command& command, const CommandLine& line) {
  const std::string& typed = line.back();
  CommandLine words;
  CommandLine said;
  bool takesOptions = true;
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    if (!takesOptions || !line[i].starts_with("--")) {
      words.push_back(line[i]);
      continue;
    }
    takesOptions = line[i] != "--";
    const Option* const option = optionSaid(command.options, line[i]);
    if (option == nullptr) continue;
    said.push_back(line[i]);
    const bool valueFollows = !option->value.empty() && line[i].find('=') == std::string::npos;
    if (valueFollows && ++i + 1 == line.size()) return;  // a value that nobody here knows
  }
  const auto& wanted = command.arguments;
  const bool hasPlace = words.size() < wanted.size() || (!wanted.empty() && wanted.back().isRepeated());
  if (takesOptions && (typed.starts_with('-') || !hasPlace)) {
    offerOptions(command.options, said);
    if (line.size() == 1) offer("--help", "say what the command takes");
  } else if (hasPlace) {
    offerArgument(wanted[std::min(words.size(), wanted.size() - 1)].kind, words, typed);
  }
}

}  // namespace

void printCompletions(const CommandLine& words) {
  const auto name =
      std::ranges::find_if(words, [](const std::string& word) { return !word.starts_with('-'); });
  if (words.empty()) return;
  if (name == words.end()) {
    offerOptions(programDescription().options, {words.begin(), words.end() - 1});
  } else if (name + 1 == words.end()) {
    for (const Command& command : commandTable()) offer(command.name, command.summary);
  } else if (const Command* command = commandNamed(*name)) {
    offerForCommand(*command, {name + 1, words.end()});
  }
}

}  // namespace clipwave
