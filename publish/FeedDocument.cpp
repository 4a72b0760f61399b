#include "publish/FeedDocument.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "model/FeedURL.h"
#include "platform/foundation/FileManager.h"

namespace clipwave {
namespace {

constexpr std::string_view kITunesDTD = "http://www.itunes.com/dtds/podcast-1.0.dtd";

constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kSkipDays = {{
    {"skipDay1", "Monday"},
    {"skipDay2", "Tuesday"},
    {"skipDay3", "Wednesday"},
    {"skipDay4", "Thursday"},
    {"skipDay5", "Friday"},
    {"skipDay6", "Saturday"},
    {"skipDay7", "Sunday"},
}};
constexpr int kLastSkipHour = 23;

// The element `name` with the text stored under `key`.
void addText(XMLElement parent, std::string_view name, ManagedObject& record, std::string_view key) {
  addChildElementWithTitle(name, record.value(key), parent);
}

// Always written: a flag that was never set says "no".
void addYesNo(XMLElement parent, std::string_view name, ManagedObject& record, std::string_view key) {
  parent.addChild(name, record.value(key).boolValue() ? "yes" : "no");
}

void addCategory(XMLElement parent, ManagedObject& record) {
  const Value category = record.value("vcCategory");
  if (category.stringValue().empty()) return;
  XMLElement outer = parent.addChild("itunes:category");
  outer.addAttribute("text", category.stringValue());
  const Value subCategory = record.value("subCategory");
  if (subCategory.isString()) {
    outer.addChild("itunes:category").addAttribute("text", subCategory.stringValue());
  }
}

void addSkipDays(XMLElement parent, Channel& channel) {
  XMLElement skipDays;
  for (const auto& [key, day] : kSkipDays) {
    if (!channel.value(key).boolValue()) continue;
    if (!skipDays) skipDays = parent.addChild("skipDays");
    skipDays.addChild("day", day);
  }
}

void addSkipHours(XMLElement parent, Channel& channel) {
  XMLElement skipHours;
  for (int hour = 1; hour <= kLastSkipHour; ++hour) {
    const std::string number = std::to_string(hour);
    if (!channel.value("skipHour" + number).boolValue()) continue;
    if (!skipHours) skipHours = parent.addChild("skipHours");
    skipHours.addChild("hour", number);
  }
}

void addImage(XMLElement parent, Channel& channel) {
  ManagedObject* image = channel.relatedObject("image");
  if (image == nullptr) return;
  const Value url = image->value("url");
  // Without an address the element would promise artwork that nobody can fetch.
  if (url.isString()) parent.addChild("itunes:image").addAttribute("href", escapedURL(url.stringValue()));
}

void addOwner(XMLElement parent, Channel& channel) {
  XMLElement owner = parent.addChild("itunes:owner");
  addText(owner, "itunes:name", channel, "ownerName");
  addText(owner, "itunes:email", channel, "vcEmail");
}

// The elements of the channel itself, ahead of its items; their order is part of the format.
void describeChannel(XMLElement element, Channel& channel, const LanguageDataSource& languages) {
  addText(element, "title", channel, "vcTitle");
  addText(element, "link", channel, "websiteURL");
  addText(element, "copyright", channel, "copyright");
  addChildElementWithTitle("itunes:author", channel.itunesAuthor(), element);
  addYesNo(element, "itunes:block", channel, "block");
  addYesNo(element, "itunes:explicit", channel, "vcExplicit");
  addCategory(element, channel);
  addText(element, "itunes:keywords", channel, "keywords");
  addText(element, "description", channel, "vcSubtitle");
  addText(element, "itunes:subtitle", channel, "vcSubtitle");
  addImage(element, channel);
  addText(element, "managingEditor", channel, "managingEditor");
  addText(element, "webMaster", channel, "webMaster");
  if (const std::optional<Date> built = channel.value("lastBuildDate").dateValue()) {
    element.addChild("lastBuildDate", feedDateText(*built, TimeZone::defaultTimeZone()));
  }
  addText(element, "generator", channel, "generator");
  addText(element, "docs", channel, "docs");
  addText(element, "ttl", channel, "ttl");
  addSkipDays(element, channel);
  addSkipHours(element, channel);
  addOwner(element, channel);
  addText(element, "itunes:summary", channel, "vcSummary");
  const Value language = channel.value("language");
  if (language.isString()) {
    addChildElementWithTitle("language", languages.codeForName(language.stringValue()), element);
  }
}

// Where an episode's movie is found once it is published. Both values are read together, since the file name
// may cost a look at the disk.
struct PublishedMedia {
  std::optional<std::string> filename;
  std::optional<std::string> escapedURL;

  explicit PublishedMedia(Vodcast& episode) : filename(episode.mediaFilename()) {
    if (!filename) return;
    const bool isStored = !episode.primitiveValue("mediaFilename").isNull();
    // A movie that is no longer found on this disk reads an empty path. Its subscribers go on knowing it by
    // the name under which it was sent.
    if (!isStored && filename->empty()) {
      filename = lastPathComponent(episode.primitiveValue("vcPath").stringValue());
    }
    const std::optional<std::string> folder = episode.mediaURL();
    if (!folder) return;
    // A channel's URL arrives here escaped already, and an imported file name as its feed had it: escaping
    // those once more would lead away from the movie. A name taken from the disk is no URL yet, and a "%" in
    // it is a "%".
    escapedURL = escapedURLKeepingEscapes(*folder);
    escapedURL->push_back('/');
    escapedURL->append(isStored ? escapedURLKeepingEscapes(*filename) : clipwave::escapedURL(*filename));
  }
};

// Writes the items of one feed; keeps between them what they have in common.
class ItemWriter {
 public:
  ItemWriter(std::optional<std::string> feedURL, const MovieTypes& types)
      : feedURL_(std::move(feedURL)), types_(types) {}

  void addItem(XMLElement channelElement, Vodcast& episode) {
    const PublishedMedia media(episode);
    XMLElement item = channelElement.addChild("item");
    const Value subtitle = episode.value("vcSubtitle");
    const Value description = episode.value("vcDescription");

    addText(item, "title", episode, "vcTitle");
    if (const std::optional<Date> published = episode.value("vcPublishDate").dateValue()) {
      item.addChild("pubDate", feedDateText(*published, zoneOf(episode)));
    }
    addText(item, "author", episode, "vcEmail");
    addChildElementWithTitle("link", media.escapedURL, item);
    addChildElementWithTitle("description", description.isNull() ? subtitle : description, item);
    addText(item, "comments", episode, "comments");
    addCategory(item, episode);
    XMLElement source = item.addChild("source");
    if (feedURL_) source.addAttribute("url", *feedURL_);
    addChildElementWithTitle("itunes:subtitle", subtitle, item);
    addChildElementWithTitle("itunes:duration", episode.mediaTimeString(), item);
    addText(item, "itunes:summary", episode, "vcSummary");
    addYesNo(item, "itunes:explicit", episode, "vcExplicit");
    addYesNo(item, "itunes:block", episode, "block");
    addText(item, "itunes:keywords", episode, "keywords");
    addText(item, "itunes:author", episode, "vcAuthor");
    addChildElementWithTitle("guid", media.escapedURL, item);
    addEnclosure(item, episode, media);
  }

 private:
  // Episodes of a channel share a zone nearly always; looking one up in the database costs more than writing
  // the date.
  const TimeZone& zoneOf(Vodcast& episode) {
    const std::optional<std::string> name = episode.timezone();
    if (!name) return defaultZone_;
    const auto known = zones_.find(*name);
    if (known != zones_.end()) return known->second;
    return zones_.emplace(*name, TimeZone::named(*name).value_or(defaultZone_)).first->second;
  }

  // An attribute that has nothing to say is left out; the element itself never is.
  void addEnclosure(XMLElement item, Vodcast& episode, const PublishedMedia& media) {
    XMLElement enclosure = item.addChild("enclosure");
    if (media.escapedURL) enclosure.addAttribute("url", *media.escapedURL);
    const auto length = static_cast<std::int32_t>(episode.size());
    if (length > 0) enclosure.addAttribute("length", std::to_string(length));
    if (!media.filename) return;
    const auto type = types_.find(pathExtension(*media.filename));
    if (type != types_.end()) enclosure.addAttribute("type", type->second);
  }

  const std::optional<std::string> feedURL_;
  const MovieTypes& types_;
  const TimeZone defaultZone_ = TimeZone::defaultTimeZone();
  std::map<std::string, TimeZone, std::less<>> zones_;
};

// The date is read once for each episode, not once a comparison.
using DatedEpisode = std::pair<std::optional<Date>, Vodcast*>;

// The later date first; no date is less than any date.
bool sortArray(const DatedEpisode& first, const DatedEpisode& second) {
  return second.first < first.first;
}

}  // namespace

void addChildElementWithTitle(std::string_view title, const std::optional<std::string>& stringValue,
                              XMLElement toElement) {
  if (stringValue) toElement.addChild(title, *stringValue);
}

void addChildElementWithTitle(std::string_view title, const Value& stringValue, XMLElement toElement) {
  if (stringValue.isString()) toElement.addChild(title, stringValue.stringValue());
}

std::optional<std::string> channelFeedURL(Channel& channel) {
  return feedURL(channel.value("vcURL").optionalString(), channel.value("filename").optionalString());
}

std::string feedDateText(Date date, const TimeZone& zone) {
  return formatCalendarDate(date, "%a, %e %b %Y %H:%M:%S %z", zone);
}

std::vector<Vodcast*> sortedEpisodes(Channel& channel) {
  std::vector<DatedEpisode> dated;
  const std::vector<ManagedObject*>& children = channel.relatedObjects("children");
  dated.reserve(children.size());
  for (ManagedObject* child : children) {
    dated.emplace_back(child->value("vcPublishDate").dateValue(), static_cast<Vodcast*>(child));
  }
  std::stable_sort(dated.begin(), dated.end(), sortArray);
  std::vector<Vodcast*> sorted;
  sorted.reserve(dated.size());
  for (const auto& [date, episode] : dated) sorted.push_back(episode);
  return sorted;
}

XMLDocument makeFeedDocument(Channel& channel, const std::vector<Vodcast*>& episodes,
                             const FeedTables& tables) {
  XMLDocument document("rss");
  document.rootElement().addAttribute("xmlns:itunes", kITunesDTD);
  document.rootElement().addAttribute("version", "2.0");
  const Value stylesheet = channel.value("stylesheetURL");
  if (channel.value("useStylesheet").boolValue() && stylesheet.isString()) {
    // Escaping leaves neither a quote nor a "?" that could end the instruction early.
    document.addProcessingInstruction(
        "xml-stylesheet", "type=\"text/xsl\" href=\"" + escapedURL(stylesheet.stringValue()) + '"');
  }
  XMLElement element = document.rootElement().addChild("channel");
  describeChannel(element, channel, tables.languages);
  ItemWriter writer(channelFeedURL(channel), tables.types);
  for (Vodcast* episode : episodes) {
    if (episode->value("vcPublish").boolValue()) writer.addItem(element, *episode);
  }
  return document;
}

}  // namespace clipwave
