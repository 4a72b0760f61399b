#include "platform/dotmac/UploadTransaction.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/dotmac/WebDAVErrors.h"

namespace clipwave {
namespace {

// How long a server gets to notice that a connection is gone, before a removal is tried again.
constexpr Seconds kRemovalPause{0.25};

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

// Where the answer got lost, nobody knows whether the file was moved: its destination then holds either what
// it held before or the whole new file, and the removal of the temporary file, which may be gone, does no
// harm.
void UploadTransaction::takeMoved(const WebDAVAnswer& answer) {
  if (answer.failure) return failRequest(answer);
  end(&DMTransactionDelegate::transactionSuccessful);
}

void UploadTransaction::log(const std::string& what) {
  services_.log.write("The upload of \"" + toPath_ + "\": " + what);
}

void UploadTransaction::failRequest(const WebDAVAnswer& answer) {
  fail(failureLine(request_, *answer.failure), answer.failure->code);
}

void UploadTransaction::fail(const std::string& why, int errorType) {
  log(why);
  errorType_ = errorType;
  // Who is not let in has left nothing, and is not let in to remove it either.
  cleanUp(&DMTransactionDelegate::transactionHadError, errorType != kDMInvalidCredentials);
}

// Where the MOVE is under way it may have been made already; the destination then holds the whole new file.
void UploadTransaction::abort() {
  if (phase_ == Phase::CleaningUp || phase_ == Phase::Ended) return;
  cleanUp(&DMTransactionDelegate::transactionAborted, true);
}

void UploadTransaction::cleanUp(Ending ending, bool mayHaveLeftFile) {
  const bool wasSent = phase_ == Phase::Sending || phase_ == Phase::Moving;
  bytesTransferred_ = bytesTransferred();
  // A server that has the whole file may put it in its place after it was asked to remove it.
  mayStillAppear_ = phase_ == Phase::Sending && bytesTransferred_ == contentLength_;
  phase_ = Phase::CleaningUp;
  ending_ = ending;
  exchange_.reset();
  file_.reset();
  if (!wasSent || !mayHaveLeftFile) {
    services_.runLoop.performLater([self = shared_from_this()] { self->end(self->ending_); });
    return;
  }
  cleanUpEnd_ = services_.runLoop.scheduleTimer(options_.cleanUpTimeout, [weak = weak_from_this()] {
    const auto self = weak.lock();
    if (!self || self->phase_ == Phase::Ended) return;
    self->log("\"" + self->temporaryPath_ + "\" could not be removed in time.");
    self->end(self->ending_);
  });
  removeTemporaryFile();
}

void UploadTransaction::removeTemporaryFile() {
  if (phase_ == Phase::Ended) return;
  ask(Phase::CleaningUp, {.method = "DELETE", .path = temporaryPath_}, &UploadTransaction::takeRemoved);
}

void UploadTransaction::takeRemoved(const WebDAVAnswer& answer) {
  const bool mayAppear = answer.isMissing() && std::exchange(mayStillAppear_, false);
  // Some servers hold the file locked until they notice that nobody sends any more.
  if (answer.status == 423 || mayAppear) {
    exchange_.reset();
    services_.runLoop.scheduleTimer(kRemovalPause,
                                    [self = shared_from_this()] { self->removeTemporaryFile(); });
    return;
  }
  if (answer.failure && !answer.isMissing()) log(failureLine(request_, *answer.failure));
  end(ending_);
}

void UploadTransaction::end(Ending ending) {
  phase_ = Phase::Ended;
  exchange_.reset();
  file_.reset();
  if (cleanUpEnd_) cleanUpEnd_->invalidate();
  const auto self = shared_from_this();
  if (const auto delegate = std::exchange(delegate_, nullptr)) (*delegate.*ending)(*this);
}

}  // namespace clipwave
