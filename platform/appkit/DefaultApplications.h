// Which application the user wants for a type, as the desktop's lists of applications say (mimeapps.list).
// Internal to this room.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/FileManager.h"

namespace clipwave {

// Applications are named by their desktop entries, such as "player.desktop". Only the user's own lists are
// written, atomically, and nothing in them is changed but what is said of the type.
class DefaultApplications {
 public:
  // `files` must outlive it.
  explicit DefaultApplications(FileManager& files) : files_(files) {}

  // The first one chosen that is installed; "" where none was chosen, though applications may offer
  // themselves.
  std::string applicationForType(std::string_view type) const;
  // Puts the application before the others. Fails when it is not installed, or a list cannot be written.
  Result<void> choose(std::string_view application, std::string_view type);
  // Takes it out: the ones behind it come into their own again.
  Result<void> forget(std::string_view application, std::string_view type);

 private:
  bool isInstalled(std::string_view application) const;
  std::vector<std::string> ownLists() const;
  // "" for a list that is not there.
  Result<std::string> contentsOf(const std::string& list) const;
  Result<void> change(const std::string& list, const std::function<std::string(const std::string&)>& edit);

  FileManager& files_;
};

}  // namespace clipwave
