// A real file manager that writes down every access and fails where a test wants it to.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/ForwardingFileManager.h"

namespace clipwave::testing {

class FakeFileManager final : public ForwardingFileManager {
 public:
  explicit FakeFileManager(std::unique_ptr<FileManager> real = makeFileManager());

  // Every access so far: the operation and its path, "createDirectoryAtPath /x"; "movePath /a /b". Of open
  // files: "writeData /x 262143" and "readDataOfLength /x 10" (the bytes asked for), "readDataAtOffset /x 0
  // 10" and "closeFile /x". While another thread reads a file, only countOf may be asked.
  std::vector<std::string> accesses;
  // How often a line beginning with `start` is in accesses.
  int countOf(std::string_view start) const;

  // Asked before every access but closing and looking at a size; an error keeps the access from reaching the
  // disk. Operations without a Result then answer as for a failure. The second path of movePath is not asked
  // about.
  std::function<std::optional<Error>(std::string_view operation, std::string_view path)> onAccess;
  // From now on `operation` on `path` ("": on any) fails; in addition to onAccess.
  void fail(std::string_view operation, std::string_view path, Error error = anyError());
  void failNothing() { failures_.clear(); }
  static Error anyError() { return cocoaError(kFileWriteUnknownError, "The test says no."); }

  bool fileExistsAtPath(std::string_view path, bool* isDirectory = nullptr) override;
  std::optional<FileAttributes> fileAttributesAtPath(std::string_view path, bool traverseLink) override;
  Result<void> createDirectoryAtPath(std::string_view path, std::optional<unsigned> mode = {}) override;
  Result<void> createFileAtPath(std::string_view path) override;
  Result<void> removeFileAtPath(std::string_view path) override;
  Result<void> movePath(std::string_view path, std::string_view toPath) override;
  Result<std::vector<std::string>> directoryContentsAtPath(std::string_view path) override;
  Result<std::string> contentsAtPath(std::string_view path) override;
  Result<void> writeAtomically(std::string_view data, std::string_view path, unsigned mode = 0644) override;
  Result<std::string> makeTemporaryFile(std::string_view pathTemplate) override;
  std::unique_ptr<FileHandle> fileHandleForReadingAtPath(std::string_view path) override;
  std::unique_ptr<FileHandle> fileHandleForWritingAtPath(std::string_view path) override;

 private:
  class Handle;
  struct Failure {
    std::string operation;
    std::string path;
    Error error;
  };

  std::optional<Error> access(std::string_view operation, std::string_view path, std::string_view more = {});
  std::unique_ptr<FileHandle> wrap(std::unique_ptr<FileHandle> handle, std::string_view path);

  std::unique_ptr<FileManager> real_;
  mutable std::mutex mutex_;
  std::vector<Failure> failures_;
};

}  // namespace clipwave::testing
