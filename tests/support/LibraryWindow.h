// The two lists of the main window over a scratch library, with everything that edits them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "model/EpisodeFromFile.h"
#include "tests/support/FakeApplicationShell.h"
#include "tests/support/FakeLibraryHost.h"
#include "tests/support/FakeWorkspace.h"
#include "ui/CustomArrayController.h"
#include "ui/CustomTableView.h"
#include "ui/EpisodeListEditing.h"
#include "ui/MainWindow.h"

namespace clipwave::testing {

struct LibraryWindow {
  FakeLibraryHost host;
  FakeApplicationShell shell;
  Application application{*host.loop, shell};
  FakeWorkspace workspace;
  std::map<std::string, std::string, std::less<>> types = {{"mov", "video/quicktime"}, {"mp4", "video/mp4"}};

  ArrayController channels{std::string(kChannelEntity)};
  CustomArrayController episodes{application, host.fileManager, host.processInfo};
  ArrayController images{std::string(kImageEntity)};
  MainWindow mainWindow;
  Window prefWindow;
  Window imageWindow;
  CustomTableView episodeTable{application};
  TableView channelTable;
  MovieView preview;
  EpisodeListEditing editing{
      {application, host.fileManager, workspace, host.userDefaults, types},
      {mainWindow, episodeTable, channelTable, preview, prefWindow, imageWindow, episodes, channels, images}};

  LibraryWindow() {
    host.channelList = &channels;
    channels.setSortDescriptors({{"vcTitle", true}});
    episodes.setSortDescriptors({{"vcPublishDate", false}});
    for (ArrayController* list : {&channels, static_cast<ArrayController*>(&episodes), &images}) {
      list->setManagedObjectContext(host.context.get());
    }
    episodes.bindContentToSelectionOf(channels, "children");
    episodeTable.bind("content", &episodes, "arrangedObjects");
    channelTable.bind("content", &channels, "arrangedObjects");
    for (TableView* table : {static_cast<TableView*>(&episodeTable), &channelTable}) {
      table->registerForDraggedTypes({std::string(NSFilenamesPboardType)});
      table->setDelegate(&editing);
    }
  }

  // A channel in the list, selected alone.
  ManagedObject& addChannel(std::string_view title) {
    ManagedObject& channel = *channels.newObject();
    channel.setValue("vcTitle", title);
    channels.addObject(channel);
    host.turn();
    return channel;
  }
  // An episode at the top of the list, selected alone; a file of that name is its movie.
  ManagedObject& addEpisode(std::string_view fileName) {
    return *addEpisodeFromFile(episodes, "", host.makeFile(fileName, 2048, 5));
  }
  // The titles of the listed records.
  static std::vector<std::string> titles(const ArrayController& list) {
    std::vector<std::string> titles;
    for (ManagedObject* record : list.arrangedObjects()) {
      titles.emplace_back(record->value("vcTitle").stringValue());
    }
    return titles;
  }
};

inline DraggingInfo dragOfFiles(const std::vector<std::string>& paths) {
  DraggingInfo info;
  info.draggingPasteboard.setPropertyList(Array(paths.begin(), paths.end()), NSFilenamesPboardType);
  return info;
}

}  // namespace clipwave::testing
