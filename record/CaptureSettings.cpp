#include "record/CaptureSettings.h"

#include <algorithm>

#include "platform/foundation/Localization.h"

namespace clipwave {

void setChannelVolume(SGChannel& channel, std::int16_t volume) {
  const std::int16_t taken = std::clamp<std::int16_t>(volume, 0, kFullVolume);
  channel.setComponentProperty(kRecordDevicePropertyClass, kMasterGainProperty,
                               std::as_bytes(std::span(&taken, 1)));
}

OSStatus CaptureSettings::run(SGChannel& channel, Window* /*window*/) {
  WindowParts parts;
  const std::vector<CaptureDevice> devices = channel.devices();
  const std::string current = channel.device().identifier;
  std::vector<PopUpButton::Item> items;
  std::optional<int> selected;
  for (const CaptureDevice& device : devices) {
    const int tag = static_cast<int>(items.size());
    if (device.identifier == current) selected = tag;
    items.push_back({device.name, tag});
  }
  parts.devicePopUp.setItems(std::move(items));
  parts.devicePopUp.selectItemWithTag(selected);
  std::int16_t volume = kFullVolume;
  parts.volumeSlider.setHidden(channel.mediaType() != kAudioMediaType || channel.volume(volume) != noErr);
  parts.volumeSlider.setValue(volume);

  bool isAccepted = false;
  parts.okButton.setAction([&] {
    isAccepted = true;
    application_.stopModal();
  });
  parts.cancelButton.setAction([&] { application_.stopModal(); });
  interfaces_.loadWindow(parts);
  parts.window().setTitle(channel.mediaType() == kVideoMediaType ? localized("Recording", "Video settings")
                                                                 : localized("Recording", "Sound settings"));
  application_.runModalForWindow(parts.window());
  parts.window().orderOut();
  return isAccepted ? take(channel, parts, devices) : userCanceledErr;
}

OSStatus CaptureSettings::take(SGChannel& channel, WindowParts& parts,
                               const std::vector<CaptureDevice>& devices) {
  if (!parts.volumeSlider.isHidden())
    setChannelVolume(channel, static_cast<std::int16_t>(parts.volumeSlider.value()));
  const auto tag = parts.devicePopUp.selectedTag();
  if (!tag) return noErr;
  // Also the one that it has: it may have gone and come back.
  const CaptureDevice& chosen = devices[static_cast<std::size_t>(*tag)];
  if (const auto taken = channel.setDevice(chosen.identifier); !taken) {
    application_.runAlertPanel(filledIn(localized("Recording", "“%1” cannot be used."), {chosen.name}),
                               taken.error().localizedDescription, localized("Alerts", "OK"));
    return ioErr;
  }
  return noErr;
}

}  // namespace clipwave
