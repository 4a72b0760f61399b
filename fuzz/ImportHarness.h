// An empty library with the lists and the services that a feed is imported with.
#pragma once

#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "fuzz/MemoryLibrary.h"
#include "fuzz/Records.h"
#include "platform/appkit/ArrayController.h"
#include "publish/FeedDocument.h"
#include "publish/FeedImport.h"
#include "tests/support/FakeURLLoading.h"

namespace clipwave::fuzz {

// The tables of the application, read once for all inputs.
class ImportTables {
 public:
  ImportTables() {
    require(!channelMappings.empty() && !vodcastMappings.empty(), "the application's tables are there");
  }
  static const ImportTables& shared() {
    static const ImportTables kTables;
    return kTables;
  }

 private:
  static MemoryFiles resources() {
    MemoryFiles files;
    for (const char* name : {"/channelmappings.plist", "/vcmappings.plist", "/languages.plist"}) {
      std::ifstream in(std::string(CLIPWAVE_RESOURCES) + name, std::ios::binary);
      files.contents[name] = {std::istreambuf_iterator<char>(in), {}};
    }
    return files;
  }
  MemoryFiles files_ = resources();
  Bundle bundle_{files_, "/"};

 public:
  const LanguageDataSource languages{bundle_};
  const FeedMappings channelMappings = feedMappingsFromResource(bundle_, "channelmappings");
  const FeedMappings vodcastMappings = feedMappingsFromResource(bundle_, "vcmappings");
  const MovieTypes types{{"mov", "video/quicktime"}, {"m4v", "video/x-m4v"}, {"mp3", "audio/mpeg"}};
};

// Counts the alerts and answers each with its default button.
class CountingShell final : public ApplicationShell {
 public:
  int alerts = 0;

  Alert::Answer runAlert(Alert&) override {
    ++alerts;
    return Alert::Answer::Default;
  }
  OpenPanelAnswer runOpenPanel(const OpenPanel&) override { return {}; }
  void beginAlertSheet(Alert, Window&, std::function<void(Alert::Answer)>) override { ++alerts; }
  void beginOpenPanelSheet(OpenPanel, Window&, std::function<void(OpenPanelAnswer)>) override {}
  void beep() override {}
  void exitProcess(int) override { require(false, "an import does not end the process"); }
};

class ImportHarness {
 public:
  explicit ImportHarness(std::string_view storeName = "Clipwave.xml") : library_(storeName) {
    vodcasts_.bindContentToSelectionOf(channels_, "children");
    channels_.setSortDescriptors({{"vcTitle", true}});
    vodcasts_.setSortDescriptors({{"vcPublishDate", false}});
    for (ArrayController* list : {&channels_, &vodcasts_, &images_})
      list->setManagedObjectContext(context_.get());
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
  int alerts() const { return shell_.alerts; }
  ManagedObjectContext& context() { return *context_; }
  FeedTables tables() const { return {ImportTables::shared().languages, ImportTables::shared().types}; }

  // What the library reads as when it was saved, closed and opened. The lists are of no use any more.
  std::string reopenedAfterSaving() {
    const Result<void> saved = context_->save();
    require(saved.ok(), "the library can be saved", {saved ? "" : saved.error().localizedDescription});
    for (ArrayController* list : {&vodcasts_, &channels_, &images_}) list->setManagedObjectContext(nullptr);
    library_.channelList = nullptr;
    context_.reset();
    context_ = library_.openContext();
    return readValues(*context_);
  }

 private:
  MemoryLibrary library_;
  std::unique_ptr<ManagedObjectContext> context_ = library_.openContext();
  CountingShell shell_;
  Application application_{library_.runLoop(), shell_};
  testing::FakeURLLoading urls_;
  ArrayController channels_{std::string(kChannelEntity)};
  ArrayController vodcasts_{std::string(kVodcastEntity)};
  ArrayController images_{std::string(kImageEntity)};
  Window mainWindow_;
  Window feedWindow_;
  TextField urlBox_;
  FeedImport feedImport_{
      {application_, library_.log(), urls_, channels_, vodcasts_, images_, ImportTables::shared().languages,
       ImportTables::shared().channelMappings, ImportTables::shared().vodcastMappings},
      {mainWindow_, feedWindow_, urlBox_}};
};

}  // namespace clipwave::fuzz
