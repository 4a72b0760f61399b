// Adding and removing whole channels, and filling one from the Open panel.
#pragma once

#include <functional>
#include <string>

#include "platform/appkit/Application.h"
#include "platform/appkit/ArrayController.h"
#include "platform/appkit/TableView.h"
#include "ui/EpisodeListEditing.h"

namespace clipwave {

class ChannelListEditing {
 public:
  // Everything passed in outlives this object.
  ChannelListEditing(Application& application, Window& mainWindow, TableView& vcastTableView,
                     ArrayController& channelController, EpisodeListEditing& episodeListEditing);

  // A new channel, selected alone. The keyboard focus stays where it is.
  void addChannel();
  // Asks once, then removes the selected channels with their episodes as one undo step; the movie files stay.
  // Beeps where none is selected.
  void removeSelectedChannels();
  // Asks for movies in an Open panel on the main window, and opens them as if the desktop had.
  void openMovies();
  // Shows the Open panel as a sheet on the main window; the movies chosen there come into the list as if they
  // were dropped on it.
  void addEpisodes();

 private:
  std::string removalQuestion() const;
  void chooseMovies(std::string message, std::function<void(const OpenPanelAnswer&)> taken);
  void dropOnEpisodeList(const OpenPanelAnswer& filenames);

  Application& application_;
  Window& mainWindow_;
  TableView& vcastTableView_;
  ArrayController& channelController_;
  EpisodeListEditing& episodeListEditing_;
};

}  // namespace clipwave
