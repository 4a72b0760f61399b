#include "platform/quicktime/PictureEncoder.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <utility>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

#include "platform/quicktime/GWorld.h"
#include "platform/quicktime/PictureColours.h"

namespace clipwave {
namespace {

constexpr int kFinestTimeBase = 65'535;  // what the format's time stamps have room for
constexpr int kMostKeyFrameRate = 600;

// Key frames that stand a second apart let a player enter the movie at each of them.
int keyFrameRateOf(const MovieWriter::Picture& wanted) {
  const int rate =
      wanted.keyFrameRate > 0 ? wanted.keyFrameRate : static_cast<int>(std::lround(wanted.framesPerSecond));
  return std::clamp(rate, 1, kMostKeyFrameRate);
}

void markColours(AVCodecContext& encoder) {
  encoder.colorspace = static_cast<AVColorSpace>(colourSpaceOfHeight(encoder.height));
  const bool isHigh = encoder.colorspace == AVCOL_SPC_BT709;
  encoder.color_primaries = isHigh ? AVCOL_PRI_BT709 : AVCOL_PRI_SMPTE170M;
  encoder.color_trc = isHigh ? AVCOL_TRC_BT709 : AVCOL_TRC_SMPTE170M;
  encoder.color_range = AVCOL_RANGE_MPEG;
}

}  // namespace

bool encodeFrame(AVCodecContext& encoder, const AVFrame* frame, std::vector<MoviePacket>& packets) {
  if (avcodec_send_frame(&encoder, frame) < 0) return false;
  while (true) {
    MoviePacket packet(av_packet_alloc());
    if (!packet) return false;
    const int code = avcodec_receive_packet(&encoder, packet.get());
    if (code == AVERROR(EAGAIN) || code == AVERROR_EOF) return true;
    if (code < 0) return false;
    packets.push_back(std::move(packet));
  }
}

PictureEncoder::~PictureEncoder() = default;

std::unique_ptr<PictureEncoder> PictureEncoder::open(const MovieWriter::Picture& wanted) {
  const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_MPEG4);
  const bool isPossible =
      isPictureMeasure(wanted.width) && isPictureMeasure(wanted.height) && wanted.framesPerSecond > 0;
  if (codec == nullptr || !isPossible) return nullptr;
  std::unique_ptr<PictureEncoder> made(new PictureEncoder);
  made->encoder_.reset(avcodec_alloc_context3(codec));
  made->current_.reset(av_frame_alloc());
  if (!made->encoder_ || !made->current_) return nullptr;
  AVCodecContext& encoder = *made->encoder_;
  encoder.width = wanted.width;
  encoder.height = wanted.height;
  encoder.pix_fmt = AV_PIX_FMT_YUV420P;
  encoder.framerate = av_d2q(wanted.framesPerSecond, kFinestTimeBase);
  encoder.time_base = av_inv_q(encoder.framerate);
  encoder.codec_tag = MKTAG('m', 'p', '4', 'v');
  encoder.bit_rate = static_cast<std::int64_t>(wanted.bytesPerSecond) * 8;
  encoder.rc_max_rate = encoder.bit_rate + 1;  // without a limit the first seconds take far more
  encoder.gop_size = keyFrameRateOf(wanted);
  encoder.max_b_frames = 0;
  encoder.flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  encoder.thread_count = 1;
  markColours(encoder);
  return avcodec_open2(&encoder, codec, nullptr) < 0 ? nullptr : std::move(made);
}

bool PictureEncoder::take(const AVFrame& picture) {
  if (picture.width <= 0 || picture.height <= 0 || picture.data[0] == nullptr || !prepare(picture))
    return false;
  const MovieFrame scaled(av_frame_alloc());  // a new one: the encoder may still look at the last
  if (!scaled) return false;
  scaled->width = encoder_->width;
  scaled->height = encoder_->height;
  scaled->format = encoder_->pix_fmt;
  if (av_frame_get_buffer(scaled.get(), 0) < 0) return false;
  if (sws_scale(scaler_.get(), picture.data, picture.linesize, 0, picture.height, scaled->data,
                scaled->linesize) <= 0)
    return false;
  av_frame_unref(current_.get());
  av_frame_move_ref(current_.get(), scaled.get());
  return true;
}

bool PictureEncoder::prepare(const AVFrame& picture) {
  const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(picture.format));
  if (format == nullptr || sws_isSupportedInput(static_cast<AVPixelFormat>(picture.format)) == 0)
    return false;
  // Unmarked colours are taken for the movie's own.
  const bool isMarked =
      picture.colorspace != AVCOL_SPC_UNSPECIFIED && (format->flags & AV_PIX_FMT_FLAG_RGB) == 0;
  const Source source{picture.width, picture.height, picture.format,
                      isMarked ? picture.colorspace : encoder_->colorspace,
                      picture.color_range == AVCOL_RANGE_JPEG};
  if (scaler_ && source == source_) return true;
  scaler_.reset(sws_getContext(source.width, source.height, static_cast<AVPixelFormat>(source.format),
                               encoder_->width, encoder_->height, encoder_->pix_fmt, SWS_BILINEAR, nullptr,
                               nullptr, nullptr));
  if (!scaler_) return false;
  source_ = source;
  setColours(*scaler_, source.colourSpace, source.hasFullRange, encoder_->colorspace);
  return true;
}

bool PictureEncoder::encode(std::int64_t place, std::vector<MoviePacket>& packets) {
  current_->pts = place;
  const std::size_t before = packets.size();
  if (!encodeFrame(*encoder_, current_.get(), packets)) return false;
  for (std::size_t i = before; i < packets.size(); ++i) packets[i]->duration = 1;
  return true;
}

}  // namespace clipwave
