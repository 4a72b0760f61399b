#include "tests/support/FakeFileManager.h"

#include <algorithm>

namespace clipwave::testing {

class FakeFileManager::Handle final : public FileHandle {
 public:
  Handle(FakeFileManager& manager, std::unique_ptr<FileHandle> real, std::string_view path)
      : manager_(manager), real_(std::move(real)), path_(path) {}

  bool writeData(std::string_view bytes) override {
    return !manager_.access("writeData", path_, std::to_string(bytes.size())) && real_->writeData(bytes);
  }
  std::optional<std::string> readDataOfLength(std::size_t length) override {
    if (manager_.access("readDataOfLength", path_, std::to_string(length))) return std::nullopt;
    return real_->readDataOfLength(length);
  }
  std::optional<std::size_t> readDataAtOffset(std::int64_t offset, char* buffer,
                                              std::size_t length) const override {
    const std::string range = std::to_string(offset) + " " + std::to_string(length);
    if (manager_.access("readDataAtOffset", path_, range)) return std::nullopt;
    return real_->readDataAtOffset(offset, buffer, length);
  }
  std::int64_t size() const override { return real_->size(); }
  void closeFile() override {
    const std::lock_guard lock(manager_.mutex_);
    manager_.accesses.push_back("closeFile " + path_);
    real_->closeFile();
  }

 private:
  FakeFileManager& manager_;
  std::unique_ptr<FileHandle> real_;
  std::string path_;
};

FakeFileManager::FakeFileManager(std::unique_ptr<FileManager> real)
    : ForwardingFileManager(*real), real_(std::move(real)) {}

int FakeFileManager::countOf(std::string_view start) const {
  const std::lock_guard lock(mutex_);
  return static_cast<int>(std::count_if(accesses.begin(), accesses.end(), [start](const std::string& line) {
    return line.starts_with(start);
  }));
}

void FakeFileManager::fail(std::string_view operation, std::string_view path, Error error) {
  failures_.push_back({std::string(operation), std::string(path), std::move(error)});
}

std::optional<Error> FakeFileManager::access(std::string_view operation, std::string_view path,
                                             std::string_view more) {
  std::string line = std::string(operation) + " " + std::string(path);
  if (!more.empty()) line.append(" ").append(more);
  {
    const std::lock_guard lock(mutex_);
    accesses.push_back(std::move(line));
  }
  for (const Failure& failure : failures_) {
    if (failure.operation == operation && (failure.path.empty() || failure.path == path)) {
      return failure.error;
    }
  }
  return onAccess ? onAccess(operation, path) : std::nullopt;
}

std::unique_ptr<FileHandle> FakeFileManager::wrap(std::unique_ptr<FileHandle> handle, std::string_view path) {
  return handle ? std::make_unique<Handle>(*this, std::move(handle), path) : nullptr;
}

bool FakeFileManager::fileExistsAtPath(std::string_view path, bool* isDirectory) {
  return !access("fileExistsAtPath", path) && ForwardingFileManager::fileExistsAtPath(path, isDirectory);
}

std::optional<FileAttributes> FakeFileManager::fileAttributesAtPath(std::string_view path,
                                                                    bool traverseLink) {
  if (access("fileAttributesAtPath", path)) return std::nullopt;
  return ForwardingFileManager::fileAttributesAtPath(path, traverseLink);
}

Result<void> FakeFileManager::createDirectoryAtPath(std::string_view path, std::optional<unsigned> mode) {
  if (auto error = access("createDirectoryAtPath", path)) return *error;
  return ForwardingFileManager::createDirectoryAtPath(path, mode);
}

Result<void> FakeFileManager::createFileAtPath(std::string_view path) {
  if (auto error = access("createFileAtPath", path)) return *error;
  return ForwardingFileManager::createFileAtPath(path);
}

Result<void> FakeFileManager::removeFileAtPath(std::string_view path) {
  if (auto error = access("removeFileAtPath", path)) return *error;
  return ForwardingFileManager::removeFileAtPath(path);
}

Result<void> FakeFileManager::movePath(std::string_view path, std::string_view toPath) {
  if (auto error = access("movePath", path, toPath)) return *error;
  return ForwardingFileManager::movePath(path, toPath);
}

Result<std::vector<std::string>> FakeFileManager::directoryContentsAtPath(std::string_view path) {
  if (auto error = access("directoryContentsAtPath", path)) return *error;
  return ForwardingFileManager::directoryContentsAtPath(path);
}

Result<std::string> FakeFileManager::contentsAtPath(std::string_view path) {
  if (auto error = access("contentsAtPath", path)) return *error;
  return ForwardingFileManager::contentsAtPath(path);
}

Result<void> FakeFileManager::writeAtomically(std::string_view data, std::string_view path, unsigned mode) {
  if (auto error = access("writeAtomically", path)) return *error;
  return ForwardingFileManager::writeAtomically(data, path, mode);
}

Result<std::string> FakeFileManager::makeTemporaryFile(std::string_view pathTemplate) {
  if (auto error = access("makeTemporaryFile", pathTemplate)) return *error;
  return ForwardingFileManager::makeTemporaryFile(pathTemplate);
}

std::unique_ptr<FileHandle> FakeFileManager::fileHandleForReadingAtPath(std::string_view path) {
  if (access("fileHandleForReadingAtPath", path)) return nullptr;
  return wrap(ForwardingFileManager::fileHandleForReadingAtPath(path), path);
}

std::unique_ptr<FileHandle> FakeFileManager::fileHandleForWritingAtPath(std::string_view path) {
  if (access("fileHandleForWritingAtPath", path)) return nullptr;
  return wrap(ForwardingFileManager::fileHandleForWritingAtPath(path), path);
}

}  // namespace clipwave::testing
