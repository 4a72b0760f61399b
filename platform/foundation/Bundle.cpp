#include "platform/foundation/Bundle.h"

#include <utility>

#include "platform/foundation/PropertyList.h"

namespace clipwave {

Bundle::Bundle(FileManager& files, std::string resourceFolder)
    : files_(files),
      resourceFolder_(std::move(resourceFolder)),
      infoDictionary_(dictionaryForResource("Info")) {}

std::optional<std::string> Bundle::pathForResource(std::string_view name, std::string_view type) const {
  std::string path = stringByAppendingPathComponent(resourceFolder_, name);
  if (!type.empty()) path.append(".").append(type);
  if (!files_.fileExistsAtPath(path)) return std::nullopt;
  return path;
}

Dictionary Bundle::dictionaryForResource(std::string_view name) const {
  const auto path = pathForResource(name, "plist");
  if (!path) return {};
  const auto data = files_.contentsAtPath(*path);
  if (!data) return {};
  const auto list = propertyListFromData(*data);
  return list ? list->dictionaryValue() : Dictionary();
}

std::string findResourceFolder(FileManager& files, std::string_view executablePath) {
  const std::string above =
      stringByDeletingLastPathComponent(stringByDeletingLastPathComponent(executablePath));
  for (const std::string_view candidate : {"share/clipwave", "resources"}) {
    std::string folder = stringByAppendingPathComponent(above, candidate);
    if (files.fileExistsAtPath(folder + "/Info.plist")) return folder;
  }
  return {};
}

}  // namespace clipwave
