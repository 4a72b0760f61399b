#include "ui/CustomArrayController.h"

#include "model/LibraryModel.h"
#include "platform/foundation/Localization.h"

namespace clipwave {

namespace {

constexpr unsigned kTrashMode = 0700;

std::string trashFolder(std::string_view homeDirectory) {
  return std::string(homeDirectory) + "/.Trash";
}

// A dangling link is in the way of a name as much as a file is.
bool isTaken(FileManager& files, const std::string& path) {
  return files.fileAttributesAtPath(path, false).has_value();
}

}  // namespace

std::string trashDestination(FileManager& files, std::string_view homeDirectory, std::string_view path) {
  const std::string destination = trashFolder(homeDirectory) + "/" + lastPathComponent(path);
  std::string candidate = destination;
  for (int number = 1; isTaken(files, candidate); ++number) {
    candidate = destination + "-" + std::to_string(number);
  }
  return candidate;
}

CustomArrayController::CustomArrayController(Application& application, FileManager& files,
                                             ProcessInfo& process)
    : ArrayController(std::string(kVodcastEntity)),
      application_(application),
      files_(files),
      process_(process) {}

void CustomArrayController::removeObjectsAtArrangedObjectIndexes(const IndexSet& indexes) {
  const auto answer =
      application_.runCriticalAlertPanel("Trash Video File(s)?",
                                         "Do you want to move the movie(s) for this podcast to the trash or "
                                         "keep them in their current location?",
                                         "Trash", "Cancel", "Keep");
  if (answer == Alert::Answer::Alternate) return;
  if (answer == Alert::Answer::Default) {
    // All paths are read before a file moves: an episode that shares its movie with an earlier one would find
    // it again in the Trash, and send it there once more.
    std::vector<std::string> paths;
    for (const std::size_t index : indexes) {
      if (index >= arrangedObjects().size()) break;
      paths.emplace_back(arrangedObjects()[index]->value("vcPath").stringValue());
    }
    for (const std::string& path : paths) {
      if (!path.empty() && files_.fileExistsAtPath(path)) moveToTrash(path);
    }
  }
  ArrayController::removeObjectsAtArrangedObjectIndexes(indexes);
  setUndoActionName(indexes.size() == 1 ? localized("Undo", "Delete Episode")
                                        : localized("Undo", "Delete Episodes"));
}

void CustomArrayController::moveToTrash(const std::string& path) {
  const std::string trash = trashFolder(process_.homeDirectory());
  // A Trash that cannot be made shows in the move.
  if (!files_.fileExistsAtPath(trash)) (void)files_.createDirectoryAtPath(trash, kTrashMode);
  const std::string destination = trashDestination(files_, process_.homeDirectory(), path);
  if (files_.movePath(path, destination)) return;
  application_.runAlertPanel("Error Moving File",
                             "There was a problem moving the file " + destination + " movie to the trash.",
                             "OK");
}

}  // namespace clipwave
