#include "transfer/DestinationFolders.h"

#include <cstddef>
#include <vector>

#include "platform/foundation/FileManager.h"

namespace clipwave {
namespace {

bool refuseUnmountedVolume(Application& application, const std::string& directory) {
  application.runCriticalAlertPanel(
      "Volume not mounted",
      "The save path \"" + directory +
          "\" for this channel is on a network volume, but that volume has not been mounted.  Either change "
          "the folder that the channel gets saved to, or mount the remote volume and try again.",
      "OK");
  return false;
}

bool refuseFileInTheWay(Application& application, Log& log, const std::string& path) {
  log.write("cannot create a folder over file named " + path);
  application.runCriticalAlertPanel(
      "Cannot create folder!",
      "Could not create folder " + path +
          " because there is a file with the same name.  Rename or remove the file and try again.",
      "OK");
  return false;
}

bool refuseFailedCreation(Application& application, Log& log, const std::string& path) {
  log.write("error creating directory " + path);
  application.runCriticalAlertPanel(
      "Error creating directory!",
      "There was an error when trying to create a directory at " + path +
          ".  Check to make sure you have permissions to create a directory here.",
      "OK");
  return false;
}

}  // namespace

bool makeDestinationFolders(Application& application, Log& log, const std::string& directory,
                            const DestinationStore& store, MountedVolumes volumes) {
  const std::vector<std::string> components = pathComponents(directory);
  if (components.empty()) return true;
  std::string runningPath = components.front();
  for (std::size_t i = 1; i < components.size(); ++i) {
    runningPath = stringByAppendingPathComponent(runningPath, components[i]);
    bool isDirectory = false;
    const bool exists = store.exists(runningPath, isDirectory);
    const bool isMountPoint = i == 2 && components[1] == "Volumes" && volumes == MountedVolumes::MustExist;
    if (isMountPoint && !exists) return refuseUnmountedVolume(application, directory);
    if (exists && !isDirectory) return refuseFileInTheWay(application, log, runningPath);
    if (!exists && !store.createDirectory(runningPath)) {
      return refuseFailedCreation(application, log, runningPath);
    }
  }
  return true;
}

std::string destinationFilePath(std::string_view directory, std::string_view filename) {
  if (directory.empty()) return std::string(filename);
  return std::string(directory) + "/" + std::string(filename);
}

}  // namespace clipwave
