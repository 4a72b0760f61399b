// An empty library with the lists and the services that a feed is imported with.
#pragma once

#include <memory>
#include <string>

#include "fuzz/MemoryLibrary.h"
#include "fuzz/Records.h"
#include "publish/FeedDocument.h"
#include "publish/FeedImport.h"
#include "tests/support/FakeApplicationShell.h"
#include "tests/support/FakeURLLoading.h"

namespace clipwave::fuzz {

// The tables of the application, read once for all inputs.
struct ImportTables {
  std::unique_ptr<FileManager> files = makeFileManager();
  Bundle bundle{*files, CLIPWAVE_RESOURCES};
  LanguageDataSource languages{bundle};
  FeedMappings channelMappings = feedMappingsFromResource(bundle, "channelmappings");
  FeedMappings vodcastMappings = feedMappingsFromResource(bundle, "vcmappings");
  MovieTypes types{{"mov", "video/quicktime"}, {"m4v", "video/x-m4v"}, {"mp3", "audio/mpeg"}};
};

inline const ImportTables& importTables() {
  static const ImportTables kTables;
  return kTables;
}

class ImportHarness {
 public:
  ImportHarness() {
    require(!importTables().vodcastMappings.empty(), "the application's tables are there");
    vodcasts_.bindContentToSelectionOf(channels_, "children");
    channels_.setSortDescriptors({{"vcTitle", true}});
    vodcasts_.setSortDescriptors({{"vcPublishDate", false}});
    for (ArrayController* list : {&channels_, &vodcasts_, &images_})
      list->setManagedObjectContext(library_.context.get());
    channels_.fetch();
    library_.channelList = &channels_;
  }

  // The channel with what the pass after its insertion brings, or null.
  Channel* import(std::string_view bytes, const std::string& charset) {
    urls_.data = bytes;
    urls_.charset = charset;
    Channel* const channel = feedImport_.importRSSWithURL("http://podcasts.clipwave.example/feed.xml");
    library_.turn();
    return channel;
  }
  std::size_t alerts() const { return shell_.alerts.size(); }
  ManagedObjectContext& context() { return *library_.context; }
  FeedTables tables() const { return {importTables().languages, importTables().types}; }

  // What the library reads as when it was saved, closed and opened. The lists are of no use any more.
  std::string reopenedAfterSaving() {
    for (ArrayController* list : {&vodcasts_, &channels_, &images_}) list->setManagedObjectContext(nullptr);
    library_.channelList = nullptr;
    library_.saveAndReopen();
    return readValues(context());
  }

 private:
  MemoryLibrary library_;
  testing::FakeApplicationShell shell_;
  Application application_{*library_.loop, shell_};
  testing::FakeURLLoading urls_;
  ArrayController channels_{std::string(kChannelEntity)};
  ArrayController vodcasts_{std::string(kVodcastEntity)};
  ArrayController images_{std::string(kImageEntity)};
  Window mainWindow_;
  Window feedWindow_;
  TextField urlBox_;
  FeedImport feedImport_{
      {application_, library_.lines, urls_, channels_, vodcasts_, images_, importTables().languages,
       importTables().channelMappings, importTables().vodcastMappings},
      {mainWindow_, feedWindow_, urlBox_}};
};

}  // namespace clipwave::fuzz
