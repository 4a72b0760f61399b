// What a movie player does on its own thread: decoding, keeping time, and handing out pictures and sound when
// they are due. Internal to this room.
#pragma once

#include <optional>
#include <string>

#include "platform/quicktime/MovieReader.h"
#include "platform/quicktime/PictureScaler.h"
#include "platform/quicktime/PlayerLink.h"
#include "platform/quicktime/SoundOutput.h"

namespace clipwave {

class PlayerThread {
 public:
  PlayerThread(std::string path, PlayerLink& link) : path_(std::move(path)), link_(link) {}
  // Opens the movie and obeys the link's wishes until these say quit, or the movie cannot be opened.
  void run();

 private:
  using TimePoint = std::chrono::steady_clock::time_point;
  enum class Search { Found, OnlyLater, Nothing, Overtaken };

  bool open();
  void obey(const PlayerWishes& wishes);
  void goTo(double target);
  bool findPicture(double target);
  Search decodeTo(double target, bool found);
  void begin(double position);
  void start();
  void pause();
  void prepareSound();
  TimePoint step();
  void feedSound();
  void appendSound(MovieReader::Sound sound);
  void showDuePictures();
  void show();
  bool hasEnded() const;
  void finish();
  double contentEnd() const;
  double now() const;

  const std::string path_;
  PlayerLink& link_;
  std::unique_ptr<MovieReader> reader_;
  std::uint64_t serial_ = 0;
  bool playing_ = false;
  bool atEnd_ = false;
  // The clock: where it stood when it was let run, and since when; the sound's own takes its place.
  double position_ = 0;
  TimePoint startedAt_;
  // Sound.
  std::unique_ptr<SoundOutput> output_;
  bool soundIsPrepared_ = false;
  float volume_ = 1;
  double soundBase_ = 0;                            // where the first sample that the output counts belongs
  double soundPosition_ = 0;                        // where the next sample belongs
  bool soundIsNew_ = true;                          // what comes next is to stand exactly in its place
  std::optional<MovieReader::Sound> waitingSound_;  // comes after a gap
  // Pictures.
  PictureShape shape_;
  PictureScaler scaler_;
  std::optional<MovieReader::Picture> shown_;
  std::optional<MovieReader::Picture> ahead_;
  TimePoint shownAt_;
  TimePoint toldTimeAt_;
};

}  // namespace clipwave
