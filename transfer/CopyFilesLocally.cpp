#include "transfer/CopyFilesLocally.h"

#include <utility>

#include "transfer/DestinationFolders.h"
#include "transfer/FileExistsPrompt.h"
#include "transfer/SourceContent.h"

namespace clipwave {
namespace {

std::string quoted(std::string_view path) {
  return "\"" + std::string(path) + "\"";
}

bool isSameFile(const std::optional<FileAttributes>& one, const std::optional<FileAttributes>& other) {
  return one && other && one->fileSystemFileNumber != 0 &&
         one->fileSystemFileNumber == other->fileSystemFileNumber &&
         one->fileSystemNumber == other->fileSystemNumber;
}

// Links are followed on both sides: whichever of the two names is a link, removing one may leave the other
// with nothing to lead to.
bool leadToSameFile(FileManager& files, const std::string& path, const std::string& other) {
  return path == other ||
         isSameFile(files.fileAttributesAtPath(path, true), files.fileAttributesAtPath(other, true));
}

// Whether the folder at `path` holds `file`, at whatever depth.
bool folderHolds(FileManager& files, const std::string& path, const std::string& file) {
  const auto folder = files.fileAttributesAtPath(path, false);
  if (!folder || folder->type != FileAttributes::Type::Directory) return false;
  std::string above = stringByDeletingLastPathComponent(file);
  while (above.size() > 1) {
    if (above == path || isSameFile(folder, files.fileAttributesAtPath(above, true))) return true;
    above = stringByDeletingLastPathComponent(above);
  }
  return false;
}

// "", "." and ".." name the folder itself or the one above it; removing what "exists" there would be fatal.
bool namesFile(std::string_view filename) {
  const std::string_view last = filename.substr(filename.find_last_of('/') + 1);
  return !last.empty() && last != "." && last != "..";
}

}  // namespace

struct CopyFilesLocally::ChunkState {
  CopyEntry source;
  std::deque<CopyEntry> filearray;  // what is to be copied after `source`
  std::string destination;          // the folder
  std::unique_ptr<SourceContent> data;
  std::unique_ptr<FileHandle> filehandle;  // none when the destination cannot be written
  std::int64_t offset = 0;
};

CopyFilesLocally::CopyFilesLocally(LocalCopyServices services, std::int64_t wholeFileLimit)
    : services_(services), wholeFileLimit_(wholeFileLimit) {}

CopyFilesLocally::~CopyFilesLocally() = default;

bool CopyFilesLocally::copyFiles(const std::vector<CopyEntry>& files,
                                 const std::optional<std::string>& toDirectory, CopyDelegate& sender) {
  if (!toDirectory || toDirectory->empty()) {
    services_.application.runCriticalAlertPanel(
        "No Destination Set!",
        "The destination has not been set.  Please select a destination and try again.", "OK");
    return false;
  }
  const DestinationStore disk{
      [this](const std::string& path, bool& isDirectory) {
        return services_.files.fileExistsAtPath(path, &isDirectory);
      },
      [this](const std::string& path) { return services_.files.createDirectoryAtPath(path).ok(); }};
  if (!makeDestinationFolders(services_.application, services_.log, *toDirectory, disk,
                              MountedVolumes::MustExist)) {
    return false;
  }
  delegate_ = &sender;
  const auto toBeCopied = askAboutExistingFiles(
      services_.application, services_.defaults, files, *toDirectory,
      [this](const std::string& path) { return services_.files.fileExistsAtPath(path); });
  if (!toBeCopied || toBeCopied->empty()) return false;
  copyNextItemInArray({toBeCopied->begin(), toBeCopied->end()}, *toDirectory);
  return true;
}

void CopyFilesLocally::abort() {
  // The delegate may let go of the back-end; so does the timer.
  const auto self = shared_from_this();
  if (const auto timer = timer_.lock()) timer->invalidate();
  state_ = nullptr;
  if (delegate_ != nullptr) delegate_->copyAborted(*this);
}

void CopyFilesLocally::copyNextItemInArray(std::deque<CopyEntry> files, const std::string& toDirectory) {
  if (files.empty()) {
    state_ = nullptr;
    delegate_->copyCompleted(*this);
    return;
  }
  state_ = std::make_shared<ChunkState>();
  state_->source = std::move(files.front());
  files.pop_front();
  state_->filearray = std::move(files);
  state_->destination = toDirectory;

  const CopyEntry& entry = state_->source;
  const std::string path = destinationFilePath(toDirectory, entry.filename);
  if (leadToSameFile(services_.files, path, entry.path)) {
    // A movie that already lies in the published folder, or a link to it: removing it to make room for its
    // own copy would destroy the only one. It is in its place as it is.
    if (!services_.files.fileExistsAtPath(path)) noteUnreadable(entry);
    scheduleStep(&CopyFilesLocally::updateCopy);
    return;
  }
  state_->filehandle = makeDestinationFile(path);
  state_->data = std::make_unique<SourceContent>(openSource(entry), wholeFileLimit_);
  readSource();
}

// Nothing of what goes wrong here ends the run: the file counts as copied, and the trouble is on record.
std::unique_ptr<FileHandle> CopyFilesLocally::makeDestinationFile(const std::string& path) {
  FileManager& files = services_.files;
  const CopyEntry& entry = state_->source;
  if (!namesFile(entry.filename)) {
    noteTrouble("The file " + quoted(entry.path) + " has no name at its destination.");
    return nullptr;
  }
  if (folderHolds(files, path, entry.path)) {
    noteTrouble("The folder " + quoted(path) + " is not replaced, because it holds the file to be copied.");
    return nullptr;
  }
  // Also a link that leads nowhere is in the way: the new file would be made where it points.
  if (const auto existing = files.fileAttributesAtPath(path, false)) {
    const Result<void> removed = files.removeFileAtPath(path);
    if (!removed && existing->type != FileAttributes::Type::Regular) {
      noteTrouble(quoted(path) + " could not be replaced: " + removed.error().localizedDescription);
      return nullptr;
    }
  }
  if (const Result<void> created = files.createFileAtPath(path); !created) {
    noteTrouble("The file " + quoted(path) +
                " could not be created: " + created.error().localizedDescription);
    return nullptr;
  }
  auto handle = files.fileHandleForWritingAtPath(path);
  if (!handle) noteTrouble("The file " + quoted(path) + " could not be opened for writing.");
  return handle;
}

std::unique_ptr<FileHandle> CopyFilesLocally::openSource(const CopyEntry& entry) {
  const auto attributes = services_.files.fileAttributesAtPath(entry.path, true);
  // Opening a pipe would wait for somebody to write into it.
  const bool isFile = attributes && attributes->type == FileAttributes::Type::Regular;
  auto handle = isFile ? services_.files.fileHandleForReadingAtPath(entry.path) : nullptr;
  if (!handle) noteUnreadable(entry);
  return handle;
}

// Turn after turn, so that the window lives while a large file is read.
void CopyFilesLocally::readSource() {
  scheduleStep(state_->data->readOn() ? &CopyFilesLocally::updateCopy : &CopyFilesLocally::readSource);
}

void CopyFilesLocally::updateCopy() {
  const std::string_view chunk =
      state_->data ? state_->data->bytesAt(state_->offset, kChunkLength) : std::string_view();
  if (chunk.empty()) {
    finishFile();
    return;
  }
  if (state_->filehandle && !state_->filehandle->writeData(chunk)) {
    noteTrouble("The file " + quoted(destinationFilePath(state_->destination, state_->source.filename)) +
                " could not be written whole.");
    // A later chunk might fit again; behind a gap it would only spoil what is there.
    state_->filehandle = nullptr;
  }
  state_->offset += static_cast<std::int64_t>(chunk.size());
  scheduleStep(&CopyFilesLocally::updateCopy);
}

void CopyFilesLocally::finishFile() {
  const std::shared_ptr<ChunkState> state = state_;
  if (state->filehandle) state->filehandle->closeFile();
  if (state->data && state->data->length() < state->data->expectedLength()) {
    noteTrouble("Of the file " + quoted(state->source.path) + " only " +
                std::to_string(state->data->length()) + " of " +
                std::to_string(state->data->expectedLength()) + " bytes could be read.");
  }
  state->filehandle = nullptr;
  state->data = nullptr;
  delegate_->fileCopied(state->source);
  // Unless the delegate has aborted.
  if (state_ == state) copyNextItemInArray(std::move(state->filearray), state->destination);
}

void CopyFilesLocally::scheduleStep(void (CopyFilesLocally::*step)()) {
  const auto self = std::static_pointer_cast<CopyFilesLocally>(shared_from_this());
  timer_ = services_.runLoop.scheduleTimer(Seconds(0), [self, step] {
    // Invalidating the timer may release what it captured while the step is still running.
    const auto kept = self;  // NOLINT(performance-unnecessary-copy-initialization)
    ((*kept).*step)();
  });
}

void CopyFilesLocally::noteUnreadable(const CopyEntry& entry) {
  noteTrouble("The file " + quoted(entry.path) + " could not be read.");
}

void CopyFilesLocally::noteTrouble(std::string sentence) {
  services_.log.write(sentence);
  troubles_.push_back(std::move(sentence));
}

}  // namespace clipwave
