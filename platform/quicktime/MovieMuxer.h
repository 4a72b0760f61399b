// Turns encoded packets into the bytes of a QuickTime movie, in memory. Internal to this room.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string>

struct AVCodecContext;
struct AVFormatContext;
struct AVIOContext;
struct AVPacket;

namespace clipwave {

// Used by one thread. Operations answer whether they succeeded; after a failure the muxer is of no more use.
class MovieMuxer {
 public:
  enum class Kind {
    Fragments,  // a movie in fragments: each flush() ends one, the first begins with the movie's head
    Index,      // a plain movie, of which only what finish() writes is kept
  };

  // One track for each of the encoders; these, and the list of them, outlive the muxer. Null where the
  // library refuses.
  static std::unique_ptr<MovieMuxer> open(std::span<const AVCodecContext* const> encoders, Kind kind);
  ~MovieMuxer();

  // The packet's times count in its encoder's time base. It stays the caller's.
  bool write(const AVPacket& packet);
  bool flush();
  // Where the next packet stands in the movie.
  bool seek(std::int64_t offset);
  // Writes the index of a plain movie, standing at `offset`, which lies behind all packets.
  bool finish(std::int64_t offset);
  // What has been written since the last time.
  std::string take();

 private:
  explicit MovieMuxer(Kind kind) : kind_(kind) {}
  bool prepare(std::span<const AVCodecContext* const> encoders);
  int keep(const std::uint8_t* bytes, int count);
  std::int64_t moveTo(std::int64_t offset, int whence);
  static int writeBytes(void* self, std::uint8_t* bytes, int count);
  static std::int64_t seekTo(void* self, std::int64_t offset, int whence);

  struct FreeMuxer {
    void operator()(AVFormatContext* muxer) const;
    void operator()(AVIOContext* output) const;
  };

  Kind kind_;
  std::unique_ptr<AVIOContext, FreeMuxer> output_;  // outlives the muxer, which points to it
  std::unique_ptr<AVFormatContext, FreeMuxer> muxer_;
  std::span<const AVCodecContext* const> encoders_;
  std::int64_t position_ = 0;
  std::int64_t start_ = 0;  // where `bytes_` begins; what stands before is thrown away
  std::string bytes_;
};

}  // namespace clipwave
