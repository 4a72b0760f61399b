// The head of an answer over http or https, as it comes line by line. Internal to this room.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/foundation/URLErrors.h"

namespace clipwave {

// Follows the heads of the answers that come, one after the other, over one transfer.
class HTTPHead {
 public:
  // A request goes out; nothing of its answer is there yet.
  void begin() { progress_ = FailedTransfer::Answer::None; }
  // Takes a line as libcurl hands it out; false when there have been too many bytes of them. A head that only
  // lets the request go on ("100 Continue") is no answer yet.
  bool take(std::string_view line);
  FailedTransfer::Answer progress() const { return progress_; }
  // Whether the head of an answer is all there. libcurl takes a connection that ends before for an answer
  // without a body.
  bool isComplete(long status) const {
    return progress_ == FailedTransfer::Answer::HeadComplete && status >= 200;
  }

 private:
  FailedTransfer::Answer progress_ = FailedTransfer::Answer::None;
  bool isInterim_ = false;
  std::size_t size_ = 0;
};

}  // namespace clipwave
