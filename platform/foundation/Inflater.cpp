#include "platform/foundation/Inflater.h"

#define ZLIB_CONST  // zlib does not write to what it reads
#include <zlib.h>

#include <algorithm>
#include <array>

namespace clipwave {
namespace {

constexpr std::size_t kMostAtOnce = std::size_t{16} << 10;
constexpr std::size_t kBeginningSize = 2;
constexpr std::string_view kGzipBeginning = "\x1F\x8B";

// How zlib is told what a stream is wrapped in, beside the largest window.
constexpr int kZlib = MAX_WBITS, kGzip = MAX_WBITS + 16, kRaw = -MAX_WBITS;

bool isZlibBeginning(std::string_view bytes) {
  const int method = static_cast<unsigned char>(bytes[0]), flags = static_cast<unsigned char>(bytes[1]);
  return (method & 0x0F) == Z_DEFLATED && method >> 4 <= MAX_WBITS - 8 && (method * 256 + flags) % 31 == 0;
}

}  // namespace

struct Inflater::Stream {
  explicit Stream(int wrapping) : isReady(inflateInit2(&z, wrapping) == Z_OK) {}
  ~Stream() { inflateEnd(&z); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  z_stream z{};
  bool isReady;
};

Inflater::Inflater(Format format) : format_(format) {}
Inflater::~Inflater() = default;

bool Inflater::unpack(std::string_view piece, const std::function<bool(std::string_view)>& take) {
  while (!piece.empty() && state_ != State::Ended && state_ != State::Failed) {
    if (state_ == State::Inside) {
      state_ = inflate(piece, take);
      continue;
    }
    const std::size_t wanted = std::min(kBeginningSize - beginning_.size(), piece.size());
    beginning_ += piece.substr(0, wanted);
    piece.remove_prefix(wanted);
    if (beginning_.size() < kBeginningSize) continue;
    begin();
    for (std::string_view rest = beginning_; state_ == State::Inside && !rest.empty();)
      state_ = inflate(rest, take);
    beginning_.clear();
  }
  return state_ != State::Failed;
}

void Inflater::begin() {
  if (state_ == State::BetweenMembers && beginning_ != kGzipBeginning) {
    state_ = State::Ended;
  } else if (stream_ != nullptr) {
    inflateReset(&stream_->z);
    state_ = State::Inside;
  } else {
    const int wrapping = format_ == Format::Gzip ? kGzip : isZlibBeginning(beginning_) ? kZlib : kRaw;
    stream_ = std::make_unique<Stream>(wrapping);
    state_ = stream_->isReady ? State::Inside : State::Failed;
  }
}

// Takes as much from the piece's start as belongs to the member.
Inflater::State Inflater::inflate(std::string_view& piece,
                                  const std::function<bool(std::string_view)>& take) {
  std::array<char, kMostAtOnce> room;
  z_stream& z = stream_->z;
  int code = Z_OK;
  // A full room may have left something behind.
  do {
    const std::string_view part = piece.substr(0, kMostAtOnce);
    z.next_in = reinterpret_cast<const Bytef*>(part.data());
    z.avail_in = static_cast<uInt>(part.size());
    z.next_out = reinterpret_cast<Bytef*>(room.data());
    z.avail_out = static_cast<uInt>(room.size());
    code = ::inflate(&z, Z_NO_FLUSH);
    piece.remove_prefix(part.size() - z.avail_in);
    const std::size_t unpacked = room.size() - z.avail_out;
    if (unpacked > 0 && !take({room.data(), unpacked})) return State::Failed;
  } while (code == Z_OK && (!piece.empty() || z.avail_out == 0));
  if (code == Z_STREAM_END) return format_ == Format::Gzip ? State::BetweenMembers : State::Ended;
  // There is no room short, so that this only says that nothing was left to do.
  return code == Z_OK || code == Z_BUF_ERROR ? State::Inside : State::Failed;
}

}  // namespace clipwave
