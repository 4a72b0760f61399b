// Joins the object model to the store file: opens, locks, reads and writes it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/coredata/ManagedObject.h"
#include "platform/coredata/ManagedObjectModel.h"
#include "platform/foundation/Error.h"
#include "platform/foundation/FileManager.h"

namespace clipwave {

class StoreLock;

inline constexpr std::string_view NSXMLStoreType = "XML";

// The records of a store and what else its file held.
struct StoreContent {
  std::vector<std::shared_ptr<ManagedObject>> objects;  // in the file's order
  std::int64_t nextObjectID = 1;
  std::string version;     // of the file, as it stood; "" for a new store
  UnknownContent unknown;  // attributes of the whole file, and records of entities, unknown to this version
};

class PersistentStoreCoordinator {
 public:
  // `model` and `files` must outlive the coordinator.
  PersistentStoreCoordinator(const ManagedObjectModel& model, FileManager& files);
  ~PersistentStoreCoordinator();
  PersistentStoreCoordinator(const PersistentStoreCoordinator&) = delete;
  PersistentStoreCoordinator& operator=(const PersistentStoreCoordinator&) = delete;

  const ManagedObjectModel& model() const { return model_; }
  const std::string& path() const { return path_; }

  // Locks the store (a file of its own beside it, "<path>.lock", held until the coordinator goes) and reads
  // it. A file that does not exist is an empty store. Fails with the path in the description, leaving the
  // file as it is and holding no lock: kFileLockingError (another process has it open),
  // kFileReadNoPermissionError and the other read errors, kPersistentStoreOpenError (truncated, not XML, not
  // a library, or a coordinator that has its store already), kPersistentStoreIncompatibleVersionHashError (a
  // newer major version), kPersistentStoreInvalidTypeError (another type than NSXMLStoreType).
  Result<void> addPersistentStore(std::string_view type, std::string_view path);
  // What was read; once, for the context that takes the records over.
  StoreContent takeContent();
  // Writes the whole store, all or nothing at any instant, power cuts included.
  Result<void> write(const StoreContent& content);
  // Whether the store's file has been there since it was added or was written since.
  bool fileExists() const { return fileExists_; }

 private:
  const ManagedObjectModel& model_;
  FileManager& files_;
  std::string path_;
  std::unique_ptr<StoreLock> lock_;
  bool fileExists_ = false;
  std::size_t size_ = 0;  // of the file when it was last read or written
  StoreContent content_;
};

}  // namespace clipwave
