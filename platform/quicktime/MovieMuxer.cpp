#include "platform/quicktime/MovieMuxer.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "platform/quicktime/MovieInput.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

namespace clipwave {
namespace {

constexpr int kOutputBuffer = 32 * 1024;

// The head is written with the first fragment, when it is known by how much the encoder's priming makes the
// sound begin early.
constexpr const char* kFragmentFlags = "frag_custom+empty_moov+delay_moov+default_base_moof";

}  // namespace

void MovieMuxer::FreeMuxer::operator()(AVFormatContext* muxer) const {
  avformat_free_context(muxer);
}
void MovieMuxer::FreeMuxer::operator()(AVIOContext* output) const {
  av_freep(&output->buffer);
  avio_context_free(&output);
}

MovieMuxer::~MovieMuxer() = default;

std::unique_ptr<MovieMuxer> MovieMuxer::open(std::span<const AVCodecContext* const> encoders, Kind kind) {
  std::unique_ptr<MovieMuxer> muxer(new MovieMuxer(kind));
  return muxer->prepare(encoders) ? std::move(muxer) : nullptr;
}

bool MovieMuxer::prepare(std::span<const AVCodecContext* const> encoders) {
  AVFormatContext* made = nullptr;
  if (avformat_alloc_output_context2(&made, nullptr, "mov", nullptr) < 0) return false;
  muxer_.reset(made);
  auto* buffer = static_cast<std::uint8_t*>(av_malloc(kOutputBuffer));
  if (buffer == nullptr) return false;
  output_.reset(avio_alloc_context(buffer, kOutputBuffer, 1, this, nullptr, writeBytes, seekTo));
  if (!output_) {
    av_free(buffer);
    return false;
  }
  made->pb = output_.get();
  made->flags |= AVFMT_FLAG_CUSTOM_IO;
  made->avoid_negative_ts = AVFMT_AVOID_NEG_TS_DISABLED;  // priming is what the edit list is for
  for (const AVCodecContext* encoder : encoders) {
    AVStream* stream = avformat_new_stream(made, nullptr);
    if (stream == nullptr || avcodec_parameters_from_context(stream->codecpar, encoder) < 0) return false;
    stream->time_base = encoder->time_base;
    stream->avg_frame_rate = encoder->framerate;
  }
  encoders_ = encoders;
  if (kind_ == Kind::Index) start_ = std::numeric_limits<std::int64_t>::max();
  AVDictionary* options = nullptr;
  if (kind_ == Kind::Fragments) av_dict_set(&options, "movflags", kFragmentFlags, 0);
  const int code = avformat_write_header(made, &options);
  av_dict_free(&options);
  return code >= 0;
}

bool MovieMuxer::write(const AVPacket& packet) {
  // A reference of its own: the muxer changes the times, and empties what it is given.
  const MoviePacket copy(av_packet_clone(&packet));
  if (!copy) return false;
  const auto index = static_cast<std::size_t>(packet.stream_index);
  av_packet_rescale_ts(copy.get(), encoders_[index]->time_base, muxer_->streams[index]->time_base);
  return av_write_frame(muxer_.get(), copy.get()) >= 0;
}

bool MovieMuxer::flush() {
  if (av_write_frame(muxer_.get(), nullptr) < 0) return false;
  avio_flush(output_.get());
  return output_->error >= 0;
}

bool MovieMuxer::seek(std::int64_t offset) {
  return avio_seek(output_.get(), offset, SEEK_SET) == offset;
}

bool MovieMuxer::finish(std::int64_t offset) {
  if (!seek(offset)) return false;
  start_ = offset;
  return av_write_trailer(muxer_.get()) >= 0 && output_->error >= 0;
}

std::string MovieMuxer::take() {
  start_ = position_;
  return std::exchange(bytes_, {});
}

int MovieMuxer::keep(const std::uint8_t* bytes, int count) {
  const std::int64_t end = position_ + count;
  if (end > start_) {
    const std::int64_t skipped = std::max<std::int64_t>(start_ - position_, 0);
    const auto place = static_cast<std::size_t>(position_ + skipped - start_);
    const auto length = static_cast<std::size_t>(count - skipped);
    if (bytes_.size() < place + length) bytes_.resize(place + length);
    std::copy_n(bytes + skipped, length, bytes_.begin() + static_cast<std::ptrdiff_t>(place));
  }
  position_ = end;
  return count;
}

std::int64_t MovieMuxer::moveTo(std::int64_t offset, int whence) {
  if (whence == SEEK_CUR) offset += position_;
  if ((whence != SEEK_SET && whence != SEEK_CUR) || offset < 0) return AVERROR(EINVAL);
  return position_ = offset;
}

int MovieMuxer::writeBytes(void* self, std::uint8_t* bytes, int count) {
  return static_cast<MovieMuxer*>(self)->keep(bytes, count);
}

std::int64_t MovieMuxer::seekTo(void* self, std::int64_t offset, int whence) {
  return static_cast<MovieMuxer*>(self)->moveTo(offset, whence);
}

}  // namespace clipwave
