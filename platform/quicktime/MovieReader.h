// Decodes the picture and the sound of one movie file, each at its own pace. Internal to this room.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/quicktime/MovieInput.h"

namespace clipwave {

inline constexpr int kSoundRate = 48'000;  // samples of each channel in a second
inline constexpr int kSoundChannels = 2;

// Used by one thread. Times are seconds from the movie's beginning.
class MovieReader {
 public:
  struct Picture {
    MovieFrame frame;
    double time;
    double duration;  // 0: unknown
  };
  struct Sound {
    std::vector<std::int16_t> samples;  // left and right in turn
    double time;
  };

  // Fails as openMovieInput does, and for a file of which neither picture nor sound can be decoded.
  static Result<std::unique_ptr<MovieReader>> open(const std::string& path, MovieInterruption interruption);
  ~MovieReader();

  double duration() const { return duration_; }  // 0: the file does not say
  bool hasPicture() const { return picture_.decoder != nullptr; }
  bool hasSound() const { return sound_.decoder != nullptr; }
  // The picture as it is meant to be seen: pixels made square, and turned.
  int naturalWidth() const;
  int naturalHeight() const;
  int quarterTurns() const { return quarterTurns_; }  // clockwise, 0 to 3
  double pixelAspect() const { return pixelAspect_; }

  // The next picture or stretch of sound. Nothing at the end of the track, and also where the file holds none
  // for a while; only then the end has not come.
  std::optional<Picture> nextPicture();
  std::optional<Sound> nextSound();
  bool pictureHasEnded() const { return picture_.ended; }
  bool soundHasEnded() const { return sound_.ended; }
  // Whether the file broke off: it could not be read to its end, or ends long before what its header says.
  // Of meaning once both tracks have ended; `reached` is how far they went.
  bool hasBrokenOff(double reached) const;

  // Goes on from a point at or before `time` from which both tracks can be decoded. False: cannot be sought.
  bool seek(double time);
  // Whether decoding on from `position` comes to `time` sooner than seeking would.
  bool isAhead(double position, double time) const;
  // Pictures that no other depends on are left out, to catch up.
  void setHurried(bool hurried);
  // From now on there is no sound in this movie.
  void ignoreSound();

 private:
  struct Track {
    int index = -1;
    MovieDecoder decoder;
    std::deque<MoviePacket> packets;
    std::int64_t bytes = 0;  // of the packets
    double readUntil = 0;    // where decoding has come to, by the packets taken
    double time = 0;         // where the frame after the last is expected
    int mayBeSkipped = 0;    // packets, until one that is understood without the ones before
    bool drained = false;    // the decoder was told that nothing follows
    bool ended = false;
  };

  MovieReader() = default;
  void choose(Track& track, int type);
  void readFacts();
  AVStream& stream(const Track& track) const;
  double secondsOf(const Track& track, std::int64_t timestamp) const;
  MovieFrame nextFrame(Track& track, const Track& other);
  bool seekNear(double time);
  MoviePacket nextPacket(Track& track, const Track& other);
  bool mustWait(const Track& track, const Track& other) const;
  void readPacket();
  bool prepareResampler(const AVFrame& frame);

  MovieInput input_;
  Track picture_;
  Track sound_;
  std::unique_ptr<SwrContext, FreeLibraryObject> resampler_;
  int resampledRate_ = 0;
  int resampledFormat_ = -1;
  int resampledChannels_ = 0;
  double start_ = 0;
  double duration_ = 0;
  double pixelAspect_ = 1;
  int quarterTurns_ = 0;
  bool atEnd_ = false;
  bool failed_ = false;
};

}  // namespace clipwave
