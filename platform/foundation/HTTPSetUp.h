// What every transfer over http and https has in common, whatever it is for. Internal to this room.
#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/Clock.h"

namespace clipwave {

// As libcurl takes times: at least 1, as 0 is no limit at all.
long curlMilliseconds(Seconds time);

// Keeps the transfer of `easy`, a CURL*, to http and https and to certificates that are trusted.
// `certificateAuthorities`: as in URLLoadingOptions.
void setUpForWeb(void* easy, const std::string& userAgent, const std::string& certificateAuthorities);

// The last status that came; 0 before the first.
long statusOf(void* easy);

// The host, not too long for a sentence.
std::string shownHost(std::string_view host);

}  // namespace clipwave
