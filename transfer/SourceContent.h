// The bytes of a file that is being copied: read into memory whole, or piece by piece when it is too large.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/foundation/ContentBuffer.h"
#include "platform/foundation/FileManager.h"

namespace clipwave {

// The content is the file as long as it was when it was opened. Where the file has become shorter or cannot
// be read on, the content ends. Belongs to one thread; helper threads of its own read longer files.
class SourceContent {
 public:
  // Files up to this length are read within the first call of readOn, longer ones in several.
  static constexpr std::int64_t kPieceLength = std::int64_t{2} << 20;

  // `file` none: no content. Files longer than `wholeFileLimit`, and files for which there is no memory, are
  // read as their bytes are asked for.
  SourceContent(std::unique_ptr<FileHandle> file, std::int64_t wholeFileLimit);
  // Stops reading; waits at most for the pieces that are being read.
  ~SourceContent();
  SourceContent(const SourceContent&) = delete;
  SourceContent& operator=(const SourceContent&) = delete;

  // Reads, or gives the reading a moment's time. True once bytesAt may be asked.
  bool readOn();
  // Up to `length` bytes; fewer only at the end, where there are none. Valid until the next call.
  std::string_view bytesAt(std::int64_t offset, std::size_t length);

  // How long the file was when it was opened, and how much of that could be read by now.
  std::int64_t expectedLength() const { return expectedLength_; }
  std::int64_t length() const { return length_; }

 private:
  bool readPiece();
  void startHelpers();
  void endAt(std::int64_t offset);

  const std::unique_ptr<FileHandle> file_;
  const std::int64_t expectedLength_;
  std::optional<ContentBuffer> whole_;  // none: read as asked for
  std::string asked_;
  std::atomic<std::int64_t> nextPiece_ = 0;
  std::atomic<std::int64_t> length_;
  std::vector<std::thread> helpers_;
  std::atomic<int> reading_ = 0;  // helpers that have not finished
};

}  // namespace clipwave
