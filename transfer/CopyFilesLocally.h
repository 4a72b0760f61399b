// Copies files into a folder of a local or mounted volume, one chunk a turn of the run loop.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/appkit/Application.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/UserDefaultsController.h"
#include "transfer/CopyBackEnd.h"

namespace clipwave {

// What the local back-end works with; all of it must outlive the back-end's last callback.
struct LocalCopyServices {
  Application& application;
  RunLoop& runLoop;
  FileManager& files;
  UserDefaultsController& defaults;
  Log& log;
};

// Its troubles: source files that could not be read whole, destination files that could not be written whole.
class CopyFilesLocally final : public CopyBackEnd {
 public:
  // What is written in one turn of the run loop.
  static constexpr std::size_t kChunkLength = 0x3FFFF;
  // Files up to this length are in memory, whole, before their first chunk is written.
  static constexpr std::int64_t kWholeFileLimit = 2'147'483'647;

  // A back-end must be owned by a shared_ptr.
  explicit CopyFilesLocally(LocalCopyServices services, std::int64_t wholeFileLimit = kWholeFileLimit);
  ~CopyFilesLocally() override;

  bool copyFiles(const std::vector<CopyEntry>& files, const std::optional<std::string>& toDirectory,
                 CopyDelegate& sender) override;
  // Sends copyAborted before it returns, also when no copy is in progress; only a back-end whose copyFiles
  // never came past the checks of the folder has nobody to send it to. The part of the file written so far
  // stays.
  void abort() override;

 private:
  struct ChunkState;

  void copyNextItemInArray(std::deque<CopyEntry> files, const std::string& toDirectory);
  std::unique_ptr<FileHandle> makeDestinationFile(const std::string& path);
  std::unique_ptr<FileHandle> openSource(const CopyEntry& entry);
  void readSource();
  void updateCopy();
  void finishFile();
  void scheduleStep(void (CopyFilesLocally::*step)());
  void noteUnreadable(const CopyEntry& entry);
  void noteTrouble(std::string sentence);

  LocalCopyServices services_;
  std::int64_t wholeFileLimit_;
  std::shared_ptr<ChunkState> state_;  // the file being copied; none when no copy is in progress
  // Not owned: the pending timer owns the back-end.
  std::weak_ptr<Timer> timer_;
};

}  // namespace clipwave
