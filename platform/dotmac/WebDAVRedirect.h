// Which redirects of a WebDAV server are followed, and how. Internal to this room.
#pragma once

#include "platform/foundation/Error.h"
#include "platform/foundation/HTTPClient.h"

namespace clipwave {

// How many redirects one request may meet.
inline constexpr int kMostRedirects = 5;

bool isRedirect(const HTTPResponse& response);
// Makes `request` the one that the redirect asks for: the same, at another URL of the same server. Where a
// folder was moved, the Destination of a MOVE moves along. Fails, with a sentence that names the host, where
// it leads to another server (which must not be shown the password) or to nowhere.
Result<void> followRedirect(HTTPRequest& request, const HTTPResponse& response);

}  // namespace clipwave
