#include "platform/quicktime/MovieReader.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <thread>
#include <utility>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libswresample/swresample.h>
}

#include "platform/foundation/FileManager.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

// One track may be without data for this long, or while this much of the other waits, before the reader goes
// on without it: a track that ends early must not draw the rest of the file into memory.
constexpr double kLongestSilence = 4;
constexpr std::int64_t kMostWaiting = 64'000'000;

// What a header may promise too much, being rounded or careless.
constexpr double kMissingSeconds = 1;
constexpr double kMissingPart = 0.05;

constexpr unsigned kMostThreads = 4;
constexpr int kMostSkipped = 300;  // packets of a stream that never says where it can be entered

MovieDecoder openDecoder(const AVStream& stream) {
  const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
  if (codec == nullptr) return nullptr;
  MovieDecoder decoder(avcodec_alloc_context3(codec));
  if (!decoder || avcodec_parameters_to_context(decoder.get(), stream.codecpar) < 0) return nullptr;
  decoder->pkt_timebase = stream.time_base;
  decoder->thread_count = static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads));
  return avcodec_open2(decoder.get(), codec, nullptr) < 0 ? nullptr : std::move(decoder);
}

int quarterTurnsOf(const AVStream& stream) {
  const std::uint8_t* matrix = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr);
  if (matrix == nullptr) return 0;
  const double degrees = -av_display_rotation_get(reinterpret_cast<const std::int32_t*>(matrix));
  return std::isfinite(degrees) ? (static_cast<int>(std::lround(degrees / 90)) % 4 + 4) % 4 : 0;
}

}  // namespace

MovieReader::~MovieReader() = default;

Result<std::unique_ptr<MovieReader>> MovieReader::open(const std::string& path,
                                                       MovieInterruption interruption) {
  Result<MovieInput> input = openMovieInput(path, interruption);
  if (!input) return input.error();
  std::unique_ptr<MovieReader> reader(new MovieReader);
  reader->input_ = std::move(*input);
  avformat_find_stream_info(reader->input_.get(), nullptr);
  reader->choose(reader->picture_, AVMEDIA_TYPE_VIDEO);
  reader->choose(reader->sound_, AVMEDIA_TYPE_AUDIO);
  if (!reader->hasPicture() && !reader->hasSound()) {
    return cocoaError(kFileReadUnknownError,
                      filledIn(localized("Movies", "The movie “%1” is of a kind that cannot be played."),
                               {lastPathComponent(path)}));
  }
  reader->readFacts();
  return reader;
}

void MovieReader::choose(Track& track, int type) {
  AVStream* best = nullptr;
  for (AVStream* stream : std::span(input_->streams, input_->nb_streams)) {
    if (stream->codecpar->codec_type != type || !isPlayable(*stream)) continue;
    const bool isDefault = (stream->disposition & AV_DISPOSITION_DEFAULT) != 0;
    if (best == nullptr || (isDefault && (best->disposition & AV_DISPOSITION_DEFAULT) == 0)) best = stream;
  }
  if (best != nullptr) track.decoder = openDecoder(*best);
  track.ended = !track.decoder;
  if (track.decoder) track.index = best->index;
}

void MovieReader::readFacts() {
  for (AVStream* stream : std::span(input_->streams, input_->nb_streams)) {
    if (stream->index != picture_.index && stream->index != sound_.index) stream->discard = AVDISCARD_ALL;
  }
  // What comes before zero only primes a decoder.
  if (input_->start_time != AV_NOPTS_VALUE && input_->start_time > 0)
    start_ = static_cast<double>(input_->start_time) / AV_TIME_BASE;
  duration_ = durationOf(*input_);
  if (!hasPicture()) return;
  quarterTurns_ = quarterTurnsOf(stream(picture_));
  const AVRational aspect = av_guess_sample_aspect_ratio(input_.get(), &stream(picture_), nullptr);
  if (aspect.num > 0 && aspect.den > 0) pixelAspect_ = std::clamp(av_q2d(aspect), 0.1, 10.0);
}

int MovieReader::naturalWidth() const {
  if (!hasPicture()) return 0;
  const AVCodecParameters& parameters = *stream(picture_).codecpar;
  return quarterTurns_ % 2 != 0 ? parameters.height
                                : static_cast<int>(std::lround(parameters.width * pixelAspect_));
}

int MovieReader::naturalHeight() const {
  if (!hasPicture()) return 0;
  const AVCodecParameters& parameters = *stream(picture_).codecpar;
  return quarterTurns_ % 2 != 0 ? static_cast<int>(std::lround(parameters.width * pixelAspect_))
                                : parameters.height;
}

AVStream& MovieReader::stream(const Track& track) const {
  return *input_->streams[track.index];
}

double MovieReader::secondsOf(const Track& track, std::int64_t timestamp) const {
  return static_cast<double>(timestamp) * av_q2d(stream(track).time_base) - start_;
}

std::optional<MovieReader::Picture> MovieReader::nextPicture() {
  while (MovieFrame frame = nextFrame(picture_, sound_)) {
    // The scaler ends the process over a picture without measures or pixels.
    if (frame->width <= 0 || frame->height <= 0 || frame->data[0] == nullptr || frame->format < 0) continue;
    Picture picture{std::move(frame), picture_.time, 0};
    if (picture.frame->best_effort_timestamp != AV_NOPTS_VALUE)
      picture.time = secondsOf(picture_, picture.frame->best_effort_timestamp);
    picture.duration = static_cast<double>(picture.frame->pkt_duration) * av_q2d(stream(picture_).time_base);
    picture_.time = picture.time + picture.duration;
    return picture;
  }
  return {};
}

std::optional<MovieReader::Sound> MovieReader::nextSound() {
  while (const MovieFrame frame = nextFrame(sound_, picture_)) {
    if (frame->nb_samples <= 0 || frame->sample_rate <= 0 || !prepareResampler(*frame)) continue;
    Sound sound{{}, sound_.time};
    if (frame->best_effort_timestamp != AV_NOPTS_VALUE)
      sound.time = secondsOf(sound_, frame->best_effort_timestamp);
    const int room = swr_get_out_samples(resampler_.get(), frame->nb_samples);
    if (room <= 0) continue;
    sound.samples.resize(static_cast<std::size_t>(room) * kSoundChannels);
    auto* target = reinterpret_cast<std::uint8_t*>(sound.samples.data());
    const auto** source = const_cast<const std::uint8_t**>(frame->extended_data);
    const int count = swr_convert(resampler_.get(), &target, room, source, frame->nb_samples);
    sound.samples.resize(static_cast<std::size_t>(std::max(count, 0)) * kSoundChannels);
    sound_.time = sound.time + static_cast<double>(frame->nb_samples) / frame->sample_rate;
    return sound;
  }
  return {};
}

// Made anew where the sound changes its kind in the middle of the file.
bool MovieReader::prepareResampler(const AVFrame& frame) {
  const int channels = frame.ch_layout.nb_channels;
  if (resampler_ && resampledRate_ == frame.sample_rate && resampledFormat_ == frame.format &&
      resampledChannels_ == channels)
    return true;
  if (channels <= 0) return false;
  AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
  AVChannelLayout layout = {};
  if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
    av_channel_layout_default(&layout, channels);
  else
    av_channel_layout_copy(&layout, &frame.ch_layout);
  SwrContext* made = nullptr;
  const int code =
      swr_alloc_set_opts2(&made, &stereo, AV_SAMPLE_FMT_S16, kSoundRate, &layout,
                          static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
  av_channel_layout_uninit(&layout);
  resampler_.reset(made);
  if (code < 0 || swr_init(made) < 0) resampler_.reset();
  resampledRate_ = frame.sample_rate;
  resampledFormat_ = frame.format;
  resampledChannels_ = channels;
  return resampler_ != nullptr;
}

MovieFrame MovieReader::nextFrame(Track& track, const Track& other) {
  if (track.ended) return nullptr;
  MovieFrame frame(av_frame_alloc());
  while (frame) {
    const int code = avcodec_receive_frame(track.decoder.get(), frame.get());
    if (code == 0) return frame;
    if (code == AVERROR_EOF || (track.drained && code != AVERROR(EAGAIN))) break;
    const MoviePacket packet = nextPacket(track, other);
    if (!packet && !atEnd_) return nullptr;
    track.drained = !packet;
    // A damaged packet costs its own picture and no more, so its error is not looked at.
    avcodec_send_packet(track.decoder.get(), packet.get());
  }
  track.ended = true;
  return nullptr;
}

MoviePacket MovieReader::nextPacket(Track& track, const Track& other) {
  for (;;) {
    while (track.packets.empty()) {
      if (atEnd_ || mustWait(track, other)) return nullptr;
      readPacket();
    }
    MoviePacket packet = std::move(track.packets.front());
    track.packets.pop_front();
    track.bytes -= packet->size;
    if (packet->dts != AV_NOPTS_VALUE) track.readUntil = secondsOf(track, packet->dts);
    if ((packet->flags & AV_PKT_FLAG_KEY) != 0) track.mayBeSkipped = 0;
    if (track.mayBeSkipped == 0) return packet;
    --track.mayBeSkipped;
  }
}

bool MovieReader::mustWait(const Track& track, const Track& other) const {
  if (other.packets.empty()) return false;
  const std::int64_t last = other.packets.back()->dts;
  return other.bytes > kMostWaiting ||
         (last != AV_NOPTS_VALUE && secondsOf(other, last) > track.readUntil + kLongestSilence);
}

void MovieReader::readPacket() {
  MoviePacket packet(av_packet_alloc());
  const int code = packet ? av_read_frame(input_.get(), packet.get()) : AVERROR(ENOMEM);
  if (code == AVERROR(EAGAIN)) return;
  if (code < 0) {
    atEnd_ = true;
    const int fault = input_->pb != nullptr ? input_->pb->error : 0;
    failed_ = (code != AVERROR_EOF || fault < 0) && code != AVERROR_EXIT;
    return;
  }
  for (Track* track : {&picture_, &sound_}) {
    if (packet->stream_index != track->index) continue;
    track->bytes += packet->size;
    track->packets.push_back(std::move(packet));
    return;
  }
}

bool MovieReader::hasBrokenOff(double reached) const {
  if (failed_) return true;
  // What was computed from the file's size is no promise.
  if (duration_ <= 0 || input_->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE) return false;
  double promised = 0;
  for (const Track* track : {&picture_, &sound_}) {
    if (!track->decoder) continue;
    const std::int64_t length = stream(*track).duration;
    const double seconds = static_cast<double>(length) * av_q2d(stream(*track).time_base);
    promised = std::max(promised, length > 0 ? std::min(seconds, duration_) : duration_);
  }
  return reached < promised - std::max(kMissingSeconds, promised * kMissingPart);
}

bool MovieReader::seek(double time) {
  if (!hasPicture() && !hasSound()) return false;
  if (!seekNear(time)) return false;
  for (Track* track : {&picture_, &sound_}) {
    if (!track->decoder) continue;
    avcodec_flush_buffers(track->decoder.get());
    track->packets.clear();
    track->bytes = 0;
    track->readUntil = time;
    track->drained = track->ended = false;
  }
  // Streams made for broadcasting are sought by time alone, and may go on in the middle of a scene.
  picture_.mayBeSkipped = kMostSkipped;
  resampler_.reset();
  atEnd_ = failed_ = false;
  return true;
}

bool MovieReader::seekNear(double time) {
  // What is sought by time alone is not sure to find its beginning.
  if (time <= 0 && (input_->iformat->flags & AVFMT_TS_DISCONT) != 0 &&
      av_seek_frame(input_.get(), -1, 0, AVSEEK_FLAG_BYTE) >= 0)
    return true;
  const Track& lead = hasPicture() ? picture_ : sound_;
  const auto target = static_cast<std::int64_t>(std::floor((time + start_) / av_q2d(stream(lead).time_base)));
  return av_seek_frame(input_.get(), lead.index, target, AVSEEK_FLAG_BACKWARD) >= 0 ||
         avformat_seek_file(input_.get(), lead.index, INT64_MIN, target, INT64_MAX, 0) >= 0;
}

bool MovieReader::isAhead(double position, double time) const {
  if (time < position || !hasPicture() || picture_.ended) return false;
  const auto target =
      static_cast<std::int64_t>(std::floor((time + start_) / av_q2d(stream(picture_).time_base)));
  const AVIndexEntry* key =
      avformat_index_get_entry_from_timestamp(&stream(picture_), target, AVSEEK_FLAG_BACKWARD);
  return key != nullptr ? secondsOf(picture_, key->timestamp) <= position : time < position + 1;
}

void MovieReader::setHurried(bool hurried) {
  if (hasPicture()) picture_.decoder->skip_frame = hurried ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
}

void MovieReader::ignoreSound() {
  if (!hasSound()) return;
  stream(sound_).discard = AVDISCARD_ALL;
  sound_ = Track{};
  sound_.ended = true;
}

}  // namespace clipwave
