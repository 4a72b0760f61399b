// Drives libcurl's transfers from our run loop, so that many of them go on at once on the main thread.
// Internal to this room.
#pragma once

#include <functional>
#include <memory>

#include "platform/foundation/Observation.h"
#include "platform/foundation/RunLoop.h"

namespace clipwave {

// Makes libcurl ready for use in this process; from any thread, and more than once.
void prepareCurl();

// All transfers of one loop share its pool of open connections. They go on in the run loop's default mode.
// May be destroyed inside anything that it calls; what is still under way then ends without another word. The
// run loop must outlive it.
class CurlLoop {
 public:
  // Receives the transfer's CURLcode.
  using Completion = std::function<void(int code)>;

  explicit CurlLoop(RunLoop& runLoop);
  ~CurlLoop();
  CurlLoop(const CurlLoop&) = delete;
  CurlLoop& operator=(const CurlLoop&) = delete;

  // Starts the transfer of `easy`, a CURL* that is all set up. `owner` owns it, and whatever its callbacks
  // use, and is held until libcurl has let go of both. `done` is called once, in a later pass of the run
  // loop, when the handle is free again; with CURLE_FAILED_INIT when it could not be started, as null, as a
  // handle that is under way already, and from within a handle's callback. Ending the answer stops the
  // transfer: neither `done` is called then, nor, once libcurl is left, any of the handle's callbacks, one of
  // which may be what ends it. libcurl's time-outs run on during a modal run, in which nothing is read.
  Observation add(std::shared_ptr<void> owner, void* easy, Completion done);

 private:
  class State;
  std::shared_ptr<State> state_;
};

}  // namespace clipwave
