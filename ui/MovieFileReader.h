// Looks at one movie file for an episode; the part that may block, kept off the main thread.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/Clock.h"
#include "platform/quicktime/AliasManager.h"
#include "platform/quicktime/Movie.h"

namespace clipwave {

enum class MovieTrouble { None, Missing, NotAMovie };

// Plain values: records and their values stay on the main thread.
struct MovieFileRequest {
  std::int64_t episode = 0;  // the record's identity
  std::string path;
  std::optional<std::string> alias;
  bool opensMovie = false;
};

struct MovieFileReport {
  std::int64_t episode = 0;
  MovieTrouble trouble = MovieTrouble::None;
  std::optional<std::int64_t> bytes = {};
  std::shared_ptr<Movie> movie = {};             // where it was asked for and could be opened
  std::optional<std::string> updatedAlias = {};  // to be stored instead of the one that was asked with
};

// Belongs to one thread. Follows moved files with an alias manager of its own.
class MovieFileReader {
 public:
  explicit MovieFileReader(MovieOpener& movies) : movies_(movies) {}
  MovieFileReport read(const MovieFileRequest& request);

 private:
  MovieOpener& movies_;
  SystemClock clock_;
  std::unique_ptr<AliasManager> aliases_ = makeAliasManager(clock_);
};

}  // namespace clipwave
