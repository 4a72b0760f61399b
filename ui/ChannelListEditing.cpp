#include "ui/ChannelListEditing.h"

#include "model/LibraryModel.h"
#include "platform/foundation/Localization.h"

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
  if (channelController_.add() != nullptr)
    channelController_.setUndoActionName(localized("Undo", "New Channel"));
}

std::string ChannelListEditing::removalQuestion() const {
  const auto channels = channelController_.selectedObjects();
  int episodes = 0;
  for (const ManagedObject* channel : channels)
    episodes += static_cast<int>(channel->relatedObjects("children").size());

  const std::string withEpisodes =
      episodes == 0 ? "" : localizedCount("Editing", "%n episodes", "%n episode", episodes);
  if (channels.size() != 1) {
    const int count = static_cast<int>(channels.size());
    return episodes == 0 ? localizedCount("Editing", "Delete %n channels?", "Delete %n channel?", count)
                         : filledIn(localizedCount("Editing", "Delete %n channels and their %1?",
                                                   "Delete %n channel and its %1?", count),
                                    {withEpisodes});
  }
  const std::string_view title = channels.front()->primitiveValue("vcTitle").stringValue();
  if (title.empty())
    return episodes == 0 ? localized("Editing", "Delete the channel without a title?")
                         : filledIn(localized("Editing", "Delete the channel without a title and its %1?"),
                                    {withEpisodes});
  return episodes == 0
             ? filledIn(localized("Editing", "Delete the channel “%1”?"), {title})
             : filledIn(localized("Editing", "Delete the channel “%1” and its %2?"), {title, withEpisodes});
}

void ChannelListEditing::removeSelectedChannels() {
  const IndexSet indexes = channelController_.selectionIndexes();
  if (indexes.empty()) {
    application_.beep();
    return;
  }
  const auto answer = application_.runCriticalAlertPanel(
      removalQuestion(), localized("Editing", "The movie files stay where they are."),
      localized("Editing", "Delete"), localized("Alerts", "Cancel"));
  if (answer != Alert::Answer::Default) return;
  ManagedObjectContext* const context = channelController_.managedObjectContext();
  if (context == nullptr) return;
  UndoManager& undoManager = context->undoManager();
  undoManager.beginUndoGrouping();
  channelController_.removeObjectsAtArrangedObjectIndexes(indexes);
  undoManager.setActionName(indexes.size() == 1 ? localized("Undo", "Delete Channel")
                                                : localized("Undo", "Delete Channels"));
  undoManager.endUndoGrouping();
}

void ChannelListEditing::openMovies() {
  chooseMovies(localized("Editing", "Each movie becomes an episode of a new channel."),
               [this](const OpenPanelAnswer& filenames) {
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
