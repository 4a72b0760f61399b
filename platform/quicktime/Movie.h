// Opened movie files and the facts that a movie answers about itself.
#pragma once

#include <memory>
#include <string_view>

#include "platform/foundation/Value.h"

namespace clipwave {

// An opened movie; it holds no open file once its facts are read.
class Movie : public Handle {
 public:
  // The absolute path that it was opened at.
  virtual std::string_view path() const = 0;
  // The whole movie's duration in seconds; 0 when the file does not say.
  virtual double duration() const = 0;
};

// Opens movie files.
class MovieOpener {
 public:
  virtual ~MovieOpener() = default;
  // The movie at an absolute path, or none: no such file, no permission, not a movie (no audio or video
  // stream), or damaged beyond telling. Reads this one local file and nothing that it may refer to. Never
  // throws, never prints.
  virtual std::shared_ptr<Movie> movieWithPath(std::string_view path) = 0;
};

// Through FFmpeg's libraries. Text, pictures and playlists are no movies.
std::unique_ptr<MovieOpener> makeMovieOpener();

}  // namespace clipwave
