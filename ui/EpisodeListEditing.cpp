#include "ui/EpisodeListEditing.h"

#include <algorithm>

#include "model/EpisodeFromFile.h"
#include "model/LibraryModel.h"
#include "platform/foundation/Localization.h"

namespace clipwave {

namespace {

constexpr std::string_view kQuickTimeFileType = "'MooV'";
constexpr std::string_view kMoviePlayer = "QuickTime Player";

// In the order in which a movie is cleared: what a later key would compute anew has lost its source by then.
constexpr std::string_view kMovieKeys[] = {"alias",           "vcPath",        "movie",           "movieInfo",
                                           "mediaSizeString", "mediaSizeUnit", "mediaTimeString", "size"};

}  // namespace

EpisodeListEditing::EpisodeListEditing(Services services, Elements elements)
    : services_(services), elements_(elements) {
  // Drops, deletions and undo select other episodes without asking the table's delegate.
  episodeSelection_ =
      elements_.vodcastController.observeSelectedObjects([this] { elements_.previewPane.pause(); });
}

bool EpisodeListEditing::isMovieFile(std::string_view path) const {
  if (services_.types.contains(pathExtension(path))) return true;
  return HFSTypeOfFile(services_.files, path) == kQuickTimeFileType;
}

std::vector<std::string> EpisodeListEditing::movieFileTypes() const {
  std::vector<std::string> types;
  for (const auto& [extension, mimeType] : services_.types) types.push_back(extension);
  types.emplace_back(kQuickTimeFileType);
  return types;
}

void EpisodeListEditing::addMovie() {
  elements_.previewPane.pause();
  OpenPanel panel;
  panel.allowedTypes = movieFileTypes();
  services_.application.beginOpenPanelSheet(
      panel, elements_.mainWindow,
      [this](const OpenPanelAnswer& filenames) { addMovieSheetEnded(filenames); });
}

void EpisodeListEditing::addMovieSheetEnded(const std::vector<std::string>& filenames) {
  if (filenames.empty()) return;
  clearMovie();
  elements_.vodcastController.selection().setValue("vcPath", filenames.front());
  elements_.vodcastController.setUndoActionName(localized("Undo", "Choose Movie"));
}

void EpisodeListEditing::clearMovie() {
  elements_.previewPane.pause();
  Selection selection = elements_.vodcastController.selection();
  for (const std::string_view key : kMovieKeys) selection.setValue(key, {});
  elements_.vodcastController.setUndoActionName(localized("Undo", "Clear Movie"));
}

void EpisodeListEditing::toggleSelected(ArrayController& controller, std::string_view key) {
  controller.selection().changeValues(key, [](const Value& value) { return !value.boolValue(); });
  controller.setUndoActionName(key == "vcCopy" ? localized("Undo", "Change of Copy")
                                               : localized("Undo", "Change of Publish"));
}

void EpisodeListEditing::toggleSelectedOnCopyVodcasts() {
  toggleSelected(elements_.vodcastController, "vcCopy");
}

void EpisodeListEditing::toggleSelectedOnPublishVodcasts() {
  toggleSelected(elements_.vodcastController, "vcPublish");
}

void EpisodeListEditing::toggleSelectedOnPublishChannel() {
  toggleSelected(elements_.channelController, "vcPublish");
}

void EpisodeListEditing::editImageProps() {
  services_.application.beginSheet(elements_.editImagePropsWindow, elements_.mainWindow,
                                   [this](int returnCode) { editImagePropsSheetDidEnd(returnCode); });
}

void EpisodeListEditing::editImagePropsSheetDidEnd(int /*returnCode*/) {
  elements_.editImagePropsWindow.orderOut();
}

void EpisodeListEditing::closeEditImagePropsSheet() {
  services_.application.endSheet(elements_.editImagePropsWindow);
}

void EpisodeListEditing::revertImageChanges() {
  elements_.imageController.discardEditing();
}

std::optional<std::vector<ManagedObject*>> EpisodeListEditing::imageObjectForKey(std::string_view key) {
  ManagedObjectContext* context = elements_.imageController.managedObjectContext();
  if (context == nullptr) return std::nullopt;
  auto found = context->executeFetchRequest({std::string(kImageEntity), "title", key});
  if (!found) return std::nullopt;
  return std::move(*found);
}

void EpisodeListEditing::showPrefs() {
  services_.application.runModalForWindow(elements_.prefWindow);
}

void EpisodeListEditing::dismissPrefs() {
  services_.application.stopModal();
  elements_.prefWindow.orderOut();
}

void EpisodeListEditing::openMediaInQuicktime() {
  const Value path = elements_.vodcastController.selection().value("vcPath");
  if (!path.isString() || path.stringValue().empty()) return;
  services_.workspace.openFileWithApplication(path.stringValue(), kMoviePlayer);
}

bool EpisodeListEditing::selectionShouldChangeInTableView(TableView&) {
  elements_.previewPane.pause();
  return true;
}

unsigned EpisodeListEditing::validateDrop(TableView& tableView, const DraggingInfo& info, int /*proposedRow*/,
                                          TableDropOperation /*proposedDropOperation*/) {
  const Value filenames = info.draggingPasteboard.propertyListForType(NSFilenamesPboardType);
  const Array& paths = filenames.arrayValue();
  if (!std::all_of(paths.begin(), paths.end(),
                   [&](const Value& path) { return isMovieFile(path.stringValue()); })) {
    return NSDragOperationNone;
  }
  if (&tableView != &elements_.vcastTableView) return NSDragOperationEvery;
  tableView.setDropRow(0, TableDropOperation::Above);
  return NSDragOperationMove;
}

bool EpisodeListEditing::acceptDrop(TableView& tableView, const DraggingInfo& info, int row,
                                    TableDropOperation operation) {
  row = std::max(row, 0);
  const std::string prefix = services_.defaults.string("defaultPodcastPrefix");
  if ((info.draggingSourceOperationMask & NSDragOperationLink) == 0) return false;
  if (!info.draggingPasteboard.hasType(NSFilenamesPboardType)) return false;
  if (!chooseChannelForDrop(tableView, row, operation)) return false;

  ArrayController& episodes = elements_.vodcastController;
  const Value filenames = info.draggingPasteboard.propertyListForType(NSFilenamesPboardType);
  for (const Value& filename : filenames.arrayValue()) {
    const std::string_view path = filename.stringValue();
    Vodcast* episode = addEpisodeFromFile(episodes, prefix, path);
    if (episode == nullptr) return false;
    const auto attributes = services_.files.fileAttributesAtPath(path, true);
    if (attributes) episode->setValue("vcPublishDate", attributes->modificationDate);
  }
  episodes.setUndoActionName(localized("Undo", "Add Episodes"));
  episodes.setSelectionIndexes({});
  episodes.setSelectionIndex(static_cast<std::size_t>(row));
  return true;
}

bool EpisodeListEditing::chooseChannelForDrop(TableView& tableView, int row, TableDropOperation operation) {
  ArrayController& channels = elements_.channelController;
  const bool isChannelTable = &tableView == &elements_.channelTableView;
  if (isChannelTable && operation == TableDropOperation::On) {
    const auto index = static_cast<std::size_t>(row);
    return index < channels.arrangedObjects().size() && channels.setSelectionIndex(index);
  }
  if (channels.selectionIndexes().empty() || isChannelTable) {
    // Asked first and once: a refused edit keeps the selection, and the new channel would stay empty.
    ManagedObjectContext* context = channels.managedObjectContext();
    if (context == nullptr || !context->commitEditing()) return false;
    ManagedObject* channel = channels.newObject();
    if (channel == nullptr) return false;
    channels.addObject(*channel);
    return channels.setSelectedObjects({channel});
  }
  // With several channels selected the episode list belongs to none of them; the first one takes the files.
  if (channels.selectionIndexes().size() > 1) return channels.setSelectionIndex(*channels.selectionIndex());
  return true;
}

}  // namespace clipwave
