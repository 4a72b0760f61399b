#include "platform/foundation/HTTPHead.h"

namespace clipwave {
namespace {

constexpr std::size_t kMostHeadBytes = std::size_t{256} << 10;  // of all answers of a transfer together

}  // namespace

bool HTTPHead::take(std::string_view line) {
  if (line.starts_with("HTTP/")) {
    progress_ = FailedTransfer::Answer::WithinHead;
    const std::size_t blank = line.find(' ');
    isInterim_ = blank != line.npos && line.substr(blank + 1).starts_with('1');
  }
  if (line == "\r\n" || line == "\n")
    progress_ = isInterim_ ? FailedTransfer::Answer::None : FailedTransfer::Answer::HeadComplete;
  size_ += line.size();
  return size_ <= kMostHeadBytes;
}

}  // namespace clipwave
