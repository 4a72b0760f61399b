#include "platform/quicktime/MovieWriter.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
}

#include "platform/foundation/Localization.h"
#include "platform/quicktime/CaptureTime.h"
#include "platform/quicktime/FragmentedFile.h"
#include "platform/quicktime/PictureEncoder.h"
#include "platform/quicktime/SoundEncoder.h"

namespace clipwave {
namespace {

// What a power failure takes away at the most is one fragment, what the encoders hold back, and what has not
// been handed over yet; two seconds are the bound for all of it.
constexpr double kFragmentSeconds = 1;
// The head of the movie says how much of the sound is priming, so the first fragment waits for it, in reason.
constexpr double kFirstFragmentSeconds = 1.5;
// A picture is held back until it is known for how long it stands. One that stands for longer than this,
// measured by the sound, is written and shown again.
constexpr double kLongestStanding = 1;
// A size at which this takes long is shown again less often: half of the time is for pictures that come.
constexpr double kStandingOfWork = 4;

// A picture this much (of a frame) nearer to the place after the next free one still takes that one: cameras
// whose pictures come half-way between two places would otherwise leave some empty and meet others taken.
constexpr double kJitter = 0.05;
constexpr double kLongestRecording = 1e8;  // seconds; a time beyond is a mistake

Error encodingError() {
  return cocoaError(kFileWriteUnknownError, localized("Recording", "The recording could not be encoded."));
}

class FragmentedMovieWriter final : public MovieWriter {
 public:
  FragmentedMovieWriter(std::unique_ptr<PictureEncoder> pictures, std::unique_ptr<SoundEncoder> sound,
                        std::unique_ptr<FragmentedFile> file)
      : pictures_(std::move(pictures)), sound_(std::move(sound)), file_(std::move(file)) {
    if (pictures_) framesPerSecond_ = av_q2d(pictures_->codec()->framerate);
  }

  Result<bool> addPicture(const AVFrame& picture, double time) override {
    if (failure_) return *failure_;
    if (!pictures_ || !(time < kLongestRecording)) return false;
    const std::int64_t place = placeOf(std::max(time, 0.0));
    if (place <= lastPlace_ || !pictures_->take(picture)) return false;
    // There is none before the first that could stand until it comes.
    if (Result<void> encoded = encodePicture(lastPlace_ < 0 ? 0 : place); !encoded) return encoded.error();
    lastPlace_ = place;
    return true;
  }

  Result<void> addSound(std::span<const float> samples) override {
    if (failure_) return *failure_;
    if (!sound_) return {};
    std::vector<MoviePacket> packets;
    if (!sound_->add(samples, packets)) return fail(encodingError());
    if (Result<void> written = writeSound(packets); !written) return written;
    return repeatPicture();
  }

  double recordedTime() const override {
    const double pictures = lastPlace_ < 0 ? 0 : static_cast<double>(lastPlace_ + 1) / framesPerSecond_;
    return std::max(pictures, sound_ ? sound_->seconds() : 0);
  }

  Result<void> finish() override {
    if (!failure_) drain();
    Result<void> finished = file_->finish();
    return !finished && failure_ ? Result<void>(*failure_) : finished;
  }

 private:
  // The place on the grid of the frame rate that a picture takes: the nearest, if it is free.
  std::int64_t placeOf(double time) const {
    const double place = time * framesPerSecond_;
    const auto nearest = static_cast<std::int64_t>(std::ceil(place - 0.5));
    const bool isStillNext =
        nearest == lastPlace_ + 2 && place <= static_cast<double>(nearest) - 0.5 + kJitter;
    return isStillNext ? lastPlace_ + 1 : nearest;
  }

  Result<void> encodePicture(std::int64_t place) {
    std::vector<MoviePacket> packets;
    const double begun = captureTime();
    if (!pictures_->encode(place, packets)) return fail(encodingError());
    encodingSeconds_ = captureTime() - begun;
    for (MoviePacket& packet : packets) {
      if (Result<void> written = writeHeldPicture(packet->pts); !written) return written;
      heldPicture_ = std::move(packet);
    }
    return {};
  }

  Result<void> repeatPicture() {
    if (lastPlace_ < 0) return {};
    const double standsFrom = static_cast<double>(lastPlace_) / framesPerSecond_;
    const double longest = std::max(kLongestStanding, kStandingOfWork * encodingSeconds_);
    if (sound_->seconds() - standsFrom <= longest) return {};
    // Half-way, so that a picture that comes late still finds its place free.
    const auto place = static_cast<std::int64_t>((sound_->seconds() - longest / 2) * framesPerSecond_);
    if (place <= lastPlace_) return {};
    lastPlace_ = place;
    return encodePicture(place);
  }

  Result<void> writeHeldPicture(std::int64_t until) {
    if (!heldPicture_) return {};
    MoviePacket packet = std::move(heldPicture_);
    packet->duration = std::max<std::int64_t>(until - packet->pts, 1);
    packet->stream_index = 0;
    return write(std::move(packet), av_q2d(pictures_->codec()->time_base));
  }

  Result<void> writeSound(std::vector<MoviePacket>& packets) {
    for (MoviePacket& packet : packets) {
      packet->stream_index = pictures_ ? 1 : 0;
      if (Result<void> written = write(std::move(packet), av_q2d(sound_->codec()->time_base)); !written)
        return written;
    }
    return {};
  }

  Result<void> write(MoviePacket packet, double timeBase) {
    reached_ = std::max(reached_, static_cast<double>(packet->pts + packet->duration) * timeBase);
    (packet->stream_index == 0 ? hasFirstTrack_ : hasSecondTrack_) = true;
    if (Result<void> added = file_->add(std::move(packet)); !added) return fail(added.error());
    const bool isComplete = hasFirstTrack_ && (hasSecondTrack_ || !pictures_ || !sound_);
    if (reached_ - fragmentStart_ < (isComplete ? kFragmentSeconds : kFirstFragmentSeconds)) return {};
    return endFragment();
  }

  Result<void> endFragment() {
    fragmentStart_ = reached_;
    Result<void> ended = file_->endFragment();
    return ended ? ended : fail(ended.error());
  }

  // A failure leaves what was written until then, which the file tells.
  void drain() {
    std::vector<MoviePacket> packets;
    if (sound_ && sound_->finish(packets) && !writeSound(packets)) return;
    if (pictures_ && heldPicture_ && !writeHeldPicture(heldPicture_->pts + 1)) return;
    (void)endFragment();
  }

  Result<void> fail(const Error& error) {
    failure_ = error;
    return error;
  }

  // The file looks at the encoders, and goes first.
  std::unique_ptr<PictureEncoder> pictures_;
  std::unique_ptr<SoundEncoder> sound_;
  std::unique_ptr<FragmentedFile> file_;
  double framesPerSecond_ = 1;
  double encodingSeconds_ = 0;  // of the last picture
  std::int64_t lastPlace_ = -1;
  MoviePacket heldPicture_;
  double reached_ = 0;        // by what was written, in seconds
  double fragmentStart_ = 0;  // where `reached_` stood when the fragment under way began
  bool hasFirstTrack_ = false;
  bool hasSecondTrack_ = false;
  std::optional<Error> failure_;
};

}  // namespace

Result<std::unique_ptr<MovieWriter>> MovieWriter::open(const std::string& path,
                                                       const std::optional<Picture>& picture,
                                                       const std::optional<Sound>& sound) {
  silenceMovieLibraries();
  std::unique_ptr<PictureEncoder> pictures = picture ? PictureEncoder::open(*picture) : nullptr;
  std::unique_ptr<SoundEncoder> sounds = sound ? SoundEncoder::open(*sound) : nullptr;
  if ((picture && !pictures) || (sound && !sounds) || (!pictures && !sounds)) return encodingError();
  std::vector<const AVCodecContext*> encoders;
  if (pictures) encoders.push_back(pictures->codec());
  if (sounds) encoders.push_back(sounds->codec());
  Result<std::unique_ptr<FragmentedFile>> file = FragmentedFile::open(path, std::move(encoders));
  if (!file) return file.error();
  return std::unique_ptr<MovieWriter>(
      std::make_unique<FragmentedMovieWriter>(std::move(pictures), std::move(sounds), std::move(*file)));
}

}  // namespace clipwave
