// The main window's controller: start-up, wiring and the user defaults; owns each concern of the window and
// hands it out by name.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/ApplicationServices.h"
#include "app/MainInterface.h"
#include "app/UpdateCheck.h"
#include "app/lanternAppDelegate.h"
#include "model/LanguageDataSource.h"
#include "platform/foundation/Observation.h"
#include "publish/FeedImport.h"
#include "publish/FeedPreparation.h"
#include "publish/PublishRun.h"
#include "publish/SubscriptionHandOff.h"
#include "record/CaptureSettings.h"
#include "record/RecordHandOff.h"
#include "transfer/CopyBackEnd.h"
#include "ui/ChannelListEditing.h"
#include "ui/EpisodeListEditing.h"
#include "ui/PublishMethod.h"
#include "ui/WindowLayout.h"

namespace clipwave {

class Controller {
 public:
  // Installs the initial values of the user defaults. Everything passed in outlives the controller.
  Controller(const ApplicationServices& services, lanternAppDelegate& delegate, MainInterface& interface);
  // Stops observing.
  ~Controller();
  Controller(const Controller&) = delete;
  Controller& operator=(const Controller&) = delete;

  // The whole start-up of the window, once its interface is there.
  void awakeFromNib();
  // What a process without a window needs of it: the tables, the sort orders, the fetch, and what comes of
  // recordings. No update check, and no first channel for an empty library.
  void awakeWithoutWindow();

  void observeValueForKeyPath(std::string_view keyPath);
  WindowController& aboutWindowController();
  void showAboutWindow();

  ArrayController& channelController() { return interface_.channelController; }
  ArrayController& vodcastController() { return interface_.vodcastController; }
  ArrayController& imageController() { return interface_.imageController; }
  MainInterface& interface() { return interface_; }
  FeedPreparation& feedPreparation() { return feedPreparation_; }
  PublishRun& publishRun() { return publishRun_; }
  SubscriptionHandOff& subscriptionHandOff() { return subscriptionHandOff_; }
  FeedImport& feedImport() { return feedImport_; }
  EpisodeListEditing& episodeListEditing() { return episodeListEditing_; }
  ChannelListEditing& channelListEditing() { return channelListEditing_; }
  RecordHandOff& recordHandOff() { return recordHandOff_; }
  WindowLayout& windowLayout() { return windowLayout_; }
  PublishMethod& publishMethod() { return publishMethod_; }
  const LanguageDataSource& languageDataSource() const { return languageDataSource_; }
  const FeedMappings& vodcastMappings() const { return vodcastMappings_; }
  const FeedMappings& channelMappings() const { return channelMappings_; }
  const MovieTypes& types() const { return types_; }
  FeedTables feedTables() const { return {languageDataSource_, types_}; }
  bool addedNewChannel() const { return addedNewChannel_; }

 private:
  void installInitialDefaults();
  void observeNotifications();
  void observeRecordingStarts();
  void observeChannelSelection();
  void loadMappings();
  void registerForDrags();
  void setSortOrders();
  void startUpdateCheck();
  void loadMovieTypes();
  void scrollOptionsToTop();
  void observeNewMovies();
  void fetchChannels();
  void addFirstChannel();
  std::shared_ptr<CopyBackEnd> makeBackEnd(int protocolTag);

  ApplicationServices services_;
  lanternAppDelegate& delegate_;
  MainInterface& interface_;
  bool addedNewChannel_ = false;
  LanguageDataSource languageDataSource_;
  FeedMappings vodcastMappings_;
  FeedMappings channelMappings_;
  MovieTypes types_;
  FeedPreparation feedPreparation_;
  PublishRun publishRun_;
  SubscriptionHandOff subscriptionHandOff_;
  FeedImport feedImport_;
  EpisodeListEditing episodeListEditing_;
  ChannelListEditing channelListEditing_;
  WindowLayout windowLayout_;
  PublishMethod publishMethod_;
  CaptureSettings captureSettings_;
  RecordHandOff recordHandOff_;
  std::unique_ptr<UpdateCheck> updateCheck_;
  std::unique_ptr<WindowController> aboutWindowController_;
  std::vector<Observation> observations_;
};

}  // namespace clipwave
