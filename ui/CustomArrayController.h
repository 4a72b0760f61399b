// The episode list, whose removal asks whether the movie files go to the Trash.
#pragma once

#include <string>
#include <string_view>

#include "platform/appkit/Application.h"
#include "platform/appkit/ArrayController.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/ProcessInfo.h"

namespace clipwave {

// The first free name in the Trash for a file: "clip.mov", then "clip.mov-1", "clip.mov-2" and so on.
std::string trashDestination(FileManager& files, std::string_view homeDirectory, std::string_view path);

class CustomArrayController final : public ArrayController {
 public:
  CustomArrayController(Application& application, FileManager& files, ProcessInfo& process);

  void removeObjectsAtArrangedObjectIndexes(const IndexSet& indexes) override;

 private:
  void moveToTrash(const std::string& path);

  Application& application_;
  FileManager& files_;
  ProcessInfo& process_;
};

}  // namespace clipwave
