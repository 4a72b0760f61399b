// The commands that change the library: new, open, add, set.
#include <algorithm>
#include <iostream>
#include <optional>

#include "ctl/Commands.h"
#include "ctl/RecordLookup.h"
#include "ctl/RecordText.h"
#include "platform/coredata/UndoManager.h"

namespace clipwave {

namespace {

// Commits a value as an edited field would; false after the refusal was reported.
bool commit(Companion& companion, ManagedObject& record, const std::string& key, const Value& value) {
  const Validation validation = record.commitValue(key, value);
  if (validation.valid) return true;
  if (validation.error) {
    const Error shown = companion.delegate().willPresentError(*validation.error);
    printError("clipwavectl", shown.localizedDescription);
  } else {
    printError("clipwavectl", key + " cannot be set to \"" + valueText(value) + "\".");
  }
  return false;
}

// Whether there is a movie file at the path; false was reported.
bool isMovie(Companion& companion, const std::string& path) {
  bool isDirectory = false;
  if (!companion.files().fileExistsAtPath(path, &isDirectory) || isDirectory) {
    printError("clipwavectl", "There is no file \"" + path + "\".");
    return false;
  }
  if (!companion.controller().episodeListEditing().isMovieFile(path)) {
    printError("clipwavectl", "\"" + path + "\" is not a movie file that Clipwave knows.");
    return false;
  }
  return true;
}

// The absolute paths of the movie files from `first` on; nothing after the first one that is none was
// reported.
std::optional<std::vector<std::string>> moviePaths(Companion& companion, const CommandLine& words,
                                                   std::size_t first) {
  std::vector<std::string> paths;
  for (std::size_t i = first; i < words.size(); ++i) {
    paths.push_back(absolutePath(words[i]));
    if (!isMovie(companion, paths.back())) return std::nullopt;
  }
  return paths;
}

// Prints the title of the one channel that is selected now.
void printSelectedTitle(Companion& companion) {
  for (ManagedObject* channel : companion.controller().channelController().selectedObjects()) {
    std::cout << channel->value("vcTitle").stringValue() << '\n';
  }
}

}  // namespace

ExitStatus runNew(Companion& companion, const CommandArguments& arguments) {
  ManagedObject* channel = companion.controller().channelController().add();
  companion.runLoop().runUntilIdle();
  for (const std::string& title : arguments.words())
    if (!commit(companion, *channel, "vcTitle", Value(title))) return kFailed;
  const ExitStatus status = companion.finish();
  if (status == kDone) printSelectedTitle(companion);
  return status;
}

ExitStatus runOpen(Companion& companion, const CommandArguments& arguments) {
  const auto paths = moviePaths(companion, arguments.words(), 0);
  if (!paths) return kFailed;
  companion.delegate().openFiles(*paths);
  const ExitStatus status = companion.finish();
  if (status == kDone) printSelectedTitle(companion);
  return status;
}

ExitStatus runAdd(Companion& companion, const CommandArguments& arguments) {
  ArrayController& channels = companion.controller().channelController();
  const auto channel = findChannel(channels, arguments.words().front());
  if (!channel) return failure(channel.error());
  const auto paths = moviePaths(companion, arguments.words(), 1);
  if (!paths) return kFailed;

  const auto& arranged = channels.arrangedObjects();
  const auto row = static_cast<int>(std::find(arranged.begin(), arranged.end(), *channel) - arranged.begin());
  Array files;
  for (const std::string& path : *paths) files.emplace_back(path);
  DraggingInfo drag;
  drag.draggingPasteboard.declareTypes({std::string(NSFilenamesPboardType)});
  drag.draggingPasteboard.setPropertyList(std::move(files), NSFilenamesPboardType);
  if (!companion.controller().episodeListEditing().acceptDrop(companion.interface().channelTableView, drag,
                                                              row, TableDropOperation::On)) {
    printError("clipwavectl", "The files could not be added.");
    return kFailed;
  }
  return companion.finish();
}

namespace {

struct Assignment {
  std::string key;
  Value value;
};

// What the command line says of a key, the last time that it does.
std::optional<std::string> textForKey(const CommandLine& arguments, const std::string& key) {
  std::optional<std::string> text;
  for (const std::string& argument : arguments)
    if (argument.starts_with(key + "=")) text = argument.substr(key.size() + 1);
  return text;
}

// Whether the command line may set the record's publish method as it says; what is wrong was reported.
bool isMethodAcceptable(ManagedObject& record, const CommandLine& arguments) {
  const auto tag = textForKey(arguments, "protocolTag");
  if (!tag || record.entity().property("protocolTag") == nullptr) return true;
  if (*tag != "1" && *tag != "2") {
    usageError("protocolTag takes 1 (a folder) or 2 (.Mac), not \"" + *tag + "\".");
    return false;
  }
  const bool isMethodAlready = record.value("protocolTag").integerValue() == kFolderMethod;
  if (*tag == "2" || isMethodAlready || !textForKey(arguments, "mediaPath").value_or("").empty()) return true;
  usageError("protocolTag=1 takes the folder to publish to: say mediaPath=FOLDER in the same command.");
  return false;
}

// Whether the channel publishes onto the iDisk once the command line is done.
bool willGoToDotMac(ManagedObject& record, const CommandLine& arguments) {
  if (const auto tag = textForKey(arguments, "protocolTag")) return *tag == "2";
  return record.value("protocolTag").integerValue() == kDotMacMethod;
}

// As when the method is chosen for the channel in the window, where the folder chosen is `folder`. False
// after it was reported that there is no .Mac account.
bool setPublishMethod(Companion& companion, ManagedObject& channel, int tag, const OpenPanelAnswer& folder) {
  if (tag == kFolderMethod && folder.empty()) return true;  // that is its method already
  const Value before = channel.value("protocolTag");
  companion.controller().channelController().setSelectedObjects({&channel});
  companion.shell().setChosenPaths(folder);
  // Nobody is taken to the page for signing up.
  companion.shell().setAnswerer(declineAtTerminal);
  companion.interface().protocolPopUp.chooseItemWithTag(tag);
  companion.shell().setAnswerer(nullptr);
  if (channel.value("protocolTag") == Value(tag)) return true;
  // The channel has fallen back to the folder, and stays so.
  if (!(channel.value("protocolTag") == before)) companion.finish();
  return false;
}

// As when the movie is chosen for the episode in the window: what was known of the one before goes.
void setMovie(Companion& companion, Vodcast& episode, const Value& path) {
  companion.controller().channelController().setSelectedObjects({episode.parent()});
  companion.controller().vodcastController().setSelectedObjects({&episode});
  EpisodeListEditing& editing = companion.controller().episodeListEditing();
  if (path.isNull()) {
    editing.clearMovie();
  } else {
    editing.addMovieSheetEnded({std::string(path.stringValue())});
  }
}

// Sets one value after the other; false after the first refusal was reported.
bool assign(Companion& companion, ManagedObject& record, const std::vector<Assignment>& assignments) {
  OpenPanelAnswer folder;
  for (const Assignment& assignment : assignments)
    if (assignment.key == "mediaPath" && !assignment.value.isNull())
      folder = {std::string(assignment.value.stringValue())};
  return std::all_of(assignments.begin(), assignments.end(), [&](const Assignment& assignment) {
    if (assignment.key == "protocolTag") {
      return setPublishMethod(companion, record, static_cast<int>(assignment.value.integerValue()), folder);
    }
    if (assignment.key == "vcPath") {
      setMovie(companion, static_cast<Vodcast&>(record), assignment.value);
      return true;
    }
    return commit(companion, record, assignment.key, assignment.value);
  });
}

// The keys whose values can be refused come first, and of these the title last: it moves a folder on disk. A
// movie comes before the values that it clears.
int rank(const Assignment& assignment) {
  if (assignment.key == "protocolTag") return 0;
  if (assignment.key == "vcTitle") return 1;
  return assignment.key == "vcPath" ? 2 : 3;
}

}  // namespace

ExitStatus runSet(Companion& companion, const CommandArguments& arguments) {
  const CommandLine& words = arguments.words();
  const auto record = findRecord(companion.controller().channelController(), words.front());
  if (!record) return failure(record.error());
  if (!isMethodAcceptable(**record, words)) return kUsage;
  const bool goesToDotMac = willGoToDotMac(**record, words);
  std::vector<Assignment> assignments;
  for (auto word = words.begin() + 1; word != words.end(); ++word) {
    const std::size_t equals = word->find('=');
    if (equals == std::string::npos || equals == 0) return usageError(*word + " is not KEY=VALUE.");
    const std::string key = word->substr(0, equals);
    std::string text = word->substr(equals + 1);
    // A path of this machine is meant as seen from here, not from wherever the next run is started.
    const bool isPath = key == "vcPath" || (key == "mediaPath" && !goesToDotMac);
    if (isPath && !text.empty()) text = absolutePath(text);
    const auto value = valueFromText((*record)->entity(), key, text);
    if (!value) return usageError(value.error().localizedDescription);
    if (key == "vcPath" && !text.empty() && !isMovie(companion, text)) return kFailed;
    assignments.push_back({key, *value});
  }
  std::stable_sort(assignments.begin(), assignments.end(),
                   [](const Assignment& a, const Assignment& b) { return rank(a) < rank(b); });
  if (!assign(companion, **record, assignments)) return kFailed;
  return companion.finish();
}

}  // namespace clipwave
