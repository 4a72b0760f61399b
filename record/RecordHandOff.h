// The main window's share of a recording: opens the record sheet, and makes an episode of the movie.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/appkit/ArrayController.h"
#include "platform/foundation/ProcessInfo.h"
#include "platform/foundation/UserDefaultsController.h"
#include "record/RecordWindowController.h"

namespace clipwave {

class RecordHandOff {
 public:
  // All of it outlives this object.
  struct Services {
    Recorder::Services recorder;
    ProcessInfo& process;
    UserDefaultsController& defaults;
    InterfaceLoader& interfaces;
  };
  struct Elements {
    Window& mainWindow;
    TextField& titleTextField;
    ArrayController& channelController;
    ArrayController& vodcastController;
  };
  RecordHandOff(Services services, Elements elements);
  ~RecordHandOff();

  // Opens the record sheet for the selected channel; beeps where none is selected or a sheet is open already.
  void recordMovie();
  // The open record sheet's, made where there is none.
  RecordWindowController& recordWindowController();
  // Whether there is one.
  bool isOpen() const { return recordWindowController_ != nullptr; }
  // Before the program quits: a recording that goes on is stopped and becomes an episode; the sheet is
  // closed.
  void endRecording();
  void sheetDidEnd(int returnCode);
  void recordingStarted(const Notification& notification);
  // Makes an episode of the movie under the notification's path, at the top of the selected channel; a new
  // channel where none is selected.
  void newMovie(const Notification& notification);

 private:
  std::string freePath(const std::string& folder);
  void giveUp();
  void discard();
  void proposeNextPath();

  Services services_;
  Elements elements_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>();
  std::unique_ptr<RecordWindowController> recordWindowController_;
  std::vector<std::unique_ptr<RecordWindowController>> retired_;
  Observation brokenOff_;
};

}  // namespace clipwave
