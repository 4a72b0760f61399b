// Encodes samples as AAC sound. Internal to this room.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/quicktime/MovieInput.h"
#include "platform/quicktime/MovieWriter.h"

namespace clipwave {

// Used by one thread. Times count in samples of one channel.
class SoundEncoder {
 public:
  // Null where the library refuses such sound.
  static std::unique_ptr<SoundEncoder> open(const MovieWriter::Sound& wanted);
  ~SoundEncoder();

  const AVCodecContext* codec() const { return encoder_.get(); }
  // The channels' samples in turn. Packets are appended as they become ready, and all that are left at the
  // end. False: the encoder failed.
  bool add(std::span<const float> samples, std::vector<MoviePacket>& packets);
  bool finish(std::vector<MoviePacket>& packets);
  double seconds() const;  // of what was added

 private:
  SoundEncoder() = default;
  bool encodeFilled(std::vector<MoviePacket>& packets);

  MovieDecoder encoder_;
  MovieFrame frame_;
  int filled_ = 0;  // samples of each channel in the frame
  std::int64_t added_ = 0;
};

}  // namespace clipwave
