// Signals that are caught, for as long as it lives, instead of ending or stopping the process.
#pragma once

#include <signal.h>

#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

namespace clipwave {

// Caught by handlers, which every thread obeys: blocking them would not do, as libraries have threads of
// their own before main begins. Several may live, each within the one made before; the innermost catches.
class CaughtSignals {
 public:
  // A signal that the process was started to ignore, as by nohup, is left alone.
  explicit CaughtSignals(std::initializer_list<int> signals);
  // Everything is as it was before; what came and was not taken is gone.
  ~CaughtSignals();
  CaughtSignals(const CaughtSignals&) = delete;
  CaughtSignals& operator=(const CaughtSignals&) = delete;

  // Readable while a signal is to be taken. -1 where there is none left in the system.
  int descriptor() const { return readEnd_; }
  // The next one that came; nothing without one. Never waits.
  std::optional<int> take() const;

 private:
  std::vector<std::pair<int, struct sigaction>> before_;
  int writeEndBefore_;
  int readEnd_ = -1;
};

}  // namespace clipwave
