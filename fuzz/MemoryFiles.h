// A disk in memory: it holds the files that were written to it, and no folders.
#pragma once

#include <map>
#include <string>

#include "platform/foundation/FileManager.h"

namespace clipwave::fuzz {

// Whatever path an input names, nothing is found there and nothing is changed on the real disk.
class MemoryFiles final : public FileManager {
 public:
  std::map<std::string, std::string, std::less<>> contents;  // by path

  bool fileExistsAtPath(std::string_view path, bool* isDirectory) override {
    if (isDirectory != nullptr) *isDirectory = false;
    return contents.contains(path);
  }
  std::optional<FileAttributes> fileAttributesAtPath(std::string_view path, bool) override {
    const auto found = contents.find(path);
    if (found == contents.end()) return std::nullopt;
    return FileAttributes{.size = static_cast<std::int64_t>(found->second.size()), .modificationDate = {}};
  }
  Result<void> createDirectoryAtPath(std::string_view, std::optional<unsigned>) override { return missing(); }
  Result<void> createFileAtPath(std::string_view path) override { return writeAtomically("", path, 0644); }
  Result<void> removeFileAtPath(std::string_view path) override {
    const auto found = contents.find(path);
    if (found == contents.end()) return missing();
    contents.erase(found);
    return {};
  }
  Result<void> movePath(std::string_view, std::string_view) override { return missing(); }
  Result<std::vector<std::string>> directoryContentsAtPath(std::string_view) override { return missing(); }
  Result<std::string> contentsAtPath(std::string_view path) override {
    const auto found = contents.find(path);
    if (found == contents.end()) return missing();
    return found->second;
  }
  Result<void> writeAtomically(std::string_view data, std::string_view path, unsigned) override {
    contents.insert_or_assign(std::string(path), std::string(data));
    return {};
  }
  Result<std::string> makeTemporaryFile(std::string_view) override { return missing(); }
  std::optional<std::int64_t> fileSystemFreeSizeAtPath(std::string_view) override { return std::nullopt; }
  std::unique_ptr<FileHandle> fileHandleForReadingAtPath(std::string_view) override { return nullptr; }
  std::unique_ptr<FileHandle> fileHandleForWritingAtPath(std::string_view) override { return nullptr; }

 private:
  static Error missing() { return cocoaError(kFileNoSuchFileError, "There is no such file."); }
};

}  // namespace clipwave::fuzz
