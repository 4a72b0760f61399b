#include "transfer/FileExistsPrompt.h"

#include "transfer/DestinationFolders.h"

namespace clipwave {
namespace {

Alert promptFor(const CopyEntry& entry) {
  return {.style = Alert::Style::Critical,
          .title = "File Exists!",
          .message = "The file " + entry.filename +
                     " already exists. Do you want to replace or keep the existing file?",
          .defaultButton = "Keep Existing",
          .alternateButton = "Replace",
          .otherButton = "Cancel",
          .checkBox = AlertCheckBox{.title = "Apply to all", .origin = {.x = 5, .y = 20}},
          .subject = entry.filename};
}

}  // namespace

std::optional<std::vector<CopyEntry>> askAboutExistingFiles(
    Application& application, const UserDefaultsController& defaults, const std::vector<CopyEntry>& files,
    std::string_view toDirectory, const std::function<bool(const std::string& path)>& exists) {
  if (defaults.boolean("noConfirm")) return files;
  std::optional<Alert::Answer> remembered;
  std::vector<CopyEntry> toBeCopied;
  for (const CopyEntry& entry : files) {
    if (exists(destinationFilePath(toDirectory, entry.filename))) {
      Alert::Answer answer;
      if (remembered) {
        answer = *remembered;
      } else {
        Alert prompt = promptFor(entry);
        answer = application.runAlert(prompt);
        if (prompt.checkBox && prompt.checkBox->isOn) remembered = answer;
      }
      if (answer == Alert::Answer::Other) return std::nullopt;
      if (answer == Alert::Answer::Default) continue;
    }
    toBeCopied.push_back(entry);
  }
  return toBeCopied;
}

}  // namespace clipwave
