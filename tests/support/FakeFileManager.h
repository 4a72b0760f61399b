// A real file manager that writes down every access and fails where a test wants it to.
#pragma once

#include <algorithm>
#include <mutex>

#include "platform/foundation/ForwardingFileManager.h"

namespace clipwave::testing {

class FakeFileManager final : public ForwardingFileManager {
 public:
  explicit FakeFileManager(std::unique_ptr<FileManager> real = makeFileManager())
      : ForwardingFileManager(*real), real_(std::move(real)) {}

  // Every access so far by the operations below: the operation and its path, "createDirectoryAtPath /x";
  // "movePath /a /b". Of open files: "writeData /x 262143", "readDataAtOffset /x 0 10" and "closeFile /x".
  // While another thread reads a file, only countOf may be asked.
  std::vector<std::string> accesses;
  // How often a line beginning with `start` is in accesses.
  int countOf(std::string_view start) const {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(
        std::ranges::count_if(accesses, [start](const auto& line) { return line.starts_with(start); }));
  }

  // Asked before every access but closing and looking at a size; an error keeps the access from reaching the
  // disk. Operations without a Result then answer as for a failure. The second path of movePath is not asked
  // about.
  std::function<std::optional<Error>(std::string_view operation, std::string_view path)> onAccess;
  // From now on `operation` on `path` ("": on any) fails; in addition to onAccess.
  void fail(std::string_view operation, std::string_view path, Error error = anyError()) {
    failures_.push_back({std::string(operation), std::string(path), std::move(error)});
  }
  void failNothing() { failures_.clear(); }
  static Error anyError() { return cocoaError(kFileWriteUnknownError, "The test says no."); }

  Result<void> createDirectoryAtPath(std::string_view path, std::optional<unsigned> mode = {}) override {
    if (auto error = access("createDirectoryAtPath", path)) return *error;
    return ForwardingFileManager::createDirectoryAtPath(path, mode);
  }
  Result<void> createFileAtPath(std::string_view path) override {
    if (auto error = access("createFileAtPath", path)) return *error;
    return ForwardingFileManager::createFileAtPath(path);
  }
  Result<void> removeFileAtPath(std::string_view path) override {
    if (auto error = access("removeFileAtPath", path)) return *error;
    return ForwardingFileManager::removeFileAtPath(path);
  }
  Result<void> movePath(std::string_view path, std::string_view toPath) override {
    if (auto error = access("movePath", path, toPath)) return *error;
    return ForwardingFileManager::movePath(path, toPath);
  }
  Result<std::string> contentsAtPath(std::string_view path) override {
    if (auto error = access("contentsAtPath", path)) return *error;
    return ForwardingFileManager::contentsAtPath(path);
  }
  Result<void> writeAtomically(std::string_view data, std::string_view path, unsigned mode = 0644) override {
    if (auto error = access("writeAtomically", path)) return *error;
    return ForwardingFileManager::writeAtomically(data, path, mode);
  }
  std::unique_ptr<FileHandle> fileHandleForReadingAtPath(std::string_view path) override {
    if (access("fileHandleForReadingAtPath", path)) return nullptr;
    return wrap(ForwardingFileManager::fileHandleForReadingAtPath(path), path);
  }
  std::unique_ptr<FileHandle> fileHandleForWritingAtPath(std::string_view path) override {
    if (access("fileHandleForWritingAtPath", path)) return nullptr;
    return wrap(ForwardingFileManager::fileHandleForWritingAtPath(path), path);
  }

 private:
  class Handle final : public FileHandle {
   public:
    Handle(FakeFileManager& manager, std::unique_ptr<FileHandle> real, std::string_view path)
        : manager_(manager), real_(std::move(real)), path_(path) {}

    bool writeData(std::string_view bytes) override {
      return !manager_.access("writeData", path_, std::to_string(bytes.size())) && real_->writeData(bytes);
    }
    std::optional<std::string> readDataOfLength(std::size_t length) override {
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
  struct Failure {
    std::string operation, path;
    Error error;
  };

  std::optional<Error> access(std::string_view operation, std::string_view path, std::string_view more = {}) {
    std::string line = std::string(operation) + " " + std::string(path);
    if (!more.empty()) line.append(" ").append(more);
    {
      const std::lock_guard lock(mutex_);
      accesses.push_back(std::move(line));
    }
    for (const Failure& failure : failures_)
      if (failure.operation == operation && (failure.path.empty() || failure.path == path))
        return failure.error;
    return onAccess ? onAccess(operation, path) : std::nullopt;
  }
  std::unique_ptr<FileHandle> wrap(std::unique_ptr<FileHandle> handle, std::string_view path) {
    return handle ? std::make_unique<Handle>(*this, std::move(handle), path) : nullptr;
  }

  std::unique_ptr<FileManager> real_;
  mutable std::mutex mutex_;
  std::vector<Failure> failures_;
};

}  // namespace clipwave::testing
