// Makes the folders of a destination that are missing and tells the user what stands in their way; shared by
// all back-ends.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/appkit/Application.h"
#include "platform/foundation/Log.h"

namespace clipwave {

// The place where the folders are: a local volume or a server.
struct DestinationStore {
  // Whether anything exists at the path; sets `isDirectory` when something does.
  std::function<bool(const std::string& path, bool& isDirectory)> exists;
  // Makes one folder whose parent exists; false when it could not.
  std::function<bool(const std::string& path)> createDirectory;
};

enum class MountedVolumes { NotOfThisStore, MustExist };

// Walks down `directory`, making what is missing. With MustExist, a folder of "/Volumes" is never made: a
// volume that is not mounted has no folder there. False after an alert has told the user why; folders made
// before that stay.
bool makeDestinationFolders(Application& application, Log& log, const std::string& directory,
                            const DestinationStore& store, MountedVolumes volumes);

// The path of `filename` in `directory`; the bare name for the top level of a store, "".
std::string destinationFilePath(std::string_view directory, std::string_view filename);

}  // namespace clipwave
