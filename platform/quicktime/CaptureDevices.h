// Which capture devices there are, and how they are opened. Internal to this room.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/quicktime/CaptureInput.h"
#include "platform/quicktime/SequenceGrabber.h"

namespace clipwave {

class CaptureDevices {
 public:
  virtual ~CaptureDevices() = default;
  // Newly looked up, the one that is taken first in front, the test pattern last. Waits two seconds at the
  // longest.
  virtual std::vector<CaptureDevice> list(OSType mediaType) = 0;
  // How a device is opened that list() named, or would; none where nothing of that name can be there.
  virtual std::optional<CaptureRequest> request(OSType mediaType, std::string_view identifier,
                                                bool lowLatency) = 0;
};

// Cameras by Video4Linux, microphones by the desktop's sound server or else by the system's own sound.
std::unique_ptr<CaptureDevices> makeCaptureDevices();

}  // namespace clipwave
