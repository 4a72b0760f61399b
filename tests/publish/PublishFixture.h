// A library in a folder of its own, and what makes its feeds.
#pragma once

#include <gmock/gmock.h>

#include "platform/foundation/PropertyList.h"
#include "publish/FeedPreparation.h"
#include "tests/support/FakeApplicationShell.h"
#include "tests/support/FakeLibraryHost.h"

namespace clipwave {

class PublishTest : public ::testing::Test {
 protected:
  PublishTest() { channels.setManagedObjectContext(host.context.get()); }

  Channel& addChannel(const std::string& title) {
    auto& channel = static_cast<Channel&>(*channels.add());
    channel.setValue("vcTitle", title);
    channel.setValue("filename", title + ".xml");
    channel.setValue("vcURL", "http://host/" + title);
    channel.setValue("mediaPath", folder / title);
    channel.setValue("protocolTag", 1);
    return channel;
  }
  // What a new episode gets by itself is taken away again.
  Vodcast& addEpisode(Channel& channel, const Value& path = {}) {
    Vodcast& episode = host.newEpisode(channel);
    for (const char* key : {"vcPublishDate", "vcAuthor"}) episode.setValue(key, Value());
    if (!path.isNull()) episode.setValue("vcPath", path);
    return episode;
  }

  testing::EnvironmentVariable zone{"TZ", "America/Los_Angeles"};
  testing::FakeLibraryHost host;
  testing::TemporaryFolder& folder = host.folder;
  testing::FakeApplicationShell shell;
  Application application{host.runLoop(), shell};
  RecordingLog log;
  ArrayController channels{std::string(kChannelEntity)};
  std::string languages = folder.write("languages.plist", dataFromPropertyList(Dictionary{{"German", "de"}}));
  LanguageDataSource languageDataSource{Bundle(host.files(), folder.path())};
  MovieTypes types{{"mov", "video/quicktime"}};
  FeedTables tables{languageDataSource, types};
  FeedPreparation preparation{{application, host.files(), log, channels, tables, folder / "xmlFile.XXXXXX"}};
};

}  // namespace clipwave
