// What is seen and heard when a recorded movie is played from its beginning to its end.
#pragma once

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "platform/quicktime/MovieReader.h"
#include "platform/quicktime/PictureScaler.h"
#include "tests/support/RealMovies.h"

namespace clipwave::testing {

// Times in seconds.
struct Played {
  int pictures = 0;
  double end = 0;               // of the track that ends first
  std::vector<double> flashes;  // when the picture turns white
  std::vector<double> beeps;    // when a sound begins that is loud
};

// None for a file that does not open.
inline std::optional<Played> play(const std::string& path) {
  const auto reader = MovieReader::open(path, {[](void*) { return 0; }, nullptr});
  if (!reader) return {};
  MovieReader& movie = **reader;
  PictureScaler scaler;
  Played played;
  double pictureEnd = 0, soundEnd = 0, lastBeep = -1;
  bool wasWhite = false;
  // In turn: where one track pauses, the reader waits for the other to be taken.
  while ((movie.hasPicture() && !movie.pictureHasEnded()) || (movie.hasSound() && !movie.soundHasEnded())) {
    if (const auto picture = movie.hasPicture() ? movie.nextPicture() : std::nullopt) {
      ++played.pictures;
      pictureEnd = picture->time + picture->duration;
      const auto pixels = scaler.scaled(*picture->frame, {});
      const bool isWhite = pixels && pixels->bytes[0] > 180;
      if (isWhite && !wasWhite) played.flashes.push_back(picture->time);
      wasWhite = isWhite;
    }
    const auto sound = movie.hasSound() ? movie.nextSound() : std::nullopt;
    for (std::size_t i = 0; sound && i < sound->samples.size(); i += 2) {
      soundEnd = sound->time + static_cast<double>(i / 2) / kSoundRate;
      if (std::abs(sound->samples[i]) <= 3000) continue;
      if (soundEnd - lastBeep > 0.3) played.beeps.push_back(soundEnd);
      lastBeep = soundEnd;
    }
  }
  played.end = std::min(pictureEnd, soundEnd);
  return played;
}

// One line a track: codec, tag, then width, height and frame rate, or sample rate and channels.
inline std::string tracks(const std::string& path) {
  return probeMovie(path,
                    "stream=codec_name,codec_tag_string,sample_rate,channels,width,height,r_frame_rate");
}

}  // namespace clipwave::testing
