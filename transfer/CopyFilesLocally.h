// Copies files into a folder of a local or mounted volume, one chunk a turn of the run loop.
#pragma once

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

class CopyFilesLocally final : public CopyBackEnd {
 public:
  explicit CopyFilesLocally(LocalCopyServices services);
  ~CopyFilesLocally() override;

  bool copyFiles(const std::vector<CopyEntry>& files, const std::optional<std::string>& toDirectory,
                 CopyDelegate& sender) override;
  // Sends copyAborted before it returns, also when no copy is in progress and one was ever begun. The part of
  // the file written so far stays.
  void abort() override;

  // What went wrong without a callback: source files that could not be read whole, destination files that
  // could not be written whole. One sentence each, for a companion that reports what a window passes over in
  // silence; each is also a line in the log.
  const std::vector<std::string>& troubles() const { return troubles_; }

 private:
  struct ChunkState;
  std::vector<std::string> troubles_;
};

}  // namespace clipwave
