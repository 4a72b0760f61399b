#include "platform/quicktime/Movie.h"

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
#include <libavutil/log.h>
}

namespace clipwave {
namespace {

// The containers a movie comes in. A list of what is wanted, because the library's own list also holds
// pictures, subtitles, text drawings and playlists, and a playlist is kept from opening its files only by
// never being opened.
constexpr const char* kContainers =
    "mov,matroska,avi,mp3,aac,wav,w64,aiff,au,caf,flac,ogg,ac3,eac3,amr,"
    "mpegts,mpeg,mpegvideo,flv,asf,dv,mxf,nut,ivf,rm";

constexpr std::int64_t kProbeBytes = 5'000'000;
constexpr std::int64_t kAnalyzedMicroseconds = 5'000'000;
// A file made to keep a reader busy, or a slow volume, holds the application up no longer than this.
constexpr std::chrono::seconds kPatience{3};

// Thirty years of movie are a damaged header, and would not fit the text they are shown in.
constexpr double kLongestDuration = 1e9;

using Deadline = std::chrono::steady_clock::time_point;

int isPastDeadline(void* deadline) {
  return std::chrono::steady_clock::now() > *static_cast<const Deadline*>(deadline) ? 1 : 0;
}

void keepQuiet(void*, int, const char*, va_list) {}

struct CloseInput {
  void operator()(AVFormatContext* input) const { avformat_close_input(&input); }
};
using Input = std::unique_ptr<AVFormatContext, CloseInput>;

class OpenedMovie final : public Movie {
 public:
  explicit OpenedMovie(double duration) : duration_(duration) {}
  double duration() const override { return duration_; }

 private:
  double duration_;
};

// Devices and pipes would block, or never end.
bool isRegularFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

Input openInput(const std::string& path, Deadline& deadline) {
  AVFormatContext* input = avformat_alloc_context();
  if (input == nullptr) return nullptr;
  input->interrupt_callback = {isPastDeadline, &deadline};
  input->probesize = kProbeBytes;
  input->max_analyze_duration = kAnalyzedMicroseconds;
  AVDictionary* options = nullptr;
  av_dict_set(&options, "protocol_whitelist", "file", 0);
  av_dict_set(&options, "format_whitelist", kContainers, 0);
  // The prefix says that it is a file, so that no name is ever taken for a protocol. A failed opening frees
  // the input.
  const int code = avformat_open_input(&input, ("file:" + path).c_str(), nullptr, &options);
  av_dict_free(&options);
  return Input(code < 0 ? nullptr : input);
}

// Whether a stream can be seen or heard. What a container was taken for by mistake has streams without any
// measures; the cover picture of a song is none of its own.
bool isPlayable(const AVStream& stream) {
  const AVCodecParameters& parameters = *stream.codecpar;
  if (parameters.codec_type == AVMEDIA_TYPE_AUDIO) return parameters.sample_rate > 0;
  return parameters.codec_type == AVMEDIA_TYPE_VIDEO && parameters.width > 0 && parameters.height > 0 &&
         (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
}

bool hasPlayableStream(const AVFormatContext& input) {
  for (const AVStream* stream : std::span(input.streams, input.nb_streams)) {
    if (isPlayable(*stream)) return true;
  }
  return false;
}

// Photographs come in the same container as movies; only the brand at the head of the file tells.
bool isPicture(const AVFormatContext& input) {
  const AVDictionaryEntry* brand = av_dict_get(input.metadata, "major_brand", nullptr, 0);
  constexpr std::string_view kPictureBrands[] = {"avif", "avis", "heic", "heix",
                                                 "hevc", "hevx", "mif1", "msf1"};
  return brand != nullptr && std::ranges::find(kPictureBrands, brand->value) != std::end(kPictureBrands);
}

class LibraryMovieOpener final : public MovieOpener {
 public:
  LibraryMovieOpener() { av_log_set_callback(keepQuiet); }

  std::shared_ptr<Movie> movieWithPath(std::string_view path) override {
    const std::string file(path);
    if (file.find('\0') != std::string::npos || !isRegularFile(file)) return nullptr;
    Deadline deadline = std::chrono::steady_clock::now() + kPatience;
    const Input input = openInput(file, deadline);
    if (!input || isPicture(*input)) return nullptr;
    // QuickTime and Matroska files say everything in their header; reading packets costs several times as
    // much and is kept for the containers that do not.
    if (input->duration <= 0 || !hasPlayableStream(*input)) avformat_find_stream_info(input.get(), nullptr);
    if (!hasPlayableStream(*input)) return nullptr;
    const double seconds = static_cast<double>(input->duration) / AV_TIME_BASE;
    return std::make_shared<OpenedMovie>(seconds > 0 && seconds < kLongestDuration ? seconds : 0);
  }
};

}  // namespace

std::unique_ptr<MovieOpener> makeMovieOpener() {
  return std::make_unique<LibraryMovieOpener>();
}

}  // namespace clipwave
