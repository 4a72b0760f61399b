#include "platform/dotmac/UploadTransaction.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/dotmac/WebDAVErrors.h"

namespace clipwave {
namespace {

// How long a server gets to notice that a connection is gone, before a removal is tried again.
constexpr Seconds kRemovalPause{0.25};

// Whether the server, or one behind it, may still be at what it was asked for.
bool isUndecided(const WebDAVAnswer& answer) {
  return answer.status == 0 || answer.status == 502 || answer.status == 504;
}

// The same for every upload of the same file: what an upload that was killed left behind is replaced by the
// next one, and goes with it. A digest, as the file's own name may be as long as names can be.
std::string temporaryPathFor(std::string_view path) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : lastPathComponent(path)) hash = (hash ^ static_cast<std::uint8_t>(c)) * 0x100000001b3;
  std::array<char, 17> digits{};
  std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(hash));
  return stringByAppendingPathComponent(stringByDeletingLastPathComponent(path),
                                        std::string("clipwave-upload-") + digits.data() + ".part");
}

}  // namespace

UploadTransaction::UploadTransaction(const DotMacServices& services, const DotMacOptions& options,
                                     std::shared_ptr<WebDAVServer> server,
                                     std::shared_ptr<DMTransactionDelegate> delegate,
                                     std::string_view localPath, std::string_view toPath)
    : services_(services),
      options_(options),
      server_(std::move(server)),
      delegate_(std::move(delegate)),
      localPath_(localPath),
      toPath_(diskPath(toPath)),
      temporaryPath_(temporaryPathFor(toPath_)) {}

void UploadTransaction::start() {
  services_.runLoop.performLater([self = shared_from_this()] {
    if (self->phase_ == Phase::Starting) self->openFile();
  });
}

std::int64_t UploadTransaction::bytesTransferred() const {
  if (phase_ != Phase::Sending) return bytesTransferred_;
  return std::min(exchange_ ? exchange_->bytesSent() : 0, contentLength_);
}

void UploadTransaction::ask(Phase phase, WebDAVRequest request, Step next) {
  phase_ = phase;
  request_ = std::move(request);
  exchange_ = server_->sendInBackground(
      request_, [self = shared_from_this(), next](const WebDAVAnswer& answer) { (*self.*next)(answer); });
}

void UploadTransaction::openFile() {
  file_ = services_.files.fileHandleForReadingAtPath(localPath_);
  if (!file_) return fail("\"" + localPath_ + "\" cannot be read.", kDMInvalidParameter);
  contentLength_ = file_->size();
  // A MOVE onto a folder would replace the folder with all that it holds.
  ask(Phase::AskingDestination, WebDAVRequest::question(toPath_), &UploadTransaction::takeDestination);
}

void UploadTransaction::takeDestination(const WebDAVAnswer& answer) {
  if (answer.isMissing()) return sendFile();
  if (answer.failure) return failRequest(answer);
  if (answer.isFolder) return fail("A folder is there.", kDMResourceExists);
  sendFile();
}

void UploadTransaction::sendFile() {
  contentLength_ = file_->size();
  ask(Phase::Sending, {.method = "PUT", .path = temporaryPath_, .file = file_}, &UploadTransaction::takeSent);
}

void UploadTransaction::takeSent(const WebDAVAnswer& answer) {
  if (answer.failure) return failRequest(answer);
  bytesTransferred_ = contentLength_;
  ask(Phase::Moving, {.method = "MOVE", .path = temporaryPath_, .destination = toPath_},
      &UploadTransaction::takeMoved);
}

// Servers make a MOVE in two steps: what is there is removed, then the temporary file gets its name. Where
// the answer is lost or late, the destination holds what it held, the whole new file or, between the steps,
// nothing; to remove the temporary file then could leave neither. It stays for the next upload to replace.
void UploadTransaction::takeMoved(const WebDAVAnswer& answer) {
  if (!answer.failure) return end(&DMTransactionDelegate::transactionSuccessful);
  if (!ending_) return failRequest(answer);
  note(failureLine(request_, *answer.failure));
  if (isUndecided(answer)) return end(ending_);
  removeTemporaryFile();
}

void UploadTransaction::note(const std::string& what) {
  const std::string line = "The upload of \"" + toPath_ + "\": " + what;
  services_.log.write(line);
  // The reason comes first; what follows is about what is left.
  errorDescription_ += errorDescription_.empty() ? line : " " + what;
}

void UploadTransaction::failRequest(const WebDAVAnswer& answer) {
  // Who is not let in to send has left nothing, and is not let in to remove it either. Who may not move what
  // was sent may well remove it.
  mayHaveLeftFile_ = (phase_ == Phase::Sending && answer.failure->code != kDMInvalidCredentials) ||
                     (phase_ == Phase::Moving && !isUndecided(answer));
  mayStillAppear_ = phase_ == Phase::Sending && isUndecided(answer);
  fail(failureLine(request_, *answer.failure), answer.failure->code);
}

void UploadTransaction::fail(const std::string& why, int errorType) {
  note(why);
  errorType_ = errorType;
  beginCleanUp(&DMTransactionDelegate::transactionHadError);
  stopAndRemove();
}

void UploadTransaction::abort() {
  if (phase_ == Phase::CleaningUp || phase_ == Phase::Ended) return;
  const bool isMoving = phase_ == Phase::Moving;
  mayHaveLeftFile_ = mayStillAppear_ = phase_ == Phase::Sending;
  beginCleanUp(&DMTransactionDelegate::transactionAborted);
  // A MOVE is not stopped half-way: its answer is waited for.
  if (!isMoving) stopAndRemove();
}

void UploadTransaction::beginCleanUp(Ending ending) {
  bytesTransferred_ = bytesTransferred();
  phase_ = Phase::CleaningUp;
  ending_ = ending;
  limitCleanUp(options_.cleanUpTimeout);
}

void UploadTransaction::limitCleanUp(Seconds time) {
  if (cleanUpEnd_) cleanUpEnd_->invalidate();
  cleanUpEnd_ = services_.runLoop.scheduleTimer(time, [weak = weak_from_this()] {
    const auto self = weak.lock();
    if (!self || self->phase_ == Phase::Ended) return;
    self->note("\"" + self->temporaryPath_ + "\" may be left: the server did not answer in time.");
    self->end(self->ending_);
  });
}

void UploadTransaction::stopAndRemove() {
  const auto self = shared_from_this();  // which the request that is stopped may have been the last to hold
  exchange_.reset();
  file_.reset();
  if (mayHaveLeftFile_) return removeTemporaryFile();
  services_.runLoop.performLater([self] { self->end(self->ending_); });
}

void UploadTransaction::removeTemporaryFile() {
  if (phase_ == Phase::Ended) return;
  ask(Phase::CleaningUp, {.method = "DELETE", .path = temporaryPath_}, &UploadTransaction::takeRemoved);
}

void UploadTransaction::takeRemoved(const WebDAVAnswer& answer) {
  const bool isGone = !answer.failure || answer.isMissing();
  // A server that comes to a PUT only after nobody sends it any more may begin the file when it was already
  // asked to remove it; others hold the file locked until they notice.
  if (answer.status == 423 && !std::exchange(isLocked_, true)) limitCleanUp(options_.lockedTimeout);
  if (answer.status == 423 || (isGone && std::exchange(mayStillAppear_, false))) {
    exchange_.reset();
    services_.runLoop.scheduleTimer(kRemovalPause,
                                    [self = shared_from_this()] { self->removeTemporaryFile(); });
    return;
  }
  if (!isGone) note(failureLine(request_, *answer.failure));
  end(ending_);
}

void UploadTransaction::end(Ending ending) {
  const auto self = shared_from_this();
  if (phase_ == Phase::Ended) return;
  phase_ = Phase::Ended;
  exchange_.reset();
  file_.reset();
  if (cleanUpEnd_) cleanUpEnd_->invalidate();
  if (const auto delegate = std::exchange(delegate_, nullptr)) (*delegate.*ending)(*this);
}

}  // namespace clipwave
