// The part of Channel that keeps the folder of its recordings in step with its title.
#include <algorithm>

#include "model/Channel.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

constexpr const char* kFolderExistsMessage =
    "This channel name already exists at %@. Please select a different channel name or delete this folder.";
constexpr const char* kMoveFailedTitle = "Error moving channel!";
constexpr const char* kMoveFailedMessage =
    "There was an error moving %@ to %@.  Please check permissions on these folders.";

// Whether the title leads to a place of its own within the folder of all recordings. An empty one would be
// that folder itself, "../Pictures" another folder of the user's.
bool namesFolderInside(std::string_view title) {
  if (title.find('\0') != std::string_view::npos) return false;
  while (true) {
    const std::size_t slash = std::min(title.find('/'), title.size());
    const std::string_view component = title.substr(0, slash);
    if (component.empty() || component == "." || component == "..") return false;
    if (slash == title.size()) return true;
    title.remove_prefix(slash + 1);
  }
}

Error noFolderError(std::string_view title) {
  return Error{
      std::string(kTitleErrorDomain),
      kTitleNamesNoFolderError,
      filledIn(localized("Editing",
                         "The channel's movie folder cannot be named \"%1\". Please select a different "
                         "channel name."),
               {title}),
      {}};
}

}  // namespace

std::string channelMovieFolder(std::string_view homeDirectory, std::string_view title) {
  return std::string(homeDirectory) + "/Movies/Clipwave/" + std::string(title);
}

Error Channel::titleError(int code, const char* message, std::string_view argument) {
  const std::string domain(kTitleErrorDomain);
  return Error{domain, code, filledIn(host_.localizedString(message, domain), {argument}), {}};
}

Validation Channel::validateVcTitle(Value& proposed) {
  if (proposed == primitiveValue("vcTitle")) return Validation::ok();
  if (proposed.isNull()) return Validation::refused();
  const std::string title(proposed.stringValue());
  // Asked before anything on disk is: the message about an existing folder invites to delete it.
  if (!namesFolderInside(title)) {
    return Validation::refused(noFolderError(title));
  }
  const std::string target = channelMovieFolder(host_.process().homeDirectory(), title);
  if (host_.files().fileExistsAtPath(target)) {
    host_.log().write("file exists!");
    return Validation::refused(titleError(kTitleFolderExistsError, kFolderExistsMessage, target));
  }
  if (Validation moved = moveMovieFolder(title, target); !moved.valid) return moved;
  if (!canEditURLs()) setDotMacDefaultsWithNewTitle(title);
  return Validation::ok();
}

Validation Channel::moveMovieFolder(std::string_view title, const std::string& target) {
  const std::string current(primitiveValue("vcTitle").stringValue());
  if (!namesFolderInside(current)) return Validation::ok();
  const std::string source = channelMovieFolder(host_.process().homeDirectory(), current);
  bool isDirectory = false;
  if (!host_.files().fileExistsAtPath(source, &isDirectory) || !isDirectory) return Validation::ok();
  // With a "/" the folder would end up inside another channel's, and move away with that one.
  if (title.find('/') != std::string_view::npos) {
    return Validation::refused(noFolderError(title));
  }
  if (host_.files().movePath(source, target)) return Validation::ok();
  host_.showCriticalAlert(kMoveFailedTitle, filledIn(kMoveFailedMessage, {source, target}));
  return Validation::refused();
}

}  // namespace clipwave
