#include "platform/quicktime/PlayerLink.h"

#include <utility>

namespace clipwave {

void PlayerLink::change(const std::function<void(PlayerWishes&)>& function) {
  {
    const std::lock_guard lock(mutex_);
    function(wishes_);
    overtaken_ = wishes_.time.has_value() || wishes_.quit;
    quit_ = wishes_.quit;
    hasChanged_ = true;
  }
  changed_.notify_one();
}

PlayerMoment PlayerLink::moment() const {
  const std::lock_guard lock(mutex_);
  return moment_;
}

void PlayerLink::disconnect() {
  receiver_ = nullptr;
  change([](PlayerWishes& wishes) { wishes.quit = true; });
}

PlayerWishes PlayerLink::awaitWishes(TimePoint until) {
  std::unique_lock lock(mutex_);
  const auto hasChanged = [this] { return hasChanged_; };
  if (until == TimePoint::max())
    changed_.wait(lock, hasChanged);
  else
    changed_.wait_until(lock, until, hasChanged);
  hasChanged_ = false;
  overtaken_ = wishes_.quit;
  PlayerWishes taken = wishes_;
  wishes_.time.reset();
  return taken;
}

void PlayerLink::setMoment(const PlayerMoment& moment) {
  const std::lock_guard lock(mutex_);
  moment_ = moment;
}

// One delivery at a time is under way, so that a loop that is busy or modal is not flooded afterwards.
void PlayerLink::report(const std::function<void(PlayerNews&)>& function) {
  const std::lock_guard lock(mutex_);
  function(news_);
  if (std::exchange(isDeliveryDue_, true)) return;
  runLoop_.performFromAnyThread([self = shared_from_this()] { self->deliver(); });
}

void PlayerLink::reportStop(std::uint64_t serial, std::optional<Error> error) {
  report([&](PlayerNews& news) {
    if (wishes_.serial != serial) return;
    wishes_.playing = false;
    news.stopped = serial;
    news.error = std::move(error);
  });
}

void PlayerLink::deliver() {
  PlayerNews news;
  {
    const std::lock_guard lock(mutex_);
    news = std::exchange(news_, {});
    isDeliveryDue_ = false;
  }
  // Called through a copy: the player may be destroyed by what it tells.
  if (const Receiver receiver = receiver_) receiver(std::move(news));
}

}  // namespace clipwave
