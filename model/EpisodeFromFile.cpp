#include "model/EpisodeFromFile.h"

#include "platform/foundation/FileManager.h"

namespace clipwave {

std::string episodeTitleFromPath(std::string_view prefix, std::string_view path) {
  return std::string(prefix) + stringByDeletingPathExtension(lastPathComponent(path));
}

Vodcast* addEpisodeFromFile(ArrayController& vodcastController, std::string_view prefix,
                            std::string_view path) {
  auto* episode = static_cast<Vodcast*>(vodcastController.newObject());
  if (!episode) return nullptr;
  vodcastController.insertObjectAtArrangedObjectIndex(*episode, 0);
  episode->setValue("vcPath", path);
  episode->setValue("vcTitle", episodeTitleFromPath(prefix, path));
  return episode;
}

}  // namespace clipwave
