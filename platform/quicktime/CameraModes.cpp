#include "platform/quicktime/CameraModes.h"

#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace clipwave {
namespace {

constexpr double kWantedRate = 30;
constexpr double kRateTolerance = 0.5;
constexpr unsigned kMostAnswers = 256;  // a driver that never ends its lists is not listened to for ever

struct Format {
  std::uint32_t code;
  const char* name;
  bool isRaw;
};
// What can be decoded here, the cheaper ones first.
constexpr std::array kFormats = {
    Format{V4L2_PIX_FMT_YUV420, "yuv420p", true}, Format{V4L2_PIX_FMT_NV12, "nv12", true},
    Format{V4L2_PIX_FMT_YUYV, "yuyv422", true},   Format{V4L2_PIX_FMT_UYVY, "uyvy422", true},
    Format{V4L2_PIX_FMT_MJPEG, "mjpeg", false},   Format{V4L2_PIX_FMT_JPEG, "mjpeg", false}};

class OpenedCamera {
 public:
  explicit OpenedCamera(const std::string& path)
      : descriptor_(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC)) {}
  ~OpenedCamera() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  OpenedCamera(const OpenedCamera&) = delete;
  OpenedCamera& operator=(const OpenedCamera&) = delete;

  template <class Argument>
  bool ask(unsigned long request, Argument& argument) const {
    if (descriptor_ < 0) return false;
    int answer = 0;
    do answer = ::ioctl(descriptor_, request, &argument);
    while (answer < 0 && errno == EINTR);
    return answer >= 0;
  }

 private:
  int descriptor_;
};

std::optional<std::string> nameOf(const OpenedCamera& camera) {
  v4l2_capability capability{};
  if (!camera.ask(VIDIOC_QUERYCAP, capability)) return {};
  const std::uint32_t can = (capability.capabilities & V4L2_CAP_DEVICE_CAPS) != 0 ? capability.device_caps
                                                                                  : capability.capabilities;
  if ((can & V4L2_CAP_VIDEO_CAPTURE) == 0 || (can & V4L2_CAP_STREAMING) == 0) return {};
  const auto* const card = reinterpret_cast<const char*>(capability.card);
  return std::string(card, ::strnlen(card, sizeof capability.card));
}

double rateOf(const v4l2_fract& interval) {
  return interval.numerator == 0 ? 0 : static_cast<double>(interval.denominator) / interval.numerator;
}

double fastestRate(const OpenedCamera& camera, std::uint32_t format, int width, int height) {
  double fastest = 0;
  v4l2_frmivalenum interval{};
  interval.pixel_format = format;
  interval.width = static_cast<std::uint32_t>(width);
  interval.height = static_cast<std::uint32_t>(height);
  for (; interval.index < kMostAnswers && camera.ask(VIDIOC_ENUM_FRAMEINTERVALS, interval);
       ++interval.index) {
    if (interval.type != V4L2_FRMIVAL_TYPE_DISCRETE) {
      const bool reaches = rateOf(interval.stepwise.min) >= kWantedRate;
      return reaches ? kWantedRate : rateOf(interval.stepwise.min);
    }
    const double rate = rateOf(interval.discrete);
    // No faster than wanted, where there is a choice.
    if (fastest == 0 ||
        (rate <= kWantedRate + kRateTolerance ? rate > fastest || fastest > kWantedRate + kRateTolerance
                                              : fastest > rate))
      fastest = rate;
  }
  return fastest;
}

}  // namespace

std::optional<std::string> cameraName(const std::string& path) {
  return nameOf(OpenedCamera(path));
}

std::optional<CameraFacts> cameraFacts(const std::string& path) {
  const OpenedCamera camera(path);
  const std::optional<std::string> name = nameOf(camera);
  if (!name) return {};
  CameraFacts facts{*name, 0, 0, {}};
  v4l2_format current{};
  current.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
  if (!camera.ask(VIDIOC_G_FMT, current)) return facts;
  facts.width = static_cast<int>(current.fmt.pix.width);
  facts.height = static_cast<int>(current.fmt.pix.height);
  v4l2_fmtdesc description{};
  description.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
  for (; description.index < kMostAnswers && camera.ask(VIDIOC_ENUM_FMT, description); ++description.index) {
    const auto* const format = std::ranges::find(kFormats, description.pixelformat, &Format::code);
    if (format == kFormats.end()) continue;
    facts.modes.push_back({format->name, facts.width, facts.height,
                           fastestRate(camera, format->code, facts.width, facts.height), format->isRaw});
  }
  return facts;
}

std::optional<CameraMode> bestCameraMode(std::span<const CameraMode> modes) {
  const auto rank = [](const CameraMode& mode) {
    const bool isFast = mode.framesPerSecond >= kWantedRate - kRateTolerance;
    return std::pair(isFast ? kWantedRate : mode.framesPerSecond, mode.isRaw);
  };
  const auto best = std::ranges::max_element(modes, {}, rank);
  if (best == modes.end()) return {};
  return *best;
}

}  // namespace clipwave
