#include "platform/foundation/DescriptorWatches.h"

#include <poll.h>

#include <algorithm>
#include <cmath>
#include <ctime>

namespace clipwave {
namespace {

constexpr double kLongestWait = 24 * 60 * 60;  // seconds; keeps the conversion below in range

bool pollFor(Seconds wait, std::vector<pollfd>& polled) {
  const double seconds = std::min(wait.count(), kLongestWait);
  timespec timeout{static_cast<time_t>(seconds), 0};
  timeout.tv_nsec = std::min(999'999'999L, std::lround(std::ceil((seconds - std::floor(seconds)) * 1e9)));
  return ::ppoll(polled.data(), polled.size(), &timeout, nullptr) > 0;
}

}  // namespace

// Shared between the loop and the caller's watch: whichever goes first, the other finds it marked.
struct DescriptorWatches::Watched {
  int descriptor;
  short events;
  bool alsoModal;
  bool isBeingCalled = false;
  std::shared_ptr<RunLoop::Function> function;  // none: no longer watched
};

class DescriptorWatches::Watch final : public DescriptorWatch {
 public:
  explicit Watch(std::shared_ptr<Watched> watched) : watched_(std::move(watched)) {}
  ~Watch() override { watched_->function = nullptr; }

 private:
  std::shared_ptr<Watched> watched_;
};

// What poll() is asked, and whom each line of it is about.
struct DescriptorWatches::Polled {
  std::vector<pollfd> lines;
  std::vector<std::shared_ptr<Watched>> watched;
};

DescriptorWatches::DescriptorWatches() = default;
DescriptorWatches::~DescriptorWatches() = default;

std::unique_ptr<DescriptorWatch> DescriptorWatches::watch(int descriptor, RunLoop::Readiness readiness,
                                                          RunLoop::Function function,
                                                          RunLoop::Delivery delivery) {
  auto watched = std::make_shared<Watched>();
  watched->descriptor = descriptor;
  watched->events = readiness == RunLoop::Readiness::Readable ? POLLIN : POLLOUT;
  watched->alsoModal = delivery == RunLoop::Delivery::DefaultAndModal;
  watched->function = std::make_shared<RunLoop::Function>(std::move(function));
  watched_.push_back(watched);
  return std::make_unique<Watch>(std::move(watched));
}

DescriptorWatches::Polled DescriptorWatches::askedInMode(RunLoop::Mode mode) {
  std::erase_if(watched_, [](const auto& watched) { return watched->function == nullptr; });
  Polled asked;
  for (const auto& watched : watched_) {
    if (watched->isBeingCalled || (mode == RunLoop::Mode::Modal && !watched->alsoModal)) continue;
    asked.lines.push_back({watched->descriptor, watched->events, 0});
    asked.watched.push_back(watched);
  }
  return asked;
}

bool DescriptorWatches::waitForReady(Seconds longest, RunLoop::Mode mode, int wakeUp) {
  Polled asked = askedInMode(mode);
  if (wakeUp >= 0) asked.lines.push_back({wakeUp, POLLIN, 0});
  return pollFor(longest, asked.lines);
}

bool DescriptorWatches::callReady(RunLoop::Mode mode) {
  if (watched_.empty()) return false;
  Polled asked = askedInMode(mode);
  if (!pollFor(Seconds(0), asked.lines)) return false;
  const std::uint64_t thisTurn = turn_;
  bool called = false;
  for (std::size_t i = 0; i < asked.lines.size(); ++i) {
    // A turn that ran inside a call has looked at the descriptors anew: what we know of the rest is stale.
    if (turn_ != thisTurn) break;
    Watched& watched = *asked.watched[i];
    const auto function = watched.function;
    if (asked.lines[i].revents == 0 || !function) continue;
    watched.isBeingCalled = true;
    (*function)();
    watched.isBeingCalled = false;
    called = true;
  }
  return called;
}

}  // namespace clipwave
