// A recording that goes on: puts pictures and sound into one time and hands them to the thread that writes.
// Internal to this room.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/quicktime/CaptureSource.h"
#include "platform/quicktime/RecordingThread.h"
#include "platform/quicktime/SoundTrack.h"

namespace clipwave {

// Main thread only. Times are those of captureTime(). The recording's time 0 is its first picture's, so that
// the pictures stand on their places as they come; without pictures it is its beginning.
class Recording {
 public:
  struct Plan {
    std::string path;
    std::optional<MovieWriter::Picture> picture;
    std::optional<int> soundInputRate;
    bool soundIsMaster = false;
    bool usesDeviceTimes = false;
    double startedAt = 0;
  };
  static Result<std::unique_ptr<Recording>> start(const Plan& plan);

  // What the devices have delivered since the last time; the sound is consumed.
  void add(CaptureSource::Delivery& sound, const CaptureSource::Delivery& pictures);
  // What lies between the two is no part of the recording.
  void pause(double time);
  void resume(double time);

  std::optional<Error> error() const { return thread_->error(); }
  double recordedTime() const { return thread_->recordedTime(); }
  std::int64_t droppedPictures() const { return dropped_; }
  Result<void> finish();

 private:
  Recording(const Plan& plan, std::unique_ptr<MovieWriter> writer);
  void begin(double start);
  void beginWithoutPicture();
  void takeSound(CaptureSource::Delivery& delivery);
  void addPicture(const CapturedPicture& picture);
  void handOnCandidate();
  double timeOf(double arrival, double device) const { return plan_.usesDeviceTimes ? device : arrival; }

  const Plan plan_;
  std::unique_ptr<RecordingThread> thread_;
  std::optional<SoundTrack> track_;
  double earliest_;              // what was captured before is not recorded
  std::optional<double> start_;  // of the recording's time, less the pauses
  double pausedAt_ = 0;
  // Places on the grid of the frame rate.
  std::int64_t firstPlace_ = 0;  // of the first picture, and of the first one after a pause
  std::int64_t nextPlace_ = 0;   // that is free
  MovieFrame candidate_;         // for a place, until a later picture comes for another
  std::int64_t candidatePlace_ = 0;
  double candidateDistance_ = 0;
  bool hasLost_ = false;  // pictures, since the last one
  std::int64_t dropped_ = 0;
};

}  // namespace clipwave
