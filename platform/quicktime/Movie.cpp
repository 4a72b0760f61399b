#include "platform/quicktime/Movie.h"

#include <chrono>
#include <span>
#include <string>
#include <string_view>

#include "platform/quicktime/MovieInput.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace clipwave {
namespace {

// A file made to keep a reader busy, or a slow volume, holds the application up no longer than this.
constexpr std::chrono::seconds kPatience{3};

using Deadline = std::chrono::steady_clock::time_point;

int isPastDeadline(void* deadline) {
  return std::chrono::steady_clock::now() > *static_cast<const Deadline*>(deadline) ? 1 : 0;
}

class OpenedMovie final : public Movie {
 public:
  OpenedMovie(std::string path, double duration) : path_(std::move(path)), duration_(duration) {}
  std::string_view path() const override { return path_; }
  double duration() const override { return duration_; }

 private:
  std::string path_;
  double duration_;
};

bool hasPlayableStream(const AVFormatContext& input) {
  for (const AVStream* stream : std::span(input.streams, input.nb_streams)) {
    if (isPlayable(*stream)) return true;
  }
  return false;
}

class LibraryMovieOpener final : public MovieOpener {
 public:
  LibraryMovieOpener() { silenceMovieLibraries(); }

  std::shared_ptr<Movie> movieWithPath(std::string_view path) override {
    Deadline deadline = std::chrono::steady_clock::now() + kPatience;
    const Result<MovieInput> opened = openMovieInput(std::string(path), {isPastDeadline, &deadline});
    if (!opened) return nullptr;
    const MovieInput& input = *opened;
    // QuickTime and Matroska files say everything in their header; reading packets costs several times as
    // much and is kept for the containers that do not.
    if (input->duration <= 0 || !hasPlayableStream(*input)) avformat_find_stream_info(input.get(), nullptr);
    if (!hasPlayableStream(*input)) return nullptr;
    return std::make_shared<OpenedMovie>(std::string(path), durationOf(*input));
  }
};

}  // namespace

std::unique_ptr<MovieOpener> makeMovieOpener() {
  return std::make_unique<LibraryMovieOpener>();
}

}  // namespace clipwave
