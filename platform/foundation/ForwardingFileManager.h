// Hands every operation on to another file manager; the base of those that change only a few.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/FileManager.h"

namespace clipwave {

class ForwardingFileManager : public FileManager {
 public:
  // `target` must outlive this object.
  explicit ForwardingFileManager(FileManager& target) : target_(target) {}

  bool fileExistsAtPath(std::string_view path, bool* isDirectory = nullptr) override {
    return target_.fileExistsAtPath(path, isDirectory);
  }
  std::optional<FileAttributes> fileAttributesAtPath(std::string_view path, bool traverseLink) override {
    return target_.fileAttributesAtPath(path, traverseLink);
  }
  Result<void> createDirectoryAtPath(std::string_view path, std::optional<unsigned> mode = {}) override {
    return target_.createDirectoryAtPath(path, mode);
  }
  Result<void> createFileAtPath(std::string_view path) override { return target_.createFileAtPath(path); }
  Result<void> removeFileAtPath(std::string_view path) override { return target_.removeFileAtPath(path); }
  Result<void> movePath(std::string_view path, std::string_view toPath) override {
    return target_.movePath(path, toPath);
  }
  Result<std::vector<std::string>> directoryContentsAtPath(std::string_view path) override {
    return target_.directoryContentsAtPath(path);
  }
  Result<std::string> contentsAtPath(std::string_view path) override { return target_.contentsAtPath(path); }
  Result<void> writeAtomically(std::string_view data, std::string_view path, unsigned mode = 0644) override {
    return target_.writeAtomically(data, path, mode);
  }
  Result<std::string> makeTemporaryFile(std::string_view pathTemplate) override {
    return target_.makeTemporaryFile(pathTemplate);
  }
  std::optional<std::int64_t> fileSystemFreeSizeAtPath(std::string_view path) override {
    return target_.fileSystemFreeSizeAtPath(path);
  }
  std::unique_ptr<FileHandle> fileHandleForReadingAtPath(std::string_view path) override {
    return target_.fileHandleForReadingAtPath(path);
  }
  std::unique_ptr<FileHandle> fileHandleForWritingAtPath(std::string_view path) override {
    return target_.fileHandleForWritingAtPath(path);
  }

 private:
  FileManager& target_;
};

}  // namespace clipwave
