#include "ctl/RecordLookup.h"

#include <charconv>
#include <optional>
#include <vector>

#include "ctl/RecordText.h"

namespace clipwave {

namespace {

std::optional<std::int64_t> number(std::string_view text) {
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// `noun` says what is looked for, in the error's words.
Result<ManagedObject*> findAmong(const std::vector<ManagedObject*>& records, std::string_view name,
                                 const std::string& noun) {
  std::vector<ManagedObject*> named;
  std::vector<ManagedObject*> shownSo;
  for (ManagedObject* record : records) {
    const std::string_view title = record->primitiveValue("vcTitle").stringValue();
    if (title == name && !name.empty()) named.push_back(record);
    if (oneLine(title) == name && !name.empty()) shownSo.push_back(record);
  }
  if (named.empty()) named = shownSo;
  if (named.size() == 1) return named.front();
  if (named.size() > 1) {
    std::string message =
        "More than one " + noun + " is titled \"" + std::string(name) + "\". Name it by its id:";
    for (const ManagedObject* record : named) message += " " + std::to_string(record->objectID());
    return cocoaError(kFileReadUnknownError, message);
  }
  if (const auto id = number(name)) {
    for (ManagedObject* record : records) {
      if (record->objectID() == *id) return record;
    }
  }
  return cocoaError(kFileNoSuchFileError, "There is no " + noun + " \"" + std::string(name) + "\".");
}

}  // namespace

Result<Channel*> findChannel(ArrayController& channels, std::string_view name) {
  const auto found = findAmong(channels.content(), name, "channel");
  if (!found) return found.error();
  return static_cast<Channel*>(*found);
}

Result<Vodcast*> findEpisode(Channel& channel, std::string_view name) {
  const auto found = findAmong(channel.relatedObjects("children"), name, "episode");
  if (!found) return found.error();
  return static_cast<Vodcast*>(*found);
}

Result<ManagedObject*> findRecord(ArrayController& channels, std::string_view name) {
  const auto isAmbiguous = [](const Error& error) { return error.code != kFileNoSuchFileError; };
  const auto whole = findChannel(channels, name);
  if (whole) return static_cast<ManagedObject*>(*whole);
  Error error = whole.error();
  for (std::size_t slash = name.find('/'); slash != std::string_view::npos && !isAmbiguous(error);
       slash = name.find('/', slash + 1)) {
    const auto channel = findChannel(channels, name.substr(0, slash));
    const auto episode =
        channel ? findEpisode(**channel, name.substr(slash + 1)) : Result<Vodcast*>(channel.error());
    if (episode) return static_cast<ManagedObject*>(*episode);
    // What is wrong within a channel says more than that the whole is none.
    if (channel || isAmbiguous(channel.error())) error = episode.error();
  }
  return error;
}

}  // namespace clipwave
