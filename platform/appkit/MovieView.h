// The view that plays the selected episode's movie.
#pragma once

#include <memory>

#include "platform/appkit/Element.h"
#include "platform/quicktime/Movie.h"

namespace clipwave {

class MovieView : public View {
 public:
  const std::shared_ptr<Movie>& movie() const { return movie_; }
  void setMovie(std::shared_ptr<Movie> movie) { assign(movie_, std::move(movie)); }
  bool isPlaying() const { return playing_; }
  void play() { assign(playing_, true); }
  void pause() { assign(playing_, false); }

 private:
  std::shared_ptr<Movie> movie_;
  bool playing_ = false;
};

}  // namespace clipwave
