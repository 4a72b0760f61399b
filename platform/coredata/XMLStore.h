// The store's file format: the whole library as one XML text, read and written in one go. Internal to this
// room.
#pragma once

#include <cstddef>
#include <string>

#include "platform/coredata/ManagedObjectModel.h"
#include "platform/coredata/PersistentStoreCoordinator.h"
#include "platform/foundation/Error.h"

namespace clipwave {

class XMLStore {
 public:
  static constexpr int kMajorVersion = 1;
  static constexpr int kMinorVersion = 0;

  // Reads the text (and destroys it on the way, which saves a copy). Errors are described without the path.
  static Result<StoreContent> read(std::string text, const ManagedObjectModel& model);
  // `expectedSize` in bytes saves growing the text on the way.
  static std::string write(const StoreContent& content, std::size_t expectedSize = 0);
};

}  // namespace clipwave
