// Scales pictures to a movie's size and encodes them as MPEG-4 video. Internal to this room.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/quicktime/MovieInput.h"
#include "platform/quicktime/MovieWriter.h"

namespace clipwave {

// Used by one thread. Times count in frames of the movie's rate.
class PictureEncoder {
 public:
  // Null where the library refuses such pictures.
  static std::unique_ptr<PictureEncoder> open(const MovieWriter::Picture& wanted);
  ~PictureEncoder();

  const AVCodecContext* codec() const { return encoder_.get(); }
  // Makes it the current picture. False for one that has no content, or of a format that cannot be read.
  bool take(const AVFrame& picture);
  // Encodes the current picture to stand at `place`, which is beyond the one before. The packets are
  // appended. False: the encoder failed.
  bool encode(std::int64_t place, std::vector<MoviePacket>& packets);

 private:
  PictureEncoder() = default;
  bool prepare(const AVFrame& picture);

  struct Source {
    int width = 0;
    int height = 0;
    int format = -1;
    int colourSpace = 0;
    bool hasFullRange = false;
    bool operator==(const Source&) const = default;
  };

  MovieDecoder encoder_;
  MovieFrame current_;
  std::unique_ptr<SwsContext, FreeLibraryObject> scaler_;
  Source source_;
};

// Hands a frame, or null for the end, to an encoder and appends the packets it answers.
bool encodeFrame(AVCodecContext& encoder, const AVFrame* frame, std::vector<MoviePacket>& packets);

}  // namespace clipwave
