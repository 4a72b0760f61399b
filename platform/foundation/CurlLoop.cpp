#include "platform/foundation/CurlLoop.h"

#include <curl/curl.h>
#include <sys/socket.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace clipwave {
namespace {

struct Transfer {
  std::shared_ptr<void> owner;
  CURL* easy;
  CurlLoop::Completion done;  // none: it was ended, or has been told
};

}  // namespace

void prepareCurl() {
  [[maybe_unused]] static const CURLcode kOnce = curl_global_init(CURL_GLOBAL_DEFAULT);
}

// Outlives its loop where one of its own calls is on the stack.
class CurlLoop::State : public std::enable_shared_from_this<State> {
 public:
  explicit State(RunLoop& runLoop);
  ~State();

  std::shared_ptr<Transfer> add(std::shared_ptr<void> owner, CURL* easy, Completion done);
  void end(Transfer& transfer);

 private:
  struct Watches {
    std::unique_ptr<DescriptorWatch> readable;
    std::unique_ptr<DescriptorWatch> writable;
  };

  static int onSocket(CURL*, curl_socket_t socket, int what, void* self, void*) {
    static_cast<State*>(self)->watch(socket, what);
    return 0;
  }
  static int onTimer(CURLM*, long milliseconds, void* self) {
    static_cast<State*>(self)->setTimer(milliseconds);
    return 0;
  }

  void watch(curl_socket_t socket, int what);
  std::unique_ptr<DescriptorWatch> watchFor(curl_socket_t socket, RunLoop::Readiness readiness, int event);
  void setTimer(long milliseconds);
  void timerFired();
  void act(curl_socket_t socket, int event);
  void takeFinished();
  void removeEnded();
  void letGo(CURL* easy);
  static void dropUnsent(CURL* easy);
  void tellLater(std::shared_ptr<Transfer> transfer, int code);

  RunLoop& runLoop_;
  CURLM* multi_;
  std::map<CURL*, std::shared_ptr<Transfer>> transfers_;
  std::map<curl_socket_t, Watches> watches_;
  std::shared_ptr<Timer> timer_;
  bool isInside_ = false;  // libcurl is at work, and must not be called
};

CurlLoop::State::State(RunLoop& runLoop) : runLoop_(runLoop) {
  prepareCurl();
  multi_ = curl_multi_init();
  curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &State::onSocket);
  curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
  curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &State::onTimer);
  curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
}

CurlLoop::State::~State() {
  curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, nullptr);
  curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, nullptr);
  setTimer(-1);
  watches_.clear();
  for (const auto& [easy, transfer] : transfers_) {
    letGo(easy);
    transfer->owner.reset();
  }
  curl_multi_cleanup(multi_);
}

std::shared_ptr<Transfer> CurlLoop::State::add(std::shared_ptr<void> owner, CURL* easy, Completion done) {
  auto transfer = std::make_shared<Transfer>(Transfer{std::move(owner), easy, std::move(done)});
  if (easy != nullptr && curl_multi_add_handle(multi_, easy) == CURLM_OK) {
    transfers_[easy] = transfer;
  } else {
    tellLater(transfer, CURLE_FAILED_INIT);
  }
  return transfer;
}

void CurlLoop::State::end(Transfer& transfer) {
  transfer.done = nullptr;
  const auto found = transfers_.find(transfer.easy);
  if (isInside_ || found == transfers_.end() || found->second.get() != &transfer) return;
  dropUnsent(transfer.easy);
  letGo(transfer.easy);
  transfers_.erase(found);
}

void CurlLoop::State::watch(curl_socket_t socket, int what) {
  if (what == CURL_POLL_REMOVE) {
    watches_.erase(socket);
    return;
  }
  Watches& watches = watches_[socket];
  if ((what & CURL_POLL_IN) == 0) {
    watches.readable.reset();
  } else if (!watches.readable) {
    watches.readable = watchFor(socket, RunLoop::Readiness::Readable, CURL_CSELECT_IN);
  }
  if ((what & CURL_POLL_OUT) == 0) {
    watches.writable.reset();
  } else if (!watches.writable) {
    // libcurl looks for itself what there is to do. Told to write only, it would break over a connection that
    // was closed behind an answer, and never read that.
    watches.writable = watchFor(socket, RunLoop::Readiness::Writable, 0);
  }
}

std::unique_ptr<DescriptorWatch> CurlLoop::State::watchFor(curl_socket_t socket, RunLoop::Readiness readiness,
                                                           int event) {
  return runLoop_.watch(socket, readiness, [weak = weak_from_this(), socket, event] {
    if (const auto self = weak.lock()) self->act(socket, event);
  });
}

void CurlLoop::State::setTimer(long milliseconds) {
  if (timer_) timer_->invalidate();
  timer_.reset();
  if (milliseconds < 0) return;
  timer_ =
      runLoop_.scheduleTimer(Seconds(static_cast<double>(milliseconds) / 1000), [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->timerFired();
      });
}

void CurlLoop::State::timerFired() {
  timer_.reset();
  act(CURL_SOCKET_TIMEOUT, 0);
  if (timer_) return;
  // libcurl names a time only once. Where our clock was ahead of its own, nothing was due yet, and it still
  // waits.
  long milliseconds = -1;
  curl_multi_timeout(multi_, &milliseconds);
  if (milliseconds >= 0) setTimer(std::max(milliseconds, 1L));
}

void CurlLoop::State::act(curl_socket_t socket, int event) {
  if (isInside_) return;
  int running = 0;
  isInside_ = true;
  curl_multi_socket_action(multi_, socket, event, &running);
  isInside_ = false;
  takeFinished();
  removeEnded();
}

// Those that were ended while libcurl was at work.
void CurlLoop::State::removeEnded() {
  std::vector<std::shared_ptr<Transfer>> ended;  // an owner that goes may well end another transfer
  for (const auto& [easy, transfer] : transfers_) {
    if (!transfer->done) ended.push_back(transfer);
  }
  for (const auto& transfer : ended) {
    dropUnsent(transfer->easy);
    letGo(transfer->easy);
    transfers_.erase(transfer->easy);
  }
}

// libcurl reports a last progress while it lets a handle go. Nobody is to hear it: who ends a transfer may be
// half destroyed, and could end another one from there.
void CurlLoop::State::letGo(CURL* easy) {
  curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 1L);
  curl_multi_remove_handle(multi_, easy);
}

// What the system still holds of an upload would go on reaching the server after its end.
void CurlLoop::State::dropUnsent(CURL* easy) {
  curl_socket_t socket = CURL_SOCKET_BAD;
  if (curl_easy_getinfo(easy, CURLINFO_ACTIVESOCKET, &socket) != CURLE_OK || socket == CURL_SOCKET_BAD)
    return;
  const linger atOnce{1, 0};
  ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

void CurlLoop::State::takeFinished() {
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
    if (message->msg != CURLMSG_DONE) continue;
    CURL* const easy = message->easy_handle;
    const CURLcode code = message->data.result;  // the message goes with the handle
    letGo(easy);
    if (auto entry = transfers_.extract(easy)) tellLater(std::move(entry.mapped()), code);
  }
}

void CurlLoop::State::tellLater(std::shared_ptr<Transfer> transfer, int code) {
  // Not from here: the receiver may run the loop anew, and this descriptor would not be served meanwhile.
  runLoop_.performLater([weak = weak_from_this(), transfer = std::move(transfer), code] {
    const auto done = std::exchange(transfer->done, nullptr);
    if (done && !weak.expired()) done(code);
    transfer->owner.reset();
  });
}

CurlLoop::CurlLoop(RunLoop& runLoop) : state_(std::make_shared<State>(runLoop)) {}

CurlLoop::~CurlLoop() = default;

Observation CurlLoop::add(std::shared_ptr<void> owner, void* easy, Completion done) {
  // What `done` holds may well hold the answer: were the transfer held by it, too, none of them would ever
  // go.
  const std::weak_ptr transfer = state_->add(std::move(owner), easy, std::move(done));
  return Observation([weak = std::weak_ptr(state_), transfer] {
    const auto state = weak.lock();
    if (const auto running = transfer.lock(); state && running) state->end(*running);
  });
}

}  // namespace clipwave
