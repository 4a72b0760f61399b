// Files and folders by path, and open files. Every other room reaches the disk through here.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Date.h"
#include "platform/foundation/Error.h"

namespace clipwave {

struct FileAttributes {
  enum class Type { Regular, Directory, SymbolicLink, Other };
  Type type = Type::Regular;
  std::int64_t size = 0;
  Date modificationDate;
  // Which volume, and which file on it: two paths with the same pair lead to one and the same file. A file
  // number of 0 tells nothing.
  std::uint64_t fileSystemNumber = 0;
  std::uint64_t fileSystemFileNumber = 0;
};

// How the names of side files begin; a process that was killed while it wrote may leave one behind.
inline constexpr std::string_view kSideFilePrefix = ".clipwave-";

// An open file; closed when it is destroyed. Offsets and sizes are 64 bits.
class FileHandle {
 public:
  virtual ~FileHandle() = default;
  // Writes all bytes at the end of what was written before; false when they could not all be written.
  virtual bool writeData(std::string_view bytes) = 0;
  // Up to `length` bytes from where the last reading ended; fewer only at the end of the file. Nothing when
  // reading fails. Never raises a signal, however the file shrinks meanwhile.
  virtual std::optional<std::string> readDataOfLength(std::size_t length) = 0;
  // Reads up to `length` bytes from `offset` on into `buffer` and answers how many; fewer only at the end of
  // the file. Nothing when reading fails. Neither heeds nor moves the place where readDataOfLength goes on.
  // Several threads may read at once, as long as none of them closes the file.
  virtual std::optional<std::size_t> readDataAtOffset(std::int64_t offset, char* buffer,
                                                      std::size_t length) const = 0;
  // The file's size now, as the open file tells it.
  virtual std::int64_t size() const = 0;
  // Closing twice does nothing. Writes and reads after closing fail.
  virtual void closeFile() = 0;
};

// Paths are absolute, UTF-8 or whatever bytes the file system holds. Every operation follows symbolic links
// in all but the last component; what it does with the last is said where it matters. Failures are answered,
// never thrown; only the operations that answer a Result say why.
class FileManager {
 public:
  virtual ~FileManager() = default;

  // Whether anything exists there (a dangling link does not). `isDirectory` is set when something does.
  virtual bool fileExistsAtPath(std::string_view path, bool* isDirectory = nullptr) = 0;
  virtual std::optional<FileAttributes> fileAttributesAtPath(std::string_view path, bool traverseLink) = 0;
  // Makes one folder; its parent must exist. With `mode`, exactly these permissions; otherwise 0777 less the
  // umask.
  virtual Result<void> createDirectoryAtPath(std::string_view path, std::optional<unsigned> mode = {}) = 0;
  // Makes an empty file, or empties the one that is there.
  virtual Result<void> createFileAtPath(std::string_view path) = 0;
  // Removes a file, a link (not its target), or a folder with all that it holds.
  virtual Result<void> removeFileAtPath(std::string_view path) = 0;
  // Renames, or copies and then removes where the two lie on different volumes (contents, permissions and
  // modification dates kept). Fails when something exists at `toPath`. A move that failed leaves the source
  // whole and no part of the destination.
  virtual Result<void> movePath(std::string_view path, std::string_view toPath) = 0;
  // Names in the folder, without "." and "..", in no defined order.
  virtual Result<std::vector<std::string>> directoryContentsAtPath(std::string_view path) = 0;
  virtual Result<std::string> contentsAtPath(std::string_view path) = 0;
  // All or nothing, also when the power fails: a side file in the same folder (made so that nobody's link is
  // followed), flushed, moved into place, the folder flushed. A file that was there keeps its permissions; a
  // new one gets `mode`. A link at `path` is replaced unless it leads to a regular file: then that file is.
  virtual Result<void> writeAtomically(std::string_view data, std::string_view path,
                                       unsigned mode = 0644) = 0;
  // A new file's name: `pathTemplate` with its trailing Xs replaced so that the name is new; an empty file of
  // mode 0600 stands there.
  virtual Result<std::string> makeTemporaryFile(std::string_view pathTemplate) = 0;
  // How many bytes may still be written on the volume that holds this existing file or folder; none when it
  // is not there, or the volume does not say.
  virtual std::optional<std::int64_t> fileSystemFreeSizeAtPath(std::string_view path) = 0;
  // None when the file cannot be opened. Opening for writing neither makes nor empties a file.
  virtual std::unique_ptr<FileHandle> fileHandleForReadingAtPath(std::string_view path) = 0;
  virtual std::unique_ptr<FileHandle> fileHandleForWritingAtPath(std::string_view path) = 0;
};

std::unique_ptr<FileManager> makeFileManager();

// Pure path rules. A path is split into "/" (for an absolute path) and its non-empty components.
std::vector<std::string> pathComponents(std::string_view path);
std::string lastPathComponent(std::string_view path);  // "" for "" and "/" for "/"
std::string stringByDeletingLastPathComponent(std::string_view path);
std::string stringByAppendingPathComponent(std::string_view path, std::string_view component);
// What stands behind the last dot of the last component; "" when there is none or the dot is its first
// character.
std::string pathExtension(std::string_view path);
std::string stringByDeletingPathExtension(std::string_view path);

}  // namespace clipwave
