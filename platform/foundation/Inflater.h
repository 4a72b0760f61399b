// Unpacks what a server packed with gzip or deflate, piece by piece as it comes. Internal to this room.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace clipwave {

class Inflater {
 public:
  enum class Format {
    Gzip,     // one member or several behind each other
    Deflate,  // wrapped by zlib, or raw, as some servers send it
  };

  explicit Inflater(Format format);
  ~Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  // Hands what the next piece holds to `take`, in parts of 16 KiB at most. False when it is no packed text or
  // does not fit its check-sum, and once `take` answers false; then there is nothing more to unpack. What
  // follows the end is passed over.
  bool unpack(std::string_view piece, const std::function<bool(std::string_view)>& take);
  // Whether all that was packed has come.
  bool hasEnded() const { return state_ == State::BetweenMembers || state_ == State::Ended; }

 private:
  struct Stream;
  enum class State { Start, Inside, BetweenMembers, Ended, Failed };

  void begin();
  State inflate(std::string_view& piece, const std::function<bool(std::string_view)>& take);

  Format format_;
  State state_ = State::Start;
  std::string beginning_;  // the first bytes of what comes next, until they tell what it is
  std::unique_ptr<Stream> stream_;
};

}  // namespace clipwave
