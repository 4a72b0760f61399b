// The application's resources and its information file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/FileManager.h"
#include "platform/foundation/Value.h"

namespace clipwave {

class Bundle {
 public:
  // `resourceFolder` holds the resources as files; its "Info.plist" is the information file.
  Bundle(FileManager& files, std::string resourceFolder);

  // The path of resource `name` of `type` ("defaults", "plist"), or nothing when there is none.
  std::optional<std::string> pathForResource(std::string_view name, std::string_view type) const;
  // The root dictionary of a property-list resource; empty when it is missing, broken or no dictionary.
  Dictionary dictionaryForResource(std::string_view name) const;
  // The information file: "CFBundleVersion", "CFBundleDocumentTypes" and the rest. Read once.
  const Dictionary& infoDictionary() const { return infoDictionary_; }

 private:
  FileManager& files_;
  std::string resourceFolder_;
  Dictionary infoDictionary_;
};

// Where the resources lie: beside the build's executables, or in the installed data folder. The first of the
// candidates that holds an "Info.plist", given the path of the running executable; "" when none does.
std::string findResourceFolder(FileManager& files, std::string_view executablePath);

}  // namespace clipwave
