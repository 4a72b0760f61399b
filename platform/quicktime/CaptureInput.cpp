#include "platform/quicktime/CaptureInput.h"

#include <cstring>
#include <mutex>

#include "platform/quicktime/CaptureTime.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavdevice/avdevice.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/time.h>
#include <libswresample/swresample.h>
}

namespace clipwave {
namespace {

constexpr int kChannels = 2;
// A device's own stamps are believed when they are at most this old, in seconds.
constexpr double kOldestStamp = 2;
constexpr double kYoungestStamp = -0.1;
// By which what is computed may stay behind the clock before it is let go.
constexpr double kLongestLag = 3;

void registerDevices() {
  static std::once_flag once;
  std::call_once(once, [] {
    silenceMovieLibraries();
    avdevice_register_all();
  });
}

int wasAbandoned(void* flag) {
  return *static_cast<const std::atomic<bool>*>(flag) ? 1 : 0;
}

}  // namespace

std::unique_ptr<CaptureInput> CaptureInput::open(const CaptureRequest& request,
                                                 const std::atomic<bool>& isAbandoned) {
  registerDevices();
  std::unique_ptr<CaptureInput> input(new CaptureInput(request));
  if (!input->prepare(isAbandoned) || !input->prepareDecoder()) return nullptr;
  return input;
}

CaptureInput::~CaptureInput() {
  frame_.reset();
  packet_.reset();
  decoder_.reset();
  av_buffer_pool_uninit(&pool_);
}

bool CaptureInput::prepare(const std::atomic<bool>& isAbandoned) {
  const AVInputFormat* const format = av_find_input_format(request_.format.c_str());
  AVFormatContext* opened = avformat_alloc_context();
  packet_.reset(av_packet_alloc());
  frame_.reset(av_frame_alloc());
  if (format == nullptr || opened == nullptr || !packet_ || !frame_) {
    avformat_free_context(opened);
    return false;
  }
  opened->interrupt_callback = {wasAbandoned, const_cast<std::atomic<bool>*>(&isAbandoned)};
  // A device that has stopped to deliver must not keep its thread for ever.
  if (!request_.isPaced) opened->flags |= AVFMT_FLAG_NONBLOCK;
  AVDictionary* options = nullptr;
  for (const auto& [key, value] : request_.options) av_dict_set(&options, key.c_str(), value.c_str(), 0);
  // A failed opening frees the input.
  const int code = avformat_open_input(&opened, request_.url.c_str(), format, &options);
  av_dict_free(&options);
  if (code < 0) return false;
  input_.reset(opened);
  epoch_ = request_.epoch.value_or(captureTime());
  const bool isVideo = request_.mediaType == fourCharacterCode("vide");
  for (unsigned i = 0; i < input_->nb_streams; ++i) {
    if (input_->streams[i]->codecpar->codec_type != (isVideo ? AVMEDIA_TYPE_VIDEO : AVMEDIA_TYPE_AUDIO))
      continue;
    stream_ = static_cast<int>(i);
    return true;
  }
  return false;
}

bool CaptureInput::prepareDecoder() {
  const AVStream& stream = *input_->streams[stream_];
  const AVCodecParameters& parameters = *stream.codecpar;
  const AVCodec* const codec = avcodec_find_decoder(parameters.codec_id);
  if (codec == nullptr) return false;
  decoder_.reset(avcodec_alloc_context3(codec));
  if (!decoder_ || avcodec_parameters_to_context(decoder_.get(), &parameters) < 0) return false;
  decoder_->thread_count = 1;  // more would hold pictures back
  if (avcodec_open2(decoder_.get(), codec, nullptr) < 0) return false;
  if (parameters.codec_type == AVMEDIA_TYPE_AUDIO) {
    facts_.sampleRate = parameters.sample_rate;
    return facts_.sampleRate > 0 && prepareConverter();
  }
  facts_.width = parameters.width;
  facts_.height = parameters.height;
  const AVRational rate = stream.avg_frame_rate.num > 0 ? stream.avg_frame_rate : stream.r_frame_rate;
  if (rate.num > 0 && rate.den > 0) facts_.framesPerSecond = av_q2d(rate);
  return facts_.width > 0 && facts_.height > 0;
}

// One channel is heard from both sides as loud as it is; more than two are mixed.
bool CaptureInput::prepareConverter() {
  AVChannelLayout source{};
  AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
  if (decoder_->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
    av_channel_layout_default(&source, decoder_->ch_layout.nb_channels);
  else if (av_channel_layout_copy(&source, &decoder_->ch_layout) < 0)
    return false;
  SwrContext* made = nullptr;
  const bool isMade = swr_alloc_set_opts2(&made, &stereo, AV_SAMPLE_FMT_FLT, facts_.sampleRate, &source,
                                          decoder_->sample_fmt, facts_.sampleRate, 0, nullptr) >= 0;
  converter_.reset(made);
  constexpr double kBothSides[] = {1, 1};
  const bool isMono = source.nb_channels == 1;
  av_channel_layout_uninit(&source);
  if (!isMade || (isMono && swr_set_matrix(made, kBothSides, 1) < 0)) return false;
  return swr_init(made) >= 0;
}

CaptureInput::Outcome CaptureInput::read(std::vector<Captured>& captured) {
  const int code = av_read_frame(input_.get(), packet_.get());
  // A camera says EIO when its signal is lost for a moment, too; one that stays silent counts as gone anyway.
  const bool isCamera = request_.mediaType == fourCharacterCode("vide") && !request_.isPaced;
  if (code == AVERROR(EAGAIN) || (isCamera && code == AVERROR(EIO))) return Outcome::NothingYet;
  if (code < 0) return Outcome::Ended;
  const bool isWhole = packet_->stream_index == stream_ && packet_->size > 0 && detachPacket() &&
                       avcodec_send_packet(decoder_.get(), packet_.get()) >= 0;
  av_packet_unref(packet_.get());
  // What was damaged on its way is passed over; the next one may be whole.
  if (isWhole) decode(captured);
  return Outcome::Captured;
}

// A raw picture lies in the driver's own memory, which is gone with the device while the picture may still be
// in use.
bool CaptureInput::detachPacket() {
  if (request_.isPaced || decoder_->codec_id != AV_CODEC_ID_RAWVIDEO) return true;
  const auto size = static_cast<std::size_t>(packet_->size) + AV_INPUT_BUFFER_PADDING_SIZE;
  if (pool_ == nullptr || pooledSize_ < size) {
    av_buffer_pool_uninit(&pool_);
    pool_ = av_buffer_pool_init(size, nullptr);
    pooledSize_ = size;
  }
  AVBufferRef* own = pool_ == nullptr ? nullptr : av_buffer_pool_get(pool_);
  if (own == nullptr) return false;
  std::memcpy(own->data, packet_->data, static_cast<std::size_t>(packet_->size));
  std::memset(own->data + packet_->size, 0, AV_INPUT_BUFFER_PADDING_SIZE);
  av_buffer_unref(&packet_->buf);
  packet_->buf = own;
  packet_->data = own->data;
  return true;
}

void CaptureInput::decode(std::vector<Captured>& captured) {
  while (avcodec_receive_frame(decoder_.get(), frame_.get()) >= 0) {
    if (facts_.sampleRate > 0)
      addSound(captured);
    else
      addPicture(captured);
    av_frame_unref(frame_.get());
  }
}

void CaptureInput::addPicture(std::vector<Captured>& captured) {
  CapturedPicture picture;
  picture.frame.reset(av_frame_alloc());
  if (!picture.frame) return;
  const AVRational base = input_->streams[stream_]->time_base;
  const std::int64_t stamp = frame_->best_effort_timestamp;
  picture.time = captureTime();
  if (request_.isPaced && stamp != AV_NOPTS_VALUE)
    picture.time = picture.deviceTime = pacedTimeOf(static_cast<double>(stamp) * av_q2d(base));
  else
    picture.deviceTime = stamp == AV_NOPTS_VALUE
                             ? picture.time
                             : deviceTimeOf(static_cast<double>(stamp) * av_q2d(base), picture.time);
  av_frame_move_ref(picture.frame.get(), frame_.get());
  captured.emplace_back(std::move(picture));
}

// A device's stamp is that of a packet's first sample; ours that of its last one.
void CaptureInput::addSound(std::vector<Captured>& captured) {
  CapturedSound sound;
  sound.samples.resize(static_cast<std::size_t>(frame_->nb_samples) * kChannels);
  auto* target = reinterpret_cast<std::uint8_t*>(sound.samples.data());
  const int count = swr_convert(converter_.get(), &target, frame_->nb_samples,
                                const_cast<const std::uint8_t**>(frame_->extended_data), frame_->nb_samples);
  if (count <= 0) return;
  sound.samples.resize(static_cast<std::size_t>(count) * kChannels);
  const double length = static_cast<double>(count) / facts_.sampleRate;
  const AVRational base = input_->streams[stream_]->time_base;
  const std::int64_t stamp = frame_->best_effort_timestamp;
  sound.time = sound.deviceTime = captureTime();
  if (stamp != AV_NOPTS_VALUE) {
    const double begin = static_cast<double>(stamp) * av_q2d(base);
    if (request_.isPaced)
      sound.time = sound.deviceTime = pacedTimeOf(begin + length);
    else
      sound.deviceTime = deviceTimeOf(begin + length, sound.time);
  }
  captured.emplace_back(std::move(sound));
}

// Drivers stamp with the system's steady clock or with the time of day; which of the two shows by the age.
double CaptureInput::deviceTimeOf(double seconds, double arrival) const {
  for (const double age : {arrival - seconds, static_cast<double>(av_gettime()) / 1e6 - seconds})
    if (age > kYoungestStamp && age < kOldestStamp) return arrival - age;
  return arrival;
}

double CaptureInput::pacedTimeOf(double seconds) {
  const double lag = captureTime() - (epoch_ + seconds);
  if (lag > kLongestLag) epoch_ += lag;
  return epoch_ + seconds;
}

}  // namespace clipwave
