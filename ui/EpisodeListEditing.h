// Direct editing of the two lists: drops, choosing and clearing movies, check boxes, artwork, opening movies.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/Application.h"
#include "platform/appkit/ArrayController.h"
#include "platform/appkit/MovieView.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/Workspace.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Observation.h"
#include "platform/foundation/UserDefaultsController.h"

namespace clipwave {

class EpisodeListEditing final : public TableView::Delegate {
 public:
  struct Services {
    Application& application;
    FileManager& files;
    Workspace& workspace;
    UserDefaultsController& defaults;
    // Movie file extension to MIME type; only the extensions matter here.
    const std::map<std::string, std::string, std::less<>>& types;
  };
  struct Elements {
    Window& mainWindow;
    TableView& vcastTableView;
    TableView& channelTableView;
    MovieView& previewPane;
    Window& prefWindow;
    Window& editImagePropsWindow;
    ArrayController& vodcastController;
    ArrayController& channelController;
    ArrayController& imageController;
  };
  EpisodeListEditing(Services services, Elements elements);

  void addMovie();
  void addMovieSheetEnded(const std::vector<std::string>& filenames);  // empty: anything but OK
  void clearMovie();
  void toggleSelectedOnCopyVodcasts();
  void toggleSelectedOnPublishVodcasts();
  void toggleSelectedOnPublishChannel();
  void editImageProps();
  void editImagePropsSheetDidEnd(int returnCode);
  void closeEditImagePropsSheet();
  void revertImageChanges();
  // The Image records whose title equals the key, or nothing when the fetch fails.
  std::optional<std::vector<ManagedObject*>> imageObjectForKey(std::string_view key);
  void showPrefs();
  void dismissPrefs();
  void openMediaInQuicktime();

  // Whether a file is a movie by its extension, or by its HFS type.
  bool isMovieFile(std::string_view path) const;
  // The Open panel's allowed types: every known extension, then "'MooV'".
  std::vector<std::string> movieFileTypes() const;

  bool selectionShouldChangeInTableView(TableView& tableView) override;
  unsigned validateDrop(TableView& tableView, const DraggingInfo& info, int proposedRow,
                        TableDropOperation proposedDropOperation) override;
  bool acceptDrop(TableView& tableView, const DraggingInfo& info, int row,
                  TableDropOperation operation) override;

 private:
  bool chooseChannelForDrop(TableView& tableView, int row, TableDropOperation operation);
  void toggleSelected(ArrayController& controller, std::string_view key);

  Services services_;
  Elements elements_;
  Observation episodeSelection_;
};

}  // namespace clipwave
