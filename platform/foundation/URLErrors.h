// What went wrong with a load, as an error that a person understands. Internal to this room.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/foundation/Error.h"
#include "platform/foundation/URLLoading.h"

namespace clipwave {

// An error of NSURLErrorDomain.
Error urlError(URLErrorCode code, std::string description);

Error badURLError();
// `scheme`: what the URL begins with, without its colon.
Error unsupportedURLError(std::string_view scheme);
// `name`: the host or file; `most`: how many bytes would have been taken.
Error tooLargeError(std::string_view name, std::int64_t most);
Error insecureConnectionError(std::string_view host);
// Of the file that was to be sent to the host.
Error cannotReadSourceError(std::string_view host);

// What is known of a transfer that libcurl gave up, or whose answer is not what was asked for.
struct FailedTransfer {
  int curlCode = 0;
  // The last status that a server answered; 0 when none did.
  long status = 0;
  // The host that was asked last. Never a part of the URL that may hold a password.
  std::string host;
  // How far the answer to the last request had come.
  enum class Answer { None, WithinHead, HeadComplete } answer = Answer::None;
  // Whether there was something to send.
  bool isUpload = false;
};
Error transferError(const FailedTransfer& failed);

}  // namespace clipwave
