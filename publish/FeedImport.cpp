#include "publish/FeedImport.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <set>

#include "model/LibraryModel.h"
#include "model/Vodcast.h"
#include "platform/foundation/ASCII.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/NaturalLanguageDate.h"
#include "platform/foundation/TimeZone.h"
#include "platform/foundation/URLs.h"

namespace clipwave {
namespace {

// How long the load may hold up the main thread.
constexpr Seconds kLoadTimeout{5};
// Far more than any podcast has; of each comes a record, and a page of empty items must not fill the memory.
constexpr std::size_t kMostItems = 100'000;

// The number that the text begins with, 0 without one; beyond 32 bits it saturates.
std::int32_t leadingInteger(std::string_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::int64_t number = Value(text).integerValue();
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

// Only attributes that take text: a table of mappings is a resource, and must not give a date the value
// "yesterday".
bool takesText(const ManagedObject& record, std::string_view key) {
  const PropertyDescription* property = record.entity().property(key);
  return property != nullptr && property->type == PropertyType::String;
}

void setMappedValues(ManagedObject& record, XMLElement element, const FeedMappings& mappings) {
  std::set<std::string_view> filled;
  for (const auto& [name, key] : mappings) {
    const XMLElement child = element.firstElementForName(name);
    if (!child || !takesText(record, key)) continue;
    const std::string text = child.stringValue();
    // Where two elements lead to one attribute, an empty one takes nothing away from the other.
    if (text.empty() && filled.contains(key)) continue;
    record.setValue(key, text);
    filled.insert(key);
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
    episode.setValue(key, equalIgnoringCase(flag.stringValue(), "yes"));
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
  trouble_.clear();
  const std::optional<XMLDocument> document = loadFeed(url);
  if (!document) return nullptr;
  const XMLElement element = document->rootElement().firstElementForName("channel");
  const std::vector<XMLElement> items = element ? element.elementsForName("item") : std::vector<XMLElement>();
  if (items.empty()) {
    showStructureFailure();
    return nullptr;
  }
  if (items.size() > kMostItems) {
    const std::string tooMany = localized("Import", "The feed has more than 100,000 items.");
    showLoadFailure(Error{std::string(NSURLErrorDomain), kURLErrorDataLengthExceedsMaximum, tooMany, {}},
                    tooMany);
    return nullptr;
  }
  // The store of all three lists. With an edit that refuses to end, the list could not select the new
  // channel, and the episodes would go to another one.
  ManagedObjectContext* context = services_.channelController.managedObjectContext();
  if (context == nullptr || !context->commitEditing()) return nullptr;

  auto& channel = static_cast<Channel&>(*services_.channelController.newObject());
  services_.channelController.addObject(channel);
  fillChannel(channel, element);
  for (const XMLElement item : items) addEpisode(item);
  services_.channelController.setUndoActionName(localized("Undo", "Import"));
  return &channel;
}

std::optional<XMLDocument> FeedImport::loadFeed(std::string_view url) {
  constexpr std::string_view kNoFeed = "Invalid RSS feed.";
  const Result<LoadedData> loaded = services_.urls.dataWithContentsOfURL(url, kLoadTimeout);
  if (!loaded) {
    const bool isNoURL = loaded.error().code == kURLErrorBadURL;
    showLoadFailure(loaded.error(), isNoURL ? kNoFeed : loaded.error().localizedDescription);
    return std::nullopt;
  }
  Result<XMLDocument> document =
      XMLDocument::parse(loaded->bytes, XMLDocument::Parsing::Tolerant, loaded->charset);
  if (!document) {
    // The load itself went well: there is no reason to show but the title.
    showLoadFailure({}, {});
    trouble_ = document.error().localizedDescription;
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
  ManagedObject& image = *services_.imageController.newObject();
  // Without an address it is artwork all the same, so that the channel is not given some other.
  if (const std::optional<std::string> href = element.attribute("href")) {
    image.setValue("title", lastPathComponent(*href));
    image.setValue("url", *href);
  }
  services_.imageController.addObject(image);
  channel.setValue("image", &image);
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
