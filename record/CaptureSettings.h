// The settings dialogue of a capture channel: its device, and the volume of its sound.
#pragma once

#include <vector>

#include "platform/appkit/Application.h"
#include "platform/appkit/Controls.h"
#include "platform/appkit/InterfaceLoader.h"
#include "platform/quicktime/SequenceGrabber.h"

namespace clipwave {

// Sets the volume of a sound channel's record device; what lies outside 0 to 256 becomes the nearer of the
// two.
void setChannelVolume(SGChannel& channel, std::int16_t volume);

class CaptureSettings final : public SettingsDialog {
 public:
  // The elements of the window, from the interface file "CaptureSettings".
  class WindowParts final : public WindowController {
   public:
    WindowParts() : WindowController("CaptureSettings") {}
    ~WindowParts() override { dropInterface(); }
    PopUpButton devicePopUp;
    Slider volumeSlider{0, kFullVolume};  // hidden for a video channel
    Button okButton;
    Button cancelButton;
  };

  // Both outlive this object.
  CaptureSettings(Application& application, InterfaceLoader& interfaces)
      : application_(application), interfaces_(interfaces) {}

  // Runs application-modally; a device that cannot be had is told in an alert, and the channel keeps its own.
  OSStatus run(SGChannel& channel, Window* window) override;

 private:
  OSStatus take(SGChannel& channel, WindowParts& parts, const std::vector<CaptureDevice>& devices);

  Application& application_;
  InterfaceLoader& interfaces_;
};

}  // namespace clipwave
