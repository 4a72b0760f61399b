// What pictures a camera can deliver, and which of them are wanted. Internal to this room.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace clipwave {

struct CameraMode {
  std::string format;  // as FFmpeg's libraries call it: "mjpeg", or that of a raw picture
  int width = 0;
  int height = 0;
  double framesPerSecond = 0;
  bool isRaw = false;
};

struct CameraFacts {
  std::string name;  // for people
  // The size that the camera is set to.
  int width = 0;
  int height = 0;
  std::vector<CameraMode> modes;  // those of that size
};

// None where `path` is no Video4Linux device that captures pictures.
std::optional<CameraFacts> cameraFacts(const std::string& path);
// Only its name: quicker.
std::optional<std::string> cameraName(const std::string& path);

// Raw pictures where they come 30 times a second; else compressed ones where these do; else whatever comes
// most often. None for none.
std::optional<CameraMode> bestCameraMode(std::span<const CameraMode> modes);

}  // namespace clipwave
