#include "record/RecordHandOff.h"

#include "model/Channel.h"
#include "model/EpisodeFromFile.h"
#include "platform/foundation/Localization.h"
#include "transfer/CreateDirectoriesCatagory.h"

namespace clipwave {

RecordHandOff::RecordHandOff(Services services, Elements elements)
    : services_(services), elements_(elements) {
  brokenOff_ = services_.recorder.notifications.observe(kRecordingBrokenOff,
                                                        [this](const Notification&) { proposeNextPath(); });
}

RecordHandOff::~RecordHandOff() = default;

RecordWindowController& RecordHandOff::recordWindowController() {
  if (!recordWindowController_) {
    recordWindowController_ = std::make_unique<RecordWindowController>(services_.recorder);
    services_.interfaces.loadWindow(*recordWindowController_);
  }
  return *recordWindowController_;
}

void RecordHandOff::recordMovie() {
  Application& application = services_.recorder.application;
  const auto channels = elements_.channelController.selectedObjects();
  if (recordWindowController_ || channels.empty()) return application.beep();
  RecordWindowController& sheet = recordWindowController();
  sheet.recorder().setup();
  if (!sheet.recorder().hasVideo()) {
    application.runAlertPanel(
        "No Camera Connected!",
        "There doesn't appear to be a camera connected. Please connect a camera, or try "
        "unplugging and plugging in your camera",
        "OK");
    return giveUp();
  }
  const std::string folder =
      channelMovieFolder(services_.process.homeDirectory(), channels.front()->value("vcTitle").stringValue());
  if (!createDirectoriesRecursivelyAtPath(services_.recorder.files, folder)) {
    application.runCriticalAlertPanel("File Creation Error!",
                                      "The folder " + folder +
                                          " could not be created.  Please check to make sure that Clipwave "
                                          "has permissions to write to these "
                                          "folders",
                                      "OK");
    return giveUp();
  }
  sheet.proposePath(freePath(folder));
  application.beginSheet(sheet.window(), elements_.mainWindow,
                         [this](int returnCode) { sheetDidEnd(returnCode); });
}

std::string RecordHandOff::freePath(const std::string& folder) {
  const std::string base = folder + "/Movie";
  for (int n = 1;; ++n) {
    std::string path = base + std::to_string(n) + ".mov";
    if (!services_.recorder.files.fileExistsAtPath(path)) return path;
  }
}

void RecordHandOff::giveUp() {
  // An alert may have brought the end of everything.
  if (!recordWindowController_) return;
  recordWindowController_->recorder().cleanup();
  discard();
}

// The sheet is let go of later: it is its own recorder that ends it.
void RecordHandOff::discard() {
  retired_.push_back(std::move(recordWindowController_));
  recordWindowController_.reset();
  services_.recorder.runLoop.performLater([this, alive = std::weak_ptr<bool>(alive_)] {
    if (!alive.expired()) retired_.clear();
  });
}

void RecordHandOff::sheetDidEnd(int /*returnCode*/) {
  if (!recordWindowController_) return;
  recordWindowController_->window().orderOut();
  discard();
}

void RecordHandOff::endRecording() {
  if (!recordWindowController_) return;
  Recorder& recorder = recordWindowController_->recorder();
  if (recorder.isRecording()) recorder.record();
  // A recording that could not be finished leaves its sheet open.
  if (recordWindowController_) recordWindowController_->closeRecordSheet();
}

void RecordHandOff::recordingStarted(const Notification& /*notification*/) {
  if (!recordWindowController_) return;
  TextField& name = recordWindowController_->filenameTextField();
  // What was typed is the recording's name by now.
  name.commitEditing();
  name.setEnabled(false);
}

void RecordHandOff::newMovie(const Notification& notification) {
  const std::string prefix = services_.defaults.string("defaultPodcastPrefix");
  ArrayController& channels = elements_.channelController;
  const auto selected = channels.selectedObjects();
  if (selected.empty()) channels.add();
  // The recording stands in the first one's folder.
  if (selected.size() > 1) channels.setSelectedObjects({selected.front()});
  const auto path = notification.userInfo.find(kRecordingPath);
  if (path == notification.userInfo.end()) return;
  addEpisodeFromFile(elements_.vodcastController, prefix, path->second.stringValue());
  channels.setUndoActionName(localized("Undo", "Record Movie"));
  elements_.mainWindow.makeFirstResponder(&elements_.titleTextField);
}

// The next recording leaves alone what there is of the last one.
void RecordHandOff::proposeNextPath() {
  if (!recordWindowController_) return;
  const std::string folder =
      stringByDeletingLastPathComponent(recordWindowController_->recorder().filename());
  recordWindowController_->proposePath(freePath(folder));
}

}  // namespace clipwave
