// Movies that a test declares instead of making them.
#pragma once

#include <map>

#include "platform/quicktime/Movie.h"

namespace clipwave::testing {

class FakeMovie final : public Movie {
 public:
  FakeMovie(std::string_view path, double duration) : path_(path), duration_(duration) {}
  std::string_view path() const override { return path_; }
  double duration() const override { return duration_; }

 private:
  std::string path_;
  double duration_;
};

// Opens what it was told of; every other path is no movie. No file need exist.
class FakeMovieOpener final : public MovieOpener {
 public:
  std::shared_ptr<Movie> movieWithPath(std::string_view path) override {
    ++openings;
    const auto movie = durations.find(path);
    return movie == durations.end() ? nullptr : std::make_shared<FakeMovie>(path, movie->second);
  }

  std::map<std::string, double, std::less<>> durations;  // by path, in seconds
  int openings = 0;                                      // asked for, successful or not
};

}  // namespace clipwave::testing
