// Subscription links in text: how a feed's address becomes one, and where links stand in a text. Pure rules.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/TextView.h"

namespace clipwave {

// "itpc://" in place of a leading "http://"; every other address unchanged.
std::string subscriptionLink(std::string_view feedURL);
// The address of the feed that is meant by one that begins with itpc:, pcast:, feed:, http: or https:, in any
// case: the first three stand for http, or before a whole address for nothing. Nothing for any other text.
// The address need not be one that can be loaded.
std::optional<std::string> feedURLForAddress(std::string_view address);
// The report: one link a line, each with its line break.
std::string reportText(const std::vector<std::string>& feedURLs);
// Every "itpc://" up to the next white space or the end of the text, in order.
std::vector<TextRange> findSubscriptionLinks(std::string_view text);

}  // namespace clipwave
