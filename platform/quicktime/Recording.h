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

  // Each takes what a device has delivered since the last time; the sound is consumed.
  void addSound(CaptureSource::Delivery& delivery);
  void addPictures(const CaptureSource::Delivery& delivery);
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
  void addPicture(const CapturedPicture& picture);
  double timeOf(double arrival, double device) const { return plan_.usesDeviceTimes ? device : arrival; }

  const Plan plan_;
  std::unique_ptr<RecordingThread> thread_;
  std::optional<SoundTrack> track_;
  double earliest_;              // what was captured before is not recorded
  std::optional<double> start_;  // of the recording's time, less the pauses
  double pausedAt_ = 0;
  std::int64_t lastPlace_ = -1;  // on the grid of the frame rate
  bool hasLost_ = false;         // pictures, since the last one
  std::int64_t dropped_ = 0;
};

}  // namespace clipwave
