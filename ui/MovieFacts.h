// What is known of the movie files of the episodes in sight, found out beside the main thread.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <thread>
#include <unordered_map>
#include <vector>

#include "model/Vodcast.h"
#include "platform/foundation/RunLoop.h"
#include "ui/MovieFileReader.h"

namespace clipwave {

// An episode's file is looked at once: where it is, how large it is, and, where the episode's duration or
// size is not stored yet, what the movie says; these are then stored with the episode, as a first reading
// would. What was found holds until the episode's path changes. Used from the main thread alone.
class MovieFacts {
 public:
  struct Facts {
    MovieTrouble trouble = MovieTrouble::None;
    std::optional<std::int64_t> bytes = {};  // of the whole file; none when there is none
  };

  // Both must outlive this object. `movies` is called from another thread, one call at a time.
  MovieFacts(RunLoop& runLoop, MovieOpener& movies);
  // Waits for the file that is being opened.
  ~MovieFacts();
  MovieFacts(const MovieFacts&) = delete;
  MovieFacts& operator=(const MovieFacts&) = delete;

  // Null while nothing is known of the file that the episode has now, or where it has none.
  const Facts* factsOf(const ManagedObject& episode) const;
  // The episodes in sight, in the order in which to look at them. Those of an earlier call that are not among
  // them, and not begun, are forgotten.
  void setWanted(const std::vector<ManagedObject*>& episodes);
  // Files that were missing or no movies are looked at again when they are wanted next.
  void forgetTroubles();
  // Called when more has become known, once for many files.
  Observation observe(std::function<void()> function) { return observers_.add(std::move(function)); }

 private:
  struct Known {
    Value path;
    Value alias;
    Facts facts;
  };
  struct Asked {
    std::weak_ptr<ManagedObject> episode;
    Value path;
    Value alias;
  };
  // What the two threads share.
  struct Desk {
    std::mutex mutex;
    std::condition_variable wakes;
    std::deque<MovieFileRequest> requests;
    std::vector<MovieFileReport> reports;
    bool ends = false;
    MovieFacts* owner = nullptr;  // the main thread's alone; null when it is gone
  };

  static void work(Desk& desk, const std::weak_ptr<Desk>& weakDesk, RunLoop& runLoop, MovieOpener& movies);
  void take();
  void apply(MovieFileReport& report);

  RunLoop& runLoop_;
  std::unordered_map<std::int64_t, Known> known_;  // by record
  std::unordered_map<std::int64_t, Asked> asked_;
  std::deque<MovieFileReport> reports_;  // arrived, not applied yet
  bool taking_ = false;
  Observers<> observers_;
  std::shared_ptr<Desk> desk_ = std::make_shared<Desk>();
  std::thread worker_;
};

}  // namespace clipwave
