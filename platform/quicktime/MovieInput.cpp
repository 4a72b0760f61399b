#include "platform/quicktime/MovieInput.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <string_view>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/log.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include "platform/foundation/FileManager.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

// The containers a movie comes in. A list of what is wanted, because the library's own list also holds
// pictures, subtitles, text drawings and playlists, and a playlist is kept from opening its files only by
// never being opened.
constexpr const char* kContainers =
    "mov,matroska,avi,mp3,aac,wav,w64,aiff,au,caf,flac,ogg,ac3,eac3,amr,"
    "mpegts,mpeg,mpegvideo,flv,asf,dv,mxf,nut,ivf,rm";

// Thirty years of movie are a damaged header, and would not fit the text they are shown in.
constexpr double kLongestDuration = 1e9;
constexpr std::int64_t kProbeBytes = 5'000'000;
constexpr std::int64_t kAnalysedMicroseconds = 5'000'000;

void keepQuiet(void*, int, const char*, va_list) {}

Error openError(const std::string& path, int code) {
  const std::string name = lastPathComponent(path);
  if (code == ENOENT || code == ENOTDIR)
    return cocoaError(kFileReadNoSuchFileError,
                      filledIn(localized("Movies", "The movie “%1” is missing."), {name}));
  if (code == EACCES || code == EPERM)
    return cocoaError(kFileReadNoPermissionError,
                      filledIn(localized("Movies", "The movie “%1” may not be read."), {name}));
  return cocoaError(kFileReadUnknownError,
                    filledIn(localized("Movies", "“%1” cannot be played as a movie."), {name}));
}

// Photographs come in the same container as movies; only the brand at the head of the file tells.
bool isPicture(const AVFormatContext& input) {
  const AVDictionaryEntry* brand = av_dict_get(input.metadata, "major_brand", nullptr, 0);
  constexpr std::string_view kPictureBrands[] = {"avif", "avis", "heic", "heix",
                                                 "hevc", "hevx", "mif1", "msf1"};
  return brand != nullptr && std::ranges::find(kPictureBrands, brand->value) != std::end(kPictureBrands);
}

}  // namespace

void FreeLibraryObject::operator()(AVFormatContext* input) const {
  avformat_close_input(&input);
}
void FreeLibraryObject::operator()(AVCodecContext* decoder) const {
  avcodec_free_context(&decoder);
}
void FreeLibraryObject::operator()(AVPacket* packet) const {
  av_packet_free(&packet);
}
void FreeLibraryObject::operator()(AVFrame* frame) const {
  av_frame_free(&frame);
}
void FreeLibraryObject::operator()(SwrContext* resampler) const {
  swr_free(&resampler);
}
void FreeLibraryObject::operator()(SwsContext* scaler) const {
  sws_freeContext(scaler);
}

void silenceMovieLibraries() {
  av_log_set_callback(keepQuiet);
}

Result<MovieInput> openMovieInput(const std::string& path, MovieInterruption interruption) {
  struct stat status {};
  if (path.find('\0') != std::string::npos) return openError(path, EINVAL);
  if (::stat(path.c_str(), &status) != 0) return openError(path, errno);
  // Devices and pipes would block, or never end.
  if (!S_ISREG(status.st_mode)) return openError(path, EINVAL);

  AVFormatContext* opened = avformat_alloc_context();
  if (opened == nullptr) return openError(path, ENOMEM);
  opened->interrupt_callback = {interruption.isWanted, interruption.context};
  opened->probesize = kProbeBytes;
  opened->max_analyze_duration = kAnalysedMicroseconds;
  AVDictionary* options = nullptr;
  av_dict_set(&options, "protocol_whitelist", "file", 0);
  av_dict_set(&options, "format_whitelist", kContainers, 0);
  // The prefix says that it is a file, so that no name is ever taken for a protocol. A failed opening frees
  // the input.
  const int code = avformat_open_input(&opened, ("file:" + path).c_str(), nullptr, &options);
  av_dict_free(&options);
  if (code < 0) return openError(path, AVUNERROR(code));
  MovieInput input(opened);
  if (isPicture(*input)) return openError(path, EINVAL);
  return input;
}

// What a container was taken for by mistake has streams without any measures; the cover picture of a song is
// none of its own.
double durationOf(const AVFormatContext& input) {
  const double seconds = static_cast<double>(input.duration) / AV_TIME_BASE;
  return seconds > 0 && seconds < kLongestDuration ? seconds : 0;
}

bool isPlayable(const AVStream& stream) {
  const AVCodecParameters& parameters = *stream.codecpar;
  if (parameters.codec_type == AVMEDIA_TYPE_AUDIO) return parameters.sample_rate > 0;
  return parameters.codec_type == AVMEDIA_TYPE_VIDEO && parameters.width > 0 && parameters.height > 0 &&
         (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
}

}  // namespace clipwave
