#include "platform/quicktime/RealCaptureKit.h"

#include <algorithm>

#include "platform/quicktime/CaptureDevices.h"
#include "platform/quicktime/RealSequenceGrabber.h"

namespace clipwave {
namespace {

constexpr int kPixelFormat = 32;
constexpr ComponentDescription kGrabber = {kSequenceGrabberComponent, 0, kPlatformManufacturer};

class RealCaptureKit final : public CaptureKit {
 public:
  RealCaptureKit(const CaptureServices& services, std::unique_ptr<CaptureDevices> devices)
      : services_(services), devices_(std::move(devices)) {}

  // The libraries are ready as soon as they are there.
  void enterMovies() override {}
  void exitMovies() override {}

  std::unique_ptr<SequenceGrabber> openSequenceGrabber(const ComponentDescription& description) override {
    if (!fits(kGrabber, description)) return nullptr;
    return std::make_unique<RealSequenceGrabber>(
        RealSequenceGrabber::Kit{services_, *devices_, settingsDialog_, clocks_});
  }

  ClockComponent* findClock(const ComponentDescription& description) override {
    if (fits(clocks_.system.description(), description)) return &clocks_.system;
    const auto clock = std::ranges::find_if(
        clocks_.devices, [&](const DescribedClock* one) { return fits(one->description(), description); });
    return clock == clocks_.devices.end() ? nullptr : *clock;
  }

  OSStatus newGWorld(std::unique_ptr<GWorld>& world, int pixelFormat, const QDRect& bounds) override {
    if (pixelFormat != kPixelFormat) return paramErr;
    world = makeGWorld(bounds);
    return world ? noErr : paramErr;
  }

  std::optional<FSSpec> specificationOfPath(std::string_view path) override {
    if (path.empty() || !services_.files.fileExistsAtPath(path)) return {};
    return FSSpec{stringByDeletingLastPathComponent(path), lastPathComponent(path)};
  }

  std::optional<std::string> pathOfSpecification(const FSSpec& file) override {
    const std::string path = stringByAppendingPathComponent(file.folder, file.name);
    if (file.name.empty() || !services_.files.fileExistsAtPath(path)) return {};
    return path;
  }

  OSStatus deleteMovieFile(const FSSpec& file) override {
    const std::optional<std::string> path = pathOfSpecification(file);
    if (!path) return fnfErr;
    const auto attributes = services_.files.fileAttributesAtPath(*path, false);
    if (!attributes || attributes->type == FileAttributes::Type::Directory) return paramErr;
    return services_.files.removeFileAtPath(*path) ? noErr : ioErr;
  }

  OSStatus createMovieFile(const FSSpec& file, OSType, std::int16_t, std::uint32_t) override {
    if (file.name.empty()) return paramErr;
    const Result<void> made =
        services_.files.createFileAtPath(stringByAppendingPathComponent(file.folder, file.name));
    if (made) return noErr;
    return made.error().code == kFileWriteOutOfSpaceError ? dskFulErr : ioErr;
  }

  std::vector<CaptureDevice> devices(OSType mediaType) override { return devices_->list(mediaType); }
  void setSettingsDialog(SettingsDialog* dialog) override { settingsDialog_ = dialog; }

 private:
  const CaptureServices services_;
  const std::unique_ptr<CaptureDevices> devices_;
  ClockRegistry clocks_;
  SettingsDialog* settingsDialog_ = nullptr;
};

}  // namespace

std::unique_ptr<CaptureKit> makeCaptureKit(const CaptureServices& services) {
  return makeCaptureKit(services, makeCaptureDevices());
}

std::unique_ptr<CaptureKit> makeCaptureKit(const CaptureServices& services,
                                           std::unique_ptr<CaptureDevices> devices) {
  return std::make_unique<RealCaptureKit>(services, std::move(devices));
}

}  // namespace clipwave
