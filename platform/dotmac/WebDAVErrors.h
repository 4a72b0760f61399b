// What went wrong with a request to a WebDAV server, as the service's error types. Internal to this room.
#pragma once

#include <string_view>

#include "platform/dotmac/DotMacKit.h"
#include "platform/foundation/Error.h"

namespace clipwave {

// The domain of errors whose code is a DMErrorType.
inline constexpr std::string_view DMErrorDomain = "DMErrorDomain";

Error dotMacError(DMErrorType type, std::string description);
// Of an answer that is no success.
Error errorForStatus(long status);
// Of a request that brought no answer; its sentence is kept.
Error errorForFailedRequest(const Error& failed);

}  // namespace clipwave
