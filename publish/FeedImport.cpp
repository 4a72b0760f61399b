#include "publish/FeedImport.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "model/LibraryModel.h"
#include "model/Vodcast.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/NaturalLanguageDate.h"
#include "platform/foundation/TimeZone.h"

namespace clipwave {
namespace {

// How long the load may hold up the main thread.
constexpr Seconds kLoadTimeout{5};
// Far more than any podcast has; of each comes a record, and a page of empty items must not fill the memory.
constexpr std::size_t kMostItems = 100'000;

constexpr std::string_view kBlanks = " \t\r\n\v\f";

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool isYesInAnyCase(std::string_view text) {
  constexpr std::string_view kYes = "yes";
  return std::equal(text.begin(), text.end(), kYes.begin(), kYes.end(),
                    [](char c, char lower) { return c == lower || c == lower - 'a' + 'A'; });
}

// The number that the text begins with, behind blanks and a sign; 0 without one. Beyond 32 bits it saturates.
std::int32_t leadingInteger(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
  std::int64_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    number = std::min(number * 10 + (c - '0'), kLargest + 1);
  }
  return static_cast<std::int32_t>(isNegative ? -number : std::min(number, kLargest));
}

// Only attributes that take text: a table of mappings is a resource, and must not give a date the value
// "yesterday".
bool takesText(const ManagedObject& record, std::string_view key) {
  const PropertyDescription* property = record.entity().property(key);
  return property != nullptr && property->type == PropertyType::String;
}

void setMappedValues(ManagedObject& record, XMLElement element, const FeedMappings& mappings) {
  for (const auto& [name, key] : mappings) {
    const XMLElement child = element.firstElementForName(name);
    if (child && takesText(record, key)) record.setValue(key, child.stringValue());
  }
}

void setEnclosure(Vodcast& episode, XMLElement enclosure) {
  if (const auto url = enclosure.attribute("url")) {
    const std::size_t slash = url->rfind('/');
    const bool hasFolder = slash != std::string::npos;
    episode.setValue("mediaURL", hasFolder ? url->substr(0, slash) : "");
    episode.setValue("mediaFilename", hasFolder ? url->substr(slash + 1) : *url);
  }
  episode.setValue("size", leadingInteger(enclosure.attribute("length").value_or("")));
}

void setFlag(Vodcast& episode, XMLElement item, std::string_view name, std::string_view key) {
  if (const XMLElement flag = item.firstElementForName(name)) {
    episode.setValue(key, isYesInAnyCase(flag.stringValue()));
  }
}

}  // namespace

FeedMappings feedMappingsFromResource(const Bundle& bundle, std::string_view name) {
  FeedMappings mappings;
  for (const auto& [element, attribute] : bundle.dictionaryForResource(name)) {
    if (attribute.isString()) mappings[element] = std::string(attribute.stringValue());
  }
  return mappings;
}

void FeedImport::importRSSFromFile() {
  OpenPanel panel;
  panel.title = "Select a feed file";
  panel.message = "Please select a feed file to import.";
  panel.prompt = "Choose";
  services_.application.beginOpenPanelSheet(
      panel, elements_.mainWindow,
      [this](const OpenPanelAnswer& chosen) { importRSSOpenPanelDidEnd(chosen); });
}

void FeedImport::importRSSOpenPanelDidEnd(const OpenPanelAnswer& chosen) {
  // The shell has ordered the panel out when it calls back.
  if (!chosen.empty()) importRSSWithURL(fileURLWithPath(chosen.front()));
}

void FeedImport::importRSSFromURL() {
  services_.application.beginSheet(elements_.rssFeedWindow, elements_.mainWindow,
                                   [this](int returnCode) { rssFeedSheetDidEnd(returnCode); });
}

void FeedImport::closeRSSFeedSheet() {
  services_.application.endSheet(elements_.rssFeedWindow);
  // An address that was pasted often brings a line break along.
  importRSSWithURL(trimmed(elements_.rssURLBox.stringValue()));
}

void FeedImport::cancelRSSFeedSheet() {
  services_.application.endSheet(elements_.rssFeedWindow);
}

void FeedImport::rssFeedSheetDidEnd(int) {
  elements_.rssFeedWindow.orderOut();
}

Channel* FeedImport::importRSSWithURL(std::string_view url) {
  const std::optional<XMLDocument> document = loadFeed(url);
  if (!document) return nullptr;
  const XMLElement element = document->rootElement().firstElementForName("channel");
  const std::vector<XMLElement> items = element ? element.elementsForName("item") : std::vector<XMLElement>();
  if (items.empty() || items.size() > kMostItems) {
    showStructureFailure();
    return nullptr;
  }
  // With an edit that refuses to end, the list could not select the new channel, and the episodes would go to
  // another one.
  ManagedObjectContext* context = services_.channelController.managedObjectContext();
  if (context == nullptr || !context->commitEditing()) return nullptr;

  auto& channel = static_cast<Channel&>(*services_.channelController.newObject());
  services_.channelController.addObject(channel);
  fillChannel(channel, element);
  for (const XMLElement item : items) addEpisode(item);
  return &channel;
}

std::optional<XMLDocument> FeedImport::loadFeed(std::string_view url) {
  constexpr std::string_view kNoFeed = "Invalid RSS feed.";
  if (!isURL(url)) {
    showLoadFailure({}, kNoFeed);
    return std::nullopt;
  }
  const Result<LoadedData> loaded = services_.urls.dataWithContentsOfURL(url, kLoadTimeout);
  if (!loaded) {
    showLoadFailure(loaded.error(), loaded.error().localizedDescription);
    return std::nullopt;
  }
  Result<XMLDocument> document =
      XMLDocument::parse(loaded->bytes, XMLDocument::Parsing::Tolerant, loaded->charset);
  if (!document) {
    // The load itself went well: there is no reason to show but the title.
    showLoadFailure({}, {});
    return std::nullopt;
  }
  if (document->rootElement().name() != "rss") {
    showLoadFailure({}, kNoFeed);
    return std::nullopt;
  }
  return std::move(document).value();
}

void FeedImport::showLoadFailure(const std::optional<Error>& loadError, std::string_view message) {
  services_.log.write("Error loading URL");
  services_.log.write("Error Code:" + std::to_string(loadError ? loadError->code : 0) +
                      " Reason:" + (loadError ? loadError->localizedDescription : std::string()));
  services_.application.runCriticalAlertPanel("Error loading URL!", message, "OK");
}

void FeedImport::showStructureFailure() {
  services_.application.runCriticalAlertPanel("Invalid RSS Feed",
                                              "There was an error processing the RSS feed.", "OK");
}

void FeedImport::fillChannel(Channel& channel, XMLElement element) {
  setMappedValues(channel, element, services_.channelMappings);
  if (const XMLElement block = element.firstElementForName("block")) {
    channel.setValue("block", block.stringValue() == "Yes");
  }
  if (const XMLElement image = element.firstElementForName("itunes:image")) addImage(channel, image);
  if (const XMLElement isExplicit = element.firstElementForName("itunes:explicit")) {
    channel.setValue("vcExplicit", isExplicit.stringValue() == "Yes" ? Value(true) : Value());
  }
  if (const XMLElement language = element.firstElementForName("language")) {
    const auto name = services_.languageDataSource.nameForCode(language.stringValue());
    if (name) channel.setValue("language", *name);
  }
}

void FeedImport::addImage(Channel& channel, XMLElement element) {
  const std::optional<std::string> href = element.attribute("href");
  // Artwork without an address is none; the channel then gets that of any new channel.
  if (!href || href->empty()) return;
  ManagedObject* image = services_.imageController.newObject();
  if (image == nullptr) return;
  image->setValue("title", lastPathComponent(*href));
  image->setValue("url", *href);
  services_.imageController.addObject(*image);
  channel.setValue("image", image);
}

void FeedImport::addEpisode(XMLElement item) {
  auto& episode = static_cast<Vodcast&>(*services_.vodcastController.newObject());
  if (const XMLElement enclosure = item.firstElementForName("enclosure")) setEnclosure(episode, enclosure);
  setFlag(episode, item, "itunes:explicit", "vcExplicit");
  setFlag(episode, item, "block", "block");
  setFlag(episode, item, "itunes:block", "block");
  if (const XMLElement published = item.firstElementForName("pubDate")) {
    episode.setValue("vcPublishDate",
                     dateWithNaturalLanguageString(published.stringValue(), TimeZone::defaultTimeZone()));
  }
  // Last, so that an element in the table has the last word.
  setMappedValues(episode, item, services_.vodcastMappings);
  services_.vodcastController.addObject(episode);
}

}  // namespace clipwave
