// Turns an existing feed, from a file or a URL, into a new channel with an episode for each item.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "model/Channel.h"
#include "model/LanguageDataSource.h"
#include "platform/appkit/Application.h"
#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Controls.h"
#include "platform/foundation/Bundle.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/URLLoading.h"
#include "platform/foundation/XMLDocument.h"

namespace clipwave {

// Feed element name, prefix included, to the key of a text attribute.
using FeedMappings = std::map<std::string, std::string, std::less<>>;
// The table that the resource holds; empty when it is missing.
FeedMappings feedMappingsFromResource(const Bundle& bundle, std::string_view name);

class FeedImport {
 public:
  struct Services {
    Application& application;
    Log& log;
    URLLoading& urls;
    ArrayController& channelController;
    ArrayController& vodcastController;  // the episodes of the selected channel
    ArrayController& imageController;
    const LanguageDataSource& languageDataSource;
    const FeedMappings& channelMappings;
    const FeedMappings& vodcastMappings;
  };
  struct Elements {
    Window& mainWindow;
    Window& rssFeedWindow;
    TextField& rssURLBox;
  };
  // Everything that is handed over must outlive the import.
  FeedImport(Services services, Elements elements) : services_(services), elements_(elements) {}

  // Asks for a file in an Open panel on the main window, and imports it.
  void importRSSFromFile();
  void importRSSOpenPanelDidEnd(const OpenPanelAnswer& chosen);
  // Asks for a URL in a sheet on the main window; closeRSSFeedSheet imports what was entered.
  void importRSSFromURL();
  void closeRSSFeedSheet();
  void cancelRSSFeedSheet();
  void rssFeedSheetDidEnd(int returnCode);

  // Loads the feed, waiting for it at the longest five seconds, and makes the channel and its episodes, which
  // are selected then. A feed that cannot be loaded or is none is told in an alert, and nothing is made. Nor
  // is it when an edit in progress refuses to be committed; what was edited tells of that. Answers the new
  // channel, or null.
  Channel* importRSSWithURL(std::string_view url);

  // Why the last feed was no XML, for a companion that says what the alert leaves out; "" for every other
  // end.
  const std::string& trouble() const { return trouble_; }

 private:
  // The feed's document, or nothing after the user has been told.
  std::optional<XMLDocument> loadFeed(std::string_view url);
  void showLoadFailure(const std::optional<Error>& loadError, std::string_view message);
  void showStructureFailure();
  void fillChannel(Channel& channel, XMLElement element);
  void addImage(Channel& channel, XMLElement element);
  void addEpisode(XMLElement item);

  Services services_;
  Elements elements_;
  std::string trouble_;
};

}  // namespace clipwave
