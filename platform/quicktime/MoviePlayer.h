// Plays one local movie file: its pictures to whoever shows them, its sound on the system's device.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "platform/foundation/Error.h"
#include "platform/foundation/RunLoop.h"
#include "platform/quicktime/PixelBuffer.h"

namespace clipwave {

// Reads and decodes on a thread of its own; no operation waits for it but the destructor, which waits for
// what cannot be interrupted (a picture being decoded). Main thread only. Everything is reported from the run
// loop, in default mode; what was overtaken before it could be reported is left out. A function that is
// called back may do anything, the destruction of the player included. Times are seconds from the movie's
// beginning.
class MoviePlayer {
 public:
  virtual ~MoviePlayer() = default;

  // False until the file has been opened, which onOpened tells; until then there are no facts, but play(),
  // setTime() and the rest may be used already.
  virtual bool isOpen() const = 0;
  virtual double duration() const = 0;  // 0: not known
  virtual bool hasVideo() const = 0;
  virtual bool hasSound() const = 0;
  // The picture as it is meant to be seen: its pixels made square, turned as the file says. In pixels.
  virtual int naturalWidth() const = 0;
  virtual int naturalHeight() const = 0;

  // Pictures come as large as fits, in their own proportions, and never larger than their natural size; 0
  // sets no limit. A picture that is already shown comes again.
  virtual void setFrameSize(int width, int height) = 0;
  virtual void setVolume(float volume) = 0;  // 0 to 1

  // At the end of the movie, play() begins at its beginning. Where there is sound, time is what has been
  // heard of it; without sound, or without a device for it, time is the system's.
  virtual void play() = 0;
  virtual void pause() = 0;
  virtual bool isPlaying() const = 0;
  virtual double time() const = 0;
  // Exact: the picture that is reported is the one shown at that time. A request that comes before the last
  // was served replaces it. A playing movie goes on playing from there.
  virtual void setTime(double seconds) = 0;

  virtual void setOnOpened(std::function<void()> function) = 0;
  virtual void setOnFrame(std::function<void(const PixelBuffer&)> function) = 0;
  virtual void setOnTime(std::function<void(double)> function) = 0;  // some 20 times a second, playing
  // The movie has come to its end and stands there.
  virtual void setOnEnd(std::function<void()> function) = 0;
  // The file could not be opened (isOpen() stays false), or broke off while it was played: the player stands
  // still with the last picture. The error has a code of NSCocoaErrorDomain.
  virtual void setOnError(std::function<void(const Error&)> function) = 0;
};

// Begins to open the movie at an absolute path; its first picture is reported without being asked for.
// `runLoop` must outlive the player.
std::unique_ptr<MoviePlayer> makeMoviePlayer(std::string_view path, RunLoop& runLoop);

}  // namespace clipwave
