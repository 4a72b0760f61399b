// The record sheet: the capture view, the movie's name, and what is told beside the picture.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/appkit/InterfaceLoader.h"
#include "record/MenuButton.h"
#include "record/Recorder.h"

namespace clipwave {

// A key as the window got it, when nothing in the window took it first.
struct KeyPress {
  char32_t character = 0;  // without modifiers; a lower-case letter
  bool hasModifiers = false;
};

class RecordWindowController final : public WindowController {
 public:
  explicit RecordWindowController(const Recorder::Services& services);
  ~RecordWindowController() override;

  Recorder& recorder() { return recorder_; }
  // The movie's name, without its folder and without an extension.
  TextField& filenameTextField() { return filenameTextField_; }
  // The recorder's own record button: enabled only while the name in the field is usable.
  Button& startButton() { return recorder_.recordButton; }
  // The options menu pops up from it.
  MenuButton& optionsButton() { return optionsButton_; }
  // What is told beside the picture: how long the recording is ("0:04"), what the disk has room for
  // ("12.4 GB free, about 16 hours"), how loud the sound is, and what keeps the name from being used
  // ("Interview exists already").
  TextField& elapsedTimeTextField() { return elapsedTimeTextField_; }
  TextField& freeSpaceTextField() { return freeSpaceTextField_; }
  LevelIndicator& soundLevelIndicator() { return soundLevelIndicator_; }
  TextField& nameHintTextField() { return nameHintTextField_; }

  // Proposes a free path for the next recording, as name in the field and as the recorder's filename.
  void proposePath(std::string_view path);
  void closeRecordSheet();
  void keyDown(const KeyPress& key);
  // The field's text was changed by the user. Called by itself on each edit.
  void controlTextDidChange();

 private:
  void addMenuItems();
  void refreshStatus();
  void showNameHint(const std::string& hint);
  void refreshFreeSpace();

  Recorder::Services services_;
  Recorder recorder_;
  TextField filenameTextField_;
  std::string checkedName_;  // what the field said last
  std::string nameHint_;
  Menu optionsMenu_;
  MenuButton optionsButton_;
  MenuItem fullSizeItem_{"goFullSize:"};
  MenuItem halfSizeItem_{"goHalfSize:"};
  MenuItem quarterSizeItem_{"goQuarterSize:"};
  MenuItem otherSizeItem_{"showSizePanel:"};
  MenuItem videoSettingsItem_{"showVideoSettings:"};
  MenuItem soundSettingsItem_{"showSoundSettings:"};
  MenuItem creditItem_{"_runPanel:"};
  TextField elapsedTimeTextField_;
  TextField freeSpaceTextField_;
  LevelIndicator soundLevelIndicator_;
  TextField nameHintTextField_;
  std::optional<double> freeSpaceShownAt_;
  Observation nameObservation_;
  Observation pictureObservation_;
};

}  // namespace clipwave
