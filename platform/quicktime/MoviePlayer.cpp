#include "platform/quicktime/MoviePlayer.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "platform/quicktime/MovieInput.h"
#include "platform/quicktime/PlayerLink.h"
#include "platform/quicktime/PlayerThread.h"

namespace clipwave {
namespace {

// The playing thread says where it is at least this often.
constexpr double kLongestGuess = 0.25;

class ThreadedMoviePlayer final : public MoviePlayer {
 public:
  ThreadedMoviePlayer(std::string path, RunLoop& runLoop)
      : link_(std::make_shared<PlayerLink>(runLoop, [this](PlayerNews news) { receive(std::move(news)); })),
        thread_([path = std::move(path), link = link_] { PlayerThread(path, *link).run(); }) {}
  ~ThreadedMoviePlayer() override {
    link_->disconnect();
    thread_.join();
  }

  bool isOpen() const override { return facts_.has_value(); }
  double duration() const override { return facts().duration; }
  bool hasVideo() const override { return facts().hasVideo; }
  bool hasSound() const override { return facts().hasSound; }
  int naturalWidth() const override { return facts().naturalWidth; }
  int naturalHeight() const override { return facts().naturalHeight; }

  void setFrameSize(int width, int height) override {
    link_->change([=](PlayerWishes& wishes) {
      wishes.frameWidth = std::max(width, 0);
      wishes.frameHeight = std::max(height, 0);
    });
  }
  void setVolume(float volume) override {
    link_->change([=](PlayerWishes& wishes) { wishes.volume = volume; });
  }
  void play() override { setPlaying(true); }
  void pause() override { setPlaying(false); }
  bool isPlaying() const override { return playing_; }
  double time() const override;
  void setTime(double seconds) override;

  void setOnOpened(std::function<void()> function) override { onOpened_ = std::move(function); }
  void setOnFrame(std::function<void(const PixelBuffer&)> function) override {
    onFrame_ = std::move(function);
  }
  void setOnTime(std::function<void(double)> function) override { onTime_ = std::move(function); }
  void setOnEnd(std::function<void()> function) override { onEnd_ = std::move(function); }
  void setOnError(std::function<void(const Error&)> function) override { onError_ = std::move(function); }

 private:
  PlayerFacts facts() const { return facts_.value_or(PlayerFacts{}); }
  void setPlaying(bool playing);
  void receive(PlayerNews news);

  std::optional<PlayerFacts> facts_;
  bool playing_ = false;
  std::uint64_t serial_ = 0;
  double soughtTime_ = 0;
  std::uint64_t soughtSerial_ = 0;
  std::function<void()> onOpened_;
  std::function<void(const PixelBuffer&)> onFrame_;
  std::function<void(double)> onTime_;
  std::function<void()> onEnd_;
  std::function<void(const Error&)> onError_;
  std::shared_ptr<PlayerLink> link_;
  std::thread thread_;
};

void ThreadedMoviePlayer::setPlaying(bool playing) {
  if (playing_ == playing) return;
  playing_ = playing;
  ++serial_;
  link_->change([this](PlayerWishes& wishes) {
    wishes.playing = playing_;
    wishes.serial = serial_;
  });
}

// Between two reports of the playing thread, time goes on by itself.
double ThreadedMoviePlayer::time() const {
  const PlayerMoment moment = link_->moment();
  if (moment.serial < soughtSerial_) return soughtTime_;
  if (!moment.isRunning) return moment.time;
  const std::chrono::duration<double> since = std::chrono::steady_clock::now() - moment.at;
  const double time = moment.time + std::min(since.count(), kLongestGuess);
  return duration() > 0 ? std::min(time, duration()) : time;
}

void ThreadedMoviePlayer::setTime(double seconds) {
  soughtTime_ = std::max(seconds, 0.0);
  if (duration() > 0) soughtTime_ = std::min(soughtTime_, duration());
  soughtSerial_ = ++serial_;
  link_->change([this](PlayerWishes& wishes) {
    wishes.time = soughtTime_;
    wishes.playing = playing_;
    wishes.serial = serial_;
  });
}

// Whatever is called may destroy this player; the link tells, and outlives it.
void ThreadedMoviePlayer::receive(PlayerNews news) {
  const std::shared_ptr<PlayerLink> link = link_;
  const auto call = [&](const auto& function, const auto&... arguments) {
    if (!link->isConnected()) return;
    if (const auto copy = function) copy(arguments...);
  };
  if (news.opened) {
    facts_ = news.opened;
    call(onOpened_);
  }
  if (news.picture) call(onFrame_, *news.picture);
  if (!link->isConnected()) return;
  if (news.timeHasChanged || news.stopped) call(onTime_, time());
  if (!link->isConnected()) return;
  // Who has changed his mind since is not told of a stop that he did not see.
  if (news.stopped && *news.stopped != serial_) return;
  if (news.stopped || news.error) playing_ = false;
  if (news.error)
    call(onError_, *news.error);
  else if (news.stopped)
    call(onEnd_);
}

}  // namespace

std::unique_ptr<MoviePlayer> makeMoviePlayer(std::string_view path, RunLoop& runLoop) {
  silenceMovieLibraries();
  return std::make_unique<ThreadedMoviePlayer>(std::string(path), runLoop);
}

}  // namespace clipwave
