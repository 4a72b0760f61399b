// The names in the interface files of the record sheet and of its settings dialogue.
#pragma once

#include "desktop/InterfaceNames.h"
#include "record/CaptureSettings.h"
#include "record/RecordWindowController.h"

namespace clipwave {

// What is made of the names must not outlive what they name.
InterfaceNames namesOfRecordSheet(RecordWindowController& controller);
InterfaceNames namesOfCaptureSettings(CaptureSettings::WindowParts& parts);

}  // namespace clipwave
