// A channel's feed: the RSS 2.0 document with the iTunes elements, made from the channel and its published
// episodes.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/Channel.h"
#include "model/LanguageDataSource.h"
#include "model/Vodcast.h"
#include "platform/foundation/TimeZone.h"
#include "platform/foundation/XMLDocument.h"

namespace clipwave {

// Movie file extension (exact, case-sensitive) to its MIME type.
using MovieTypes = std::map<std::string, std::string, std::less<>>;

// Writes nothing for an absent value; an empty text gives an empty element.
void addChildElementWithTitle(std::string_view title, const std::optional<std::string>& stringValue,
                              XMLElement toElement);
void addChildElementWithTitle(std::string_view title, const Value& stringValue, XMLElement toElement);

// The escaped public URL of the channel's feed; nothing while it has no URL or no file name.
std::optional<std::string> channelFeedURL(Channel& channel);

// "%a, %e %b %Y %H:%M:%S %z".
std::string feedDateText(Date date, const TimeZone& zone);

// The channel's episodes, the latest publish date first; equal dates keep their order, episodes without a
// date come last.
std::vector<Vodcast*> sortedEpisodes(Channel& channel);

struct FeedTables {
  const LanguageDataSource& languages;
  const MovieTypes& types;
};

// The document of the channel with an item for each published episode of `episodes`, in that order.
XMLDocument makeFeedDocument(Channel& channel, const std::vector<Vodcast*>& episodes,
                             const FeedTables& tables);

}  // namespace clipwave
