// Writes a recording into a movie file that can be opened from its first seconds on. Internal to this room.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "platform/foundation/Error.h"
#include "platform/quicktime/MovieInput.h"

namespace clipwave {

// A QuickTime movie of MPEG-4 video (tag mp4v) and AAC sound. While it is being written it is a movie in
// fragments of about a second, each flushed to the disk as it ends; finishing adds the index of a plain movie
// behind them and makes one of it in place, in a time that does not grow with the recording. Used by one
// thread. Encodes and writes in the caller's time.
class MovieWriter {
 public:
  struct Picture {
    int width = 0;  // 1 to 8,190 pixels, odd ones included
    int height = 0;
    double framesPerSecond = 15;
    int bytesPerSecond = 192'000;
    int keyFrameRate = 0;  // pictures from one key frame to the next; 0: the writer's choice
  };
  struct Sound {
    int rate = 48'000;
    int channels = 2;
  };

  // Writes into the existing file at `path`, which is emptied first. At least one of the two is there. The
  // error's code is one of NSCocoaErrorDomain, kFileWriteOutOfSpaceError among them.
  static Result<std::unique_ptr<MovieWriter>> open(const std::string& path,
                                                   const std::optional<Picture>& picture,
                                                   const std::optional<Sound>& sound);
  virtual ~MovieWriter() = default;

  // A picture of any size and format, scaled to the movie's; `time` is in seconds from the recording's
  // beginning. Pictures stand on the grid of the frame rate: one that falls on a place that is taken already
  // is left out, and one that is missing leaves the one before it standing; the first stands from the
  // beginning. Answers whether it was taken; one that cannot be read or scaled is not.
  virtual Result<bool> addPicture(const AVFrame& picture, double time) = 0;
  // Samples in turn (left, right), without a gap from time 0 on.
  virtual Result<void> addSound(std::span<const float> samples) = 0;
  // What the tracks reach to, in seconds.
  virtual double recordedTime() const = 0;

  // Writes out what is held back and makes a plain movie of the file. After a failure of an addition it may
  // still be called: it keeps what was written whole. Fails where the file is no movie then. Once only.
  virtual Result<void> finish() = 0;
};

}  // namespace clipwave
