#include "platform/quicktime/CaptureSource.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/quicktime/CaptureTime.h"

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/imgutils.h>
}

namespace clipwave {
namespace {

using Interval = std::chrono::duration<double>;

constexpr double kAskAgain = 0.004;    // between two looks at a device that had nothing
constexpr double kLongestSilence = 5;  // after which a device counts as gone
constexpr double kLongestClosing = 2;  // waited for
constexpr double kKeptSeconds = 5;     // of pictures, and for the main thread to come back
constexpr double kKeptSound = 30;      // seconds of it, which is little
constexpr double kNewestSound = 0.25;  // seconds kept for the level alone
constexpr std::size_t kKeptBytes = std::size_t{256} << 20;

std::size_t bytesOf(const CapturedPicture& picture) {
  const AVFrame& frame = *picture.frame;
  const int bytes =
      av_image_get_buffer_size(static_cast<AVPixelFormat>(frame.format), frame.width, frame.height, 1);
  return bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
}

}  // namespace

struct CaptureSource::Shared {
  std::atomic<bool> quit{false};
  mutable std::mutex mutex;  // guards all that follows
  std::condition_variable changed;
  bool isOpened = false;
  bool hasEnded = false;    // delivers no more
  bool isFinished = false;  // the device is closed
  bool keepsAll = false;
  bool hasLostPictures = false;
  CaptureFacts facts;
  std::deque<CapturedPicture> pictures;
  std::deque<CapturedSound> sounds;
  std::size_t bytes = 0;

  // False when the end was asked for.
  bool sleep(double seconds) {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, Interval(seconds), [this] { return quit.load(); });
    return !quit;
  }
  void dropOldestPicture() {
    bytes -= bytesOf(pictures.front());
    pictures.pop_front();
  }
  void add(CapturedPicture picture) {
    bytes += bytesOf(picture);
    pictures.push_back(std::move(picture));
    while (pictures.size() > 1 &&
           (!keepsAll || bytes > kKeptBytes || pictures.back().time - pictures.front().time > kKeptSeconds)) {
      hasLostPictures = hasLostPictures || keepsAll;
      dropOldestPicture();
    }
  }
  void add(CapturedSound sound) {
    sounds.push_back(std::move(sound));
    const double kept = keepsAll ? kKeptSound : kNewestSound;
    while (sounds.back().time - sounds.front().time > kept) sounds.pop_front();
  }
};

CaptureSource::CaptureSource(std::shared_ptr<Shared> shared)
    : shared_(std::move(shared)), facts_(shared_->facts) {}

std::unique_ptr<CaptureSource> CaptureSource::open(const CaptureRequest& request, double seconds) {
  auto shared = std::make_shared<Shared>();
  try {
    std::thread([shared, request] { run(shared, request); }).detach();
  } catch (const std::system_error&) {
    return nullptr;
  }
  std::unique_lock lock(shared->mutex);
  shared->changed.wait_for(lock, Interval(seconds), [&] { return shared->isOpened || shared->hasEnded; });
  if (!shared->isOpened) {
    shared->quit = true;
    shared->changed.notify_all();
    return nullptr;
  }
  return std::unique_ptr<CaptureSource>(new CaptureSource(shared));
}

CaptureSource::~CaptureSource() {
  std::unique_lock lock(shared_->mutex);
  shared_->quit = true;
  shared_->changed.notify_all();
  shared_->changed.wait_for(lock, Interval(kLongestClosing), [this] { return shared_->isFinished; });
}

void CaptureSource::setKeepsAll(bool keepsAll) {
  const std::lock_guard lock(shared_->mutex);
  shared_->keepsAll = keepsAll;
}

CaptureSource::Delivery CaptureSource::take() {
  std::deque<CapturedPicture> pictures;
  std::deque<CapturedSound> sounds;
  Delivery delivery;
  {
    const std::lock_guard lock(shared_->mutex);
    pictures.swap(shared_->pictures);
    sounds.swap(shared_->sounds);
    shared_->bytes = 0;
    delivery.hasLostPictures = std::exchange(shared_->hasLostPictures, false);
    delivery.hasEnded = shared_->hasEnded;
  }
  delivery.pictures.assign(std::make_move_iterator(pictures.begin()),
                           std::make_move_iterator(pictures.end()));
  delivery.sounds.assign(std::make_move_iterator(sounds.begin()), std::make_move_iterator(sounds.end()));
  return delivery;
}

bool CaptureSource::hasEnded() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->hasEnded;
}

// On the source's thread, which nobody joins: what it uses is held by `shared`.
void CaptureSource::run(const std::shared_ptr<Shared>& shared, const CaptureRequest& request) {
  {
    const std::unique_ptr<CaptureInput> input = CaptureInput::open(request, shared->quit);
    if (input) {
      {
        const std::lock_guard lock(shared->mutex);
        shared->facts = input->facts();
        shared->isOpened = true;
      }
      shared->changed.notify_all();
    }
    double heardAt = captureTime();
    std::vector<CaptureInput::Captured> captured;
    while (input && !shared->quit) {
      const CaptureInput::Outcome outcome = input->read(captured);
      if (outcome == CaptureInput::Outcome::Ended) break;
      if (!captured.empty()) {
        heardAt = captureTime();
        deliver(*shared, captured, request.isPaced);
      } else if (captureTime() - heardAt > kLongestSilence) {
        break;
      }
      if (outcome == CaptureInput::Outcome::NothingYet) shared->sleep(kAskAgain);
    }
    const std::lock_guard lock(shared->mutex);
    shared->hasEnded = true;
  }
  const std::lock_guard lock(shared->mutex);
  shared->isFinished = true;
  shared->changed.notify_all();
}

void CaptureSource::deliver(Shared& shared, std::vector<CaptureInput::Captured>& captured, bool isPaced) {
  for (CaptureInput::Captured& one : captured) {
    const double time = std::visit([](const auto& what) { return what.time; }, one);
    if (isPaced && !shared.sleep(time - captureTime())) break;
    const std::lock_guard lock(shared.mutex);
    std::visit([&](auto& what) { shared.add(std::move(what)); }, one);
  }
  captured.clear();
}

}  // namespace clipwave
