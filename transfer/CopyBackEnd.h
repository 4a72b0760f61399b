// The one interface of a transfer back-end, and the callbacks that it sends.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/coredata/ManagedObject.h"

namespace clipwave {

// One file to be transferred.
struct CopyEntry {
  std::string path;      // absolute path of the local file
  std::string filename;  // its name in the destination folder, a single path component
  // The episode whose movie this is; none for a channel's feed file. Empty again once the record is gone.
  std::weak_ptr<ManagedObject> managedObject = {};
};

class CopyBackEnd;

// Called on the main thread, never before copyFiles has returned, except for copyAborted and connectionError
// where said.
class CopyDelegate {
 public:
  virtual ~CopyDelegate() = default;
  // The entry is complete at the destination.
  virtual void fileCopied(const CopyEntry& entry) = 0;
  virtual void updateCopyStatusForFile(std::string_view filename, int percentComplete) = 0;
  // Every entry has been copied.
  virtual void copyCompleted(CopyBackEnd& backEnd) = 0;
  // The transfer is over. Also sent from within copyFiles, which then answers NO, when the credentials were
  // refused. `error` is a DMErrorType.
  virtual void connectionError(CopyBackEnd& backEnd, int error, std::string_view errorMessage) = 0;
  // The transfer is over; may be sent from within abort.
  virtual void copyAborted(CopyBackEnd& backEnd) = 0;
};

// Serves one call of copyFiles. The timers and transactions that will call it own it together with whoever
// made it: an owner may let go of it at any time, also inside its own callback. Order of a started copy: for
// each entry its progress, then fileCopied; after the last one copyCompleted. connectionError and copyAborted
// end the sequence early.
class CopyBackEnd : public std::enable_shared_from_this<CopyBackEnd> {
 public:
  virtual ~CopyBackEnd() = default;
  // YES: copying has started and callbacks will follow. NO: nothing was started and no further callback
  // follows; the user has been told why, has answered "Cancel", or no file was left to copy. `toDirectory`
  // absent: no destination set. `sender` must outlive the last callback, or abandon the back-end.
  virtual bool copyFiles(const std::vector<CopyEntry>& files, const std::optional<std::string>& toDirectory,
                         CopyDelegate& sender) = 0;
  // Stops the copy in progress.
  virtual void abort() = 0;
  // The same for a sender that goes: no callback follows any more.
  void abandon() {
    delegate_ = nullptr;
    abort();
  }
  // What a window passes over in silence, or tells without its reason: one line each, for a companion. The
  // log says the same.
  const std::vector<std::string>& troubles() const { return troubles_; }

 protected:
  // Not owned. None before copyFiles, and once the last callback has been sent or the sender has gone.
  CopyDelegate* delegate_ = nullptr;
  std::vector<std::string> troubles_;
};

}  // namespace clipwave
