#include "desktop/RecordNames.h"

namespace clipwave {

InterfaceNames namesOfRecordSheet(RecordWindowController& controller) {
  Recorder& recorder = controller.recorder();
  InterfaceNames names;
  names.outlets = {{"recorder", static_cast<ImageView*>(&recorder)},
                   {"recordButton", &recorder.recordButton},
                   {"closeButton", &recorder.closeButton},
                   {"filenameTextField", &controller.filenameTextField()},
                   {"nameHintTextField", &controller.nameHintTextField()},
                   {"optionsButton", &controller.optionsButton()},
                   {"elapsedTimeTextField", &controller.elapsedTimeTextField()},
                   {"freeSpaceTextField", &controller.freeSpaceTextField()},
                   {"soundLevelIndicator", &controller.soundLevelIndicator()},
                   {"hSizeField", &recorder.hSizeField},
                   {"wSizeField", &recorder.wSizeField}};
  names.actions["record:"] = {[&recorder] { recorder.record(); },
                              [&controller] { return controller.startButton().isEnabled(); }};
  names.actions["closeRecordSheet:"] = {[&controller] { controller.closeRecordSheet(); },
                                        [&recorder] { return recorder.closeButton.isEnabled(); }};
  names.actions["sizePanelOKButtonPressed:"] = {[&recorder] { recorder.sizePanelOKButtonPressed(); }};
  names.actions["sizePanelCancelButtonPressed:"] = {
      [&recorder] { recorder.sizePanelCancelButtonPressed(); }, {}, true};
  return names;
}

InterfaceNames namesOfCaptureSettings(CaptureSettings::WindowParts& parts) {
  InterfaceNames names;
  names.outlets = {{"devicePopUp", &parts.devicePopUp}, {"volumeSlider", &parts.volumeSlider}};
  names.actions["ok:"] = {[&parts] { parts.okButton.performClick(); }};
  names.actions["cancel:"] = {[&parts] { parts.cancelButton.performClick(); }};
  return names;
}

}  // namespace clipwave
