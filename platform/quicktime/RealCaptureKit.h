// The capture kit over FFmpeg's libraries: Video4Linux cameras, the desktop's microphones, and a test
// pattern.
#pragma once

#include <memory>

#include "platform/foundation/FileManager.h"
#include "platform/foundation/UserDefaultsController.h"
#include "platform/quicktime/SequenceGrabber.h"

namespace clipwave {

// Everything passed in outlives the kit.
struct CaptureServices {
  FileManager& files;
  UserDefaultsController& defaults;  // which devices the user chose
  MovieOpener& movies;
};

std::unique_ptr<CaptureKit> makeCaptureKit(const CaptureServices& services);

// The same over devices of the caller's own. Internal to this room.
class CaptureDevices;
std::unique_ptr<CaptureKit> makeCaptureKit(const CaptureServices& services,
                                           std::unique_ptr<CaptureDevices> devices);

}  // namespace clipwave
