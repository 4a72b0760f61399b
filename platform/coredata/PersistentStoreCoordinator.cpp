#include "platform/coredata/PersistentStoreCoordinator.h"

#include <utility>

#include "platform/coredata/StoreLock.h"
#include "platform/coredata/XMLStore.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

// `sentence` has "%1" for the path and "%2" for the cause.
Error aboutStore(std::string_view sentence, std::string_view path, const Error& cause) {
  Error error = cause;
  error.localizedDescription = filledIn(sentence, {path, cause.localizedDescription});
  return error;
}

// Saves that were cut short left their side files, each as large as the library. Whoever holds the lock knows
// that nobody is writing one now.
void removeLeftSideFiles(FileManager& files, std::string_view storePath) {
  const std::string folder = stringByDeletingLastPathComponent(storePath);
  const auto names = files.directoryContentsAtPath(folder);
  if (!names) return;
  for (const std::string& name : *names) {
    const std::string path = stringByAppendingPathComponent(folder, name);
    const auto attributes =
        name.starts_with(kSideFilePrefix) ? files.fileAttributesAtPath(path, false) : std::nullopt;
    if (attributes && attributes->type == FileAttributes::Type::Regular) (void)files.removeFileAtPath(path);
  }
}

}  // namespace

PersistentStoreCoordinator::PersistentStoreCoordinator(const ManagedObjectModel& model, FileManager& files)
    : model_(model), files_(files) {}

PersistentStoreCoordinator::~PersistentStoreCoordinator() = default;

Result<void> PersistentStoreCoordinator::addPersistentStore(std::string_view type, std::string_view path) {
  const std::string cannotBeOpened = localized("Library", "The library at %1 cannot be opened. %2");
  if (type != NSXMLStoreType) {
    return aboutStore(
        cannotBeOpened, path,
        cocoaError(kPersistentStoreInvalidTypeError,
                   filledIn(localized("Library", "There is no kind of store named “%1”."), {type})));
  }
  if (lock_) {
    return aboutStore(
        cannotBeOpened, path,
        cocoaError(kPersistentStoreOpenError, localized("Library", "Another library is open in its place.")));
  }
  auto lock = StoreLock::acquire(std::string(path) + ".lock");
  if (!lock) return aboutStore(cannotBeOpened, path, lock.error());
  removeLeftSideFiles(files_, path);
  Result<std::string> text = files_.contentsAtPath(path);
  const bool exists = text.ok();
  if (exists) {
    size_ = text->size();
    Result<StoreContent> content = XMLStore::read(std::move(*text), model_);
    if (!content) return aboutStore(cannotBeOpened, path, content.error());
    content_ = std::move(*content);
  } else if (text.error().code != kFileReadNoSuchFileError && text.error().code != kFileNoSuchFileError) {
    // Not an empty library: what is there and cannot be read must not be overwritten.
    return aboutStore(cannotBeOpened, path, text.error());
  }
  lock_ = std::move(*lock);
  path_ = path;
  fileExists_ = exists;
  return {};
}

StoreContent PersistentStoreCoordinator::takeContent() {
  return std::exchange(content_, {});
}

Result<void> PersistentStoreCoordinator::write(const StoreContent& content) {
  const std::string text = XMLStore::write(content, size_);
  if (Result<void> written = files_.writeAtomically(text, path_); !written)
    return aboutStore(localized("Library", "The library at %1 cannot be saved. %2"), path_, written.error());
  size_ = text.size();
  fileExists_ = true;
  return {};
}

}  // namespace clipwave
