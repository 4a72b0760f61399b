#include "ui/ChannelListEditing.h"

#include "model/LibraryModel.h"

namespace clipwave {

ChannelListEditing::ChannelListEditing(Application& application, Window& mainWindow,
                                       TableView& vcastTableView, ArrayController& channelController,
                                       EpisodeListEditing& episodeListEditing)
    : application_(application),
      mainWindow_(mainWindow),
      vcastTableView_(vcastTableView),
      channelController_(channelController),
      episodeListEditing_(episodeListEditing) {}

void ChannelListEditing::addChannel() {
  if (channelController_.add() != nullptr) channelController_.setUndoActionName("New Channel");
}

std::string ChannelListEditing::removalQuestion() const {
  const auto channels = channelController_.selectedObjects();
  std::size_t episodes = 0;
  for (const ManagedObject* channel : channels) episodes += channel->relatedObjects("children").size();

  const bool single = channels.size() == 1;
  std::string question = "Delete " + std::to_string(channels.size()) + " channels";
  if (single) {
    const std::string_view title = channels.front()->primitiveValue("vcTitle").stringValue();
    question = title.empty() ? "Delete the channel without a title"
                             : "Delete the channel “" + std::string(title) + "”";
  }
  if (episodes > 0) {
    question += single ? " and its " : " and their ";
    question += std::to_string(episodes) + (episodes == 1 ? " episode" : " episodes");
  }
  return question + "?";
}

void ChannelListEditing::removeSelectedChannels() {
  const IndexSet indexes = channelController_.selectionIndexes();
  if (indexes.empty()) {
    application_.beep();
    return;
  }
  const auto answer = application_.runCriticalAlertPanel(
      removalQuestion(), "The movie files stay where they are.", "Delete", "Cancel");
  if (answer != Alert::Answer::Default) return;
  ManagedObjectContext* const context = channelController_.managedObjectContext();
  if (context == nullptr) return;
  UndoManager& undoManager = context->undoManager();
  undoManager.beginUndoGrouping();
  channelController_.removeObjectsAtArrangedObjectIndexes(indexes);
  undoManager.setActionName(indexes.size() == 1 ? "Delete Channel" : "Delete Channels");
  undoManager.endUndoGrouping();
}

void ChannelListEditing::openMovies() {
  chooseMovies("Each movie becomes an episode of a new channel.", [this](const OpenPanelAnswer& filenames) {
    if (application_.delegate() != nullptr) application_.delegate()->openFiles(filenames);
  });
}

void ChannelListEditing::addEpisodes() {
  chooseMovies("", [this](const OpenPanelAnswer& filenames) { dropOnEpisodeList(filenames); });
}

void ChannelListEditing::chooseMovies(std::string message,
                                      std::function<void(const OpenPanelAnswer&)> taken) {
  OpenPanel panel;
  panel.allowsMultipleSelection = true;
  panel.message = std::move(message);
  panel.allowedTypes = episodeListEditing_.movieFileTypes();
  application_.beginOpenPanelSheet(panel, mainWindow_,
                                   [taken = std::move(taken)](const OpenPanelAnswer& filenames) {
                                     if (!filenames.empty()) taken(filenames);
                                   });
}

void ChannelListEditing::dropOnEpisodeList(const OpenPanelAnswer& filenames) {
  DraggingInfo info;
  info.draggingPasteboard.setPropertyList(Array(filenames.begin(), filenames.end()), NSFilenamesPboardType);
  const auto top = TableDropOperation::Above;
  // A name can be typed into the panel that its list of types would not have offered.
  if (episodeListEditing_.validateDrop(vcastTableView_, info, 0, top) == NSDragOperationNone) {
    application_.beep();
    return;
  }
  vcastTableView_.draggingExited();
  episodeListEditing_.acceptDrop(vcastTableView_, info, 0, top);
}

}  // namespace clipwave
