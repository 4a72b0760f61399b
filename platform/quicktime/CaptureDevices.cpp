#include "platform/quicktime/CaptureDevices.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <map>
#include <system_error>
#include <thread>

#include "platform/foundation/Localization.h"
#include "platform/quicktime/CameraModes.h"

extern "C" {
#include <libavdevice/avdevice.h>
}

namespace clipwave {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSoundServerPrefix = "pulse:";
constexpr std::string_view kSystemSound = "alsa:default";
constexpr std::string_view kMonitorSuffix = ".monitor";
constexpr auto kLongestLook = std::chrono::seconds(2);
// Bytes of 48,000 Hz, two channels of 16 bits: 20 ms, and 5 ms.
constexpr const char* kUsualFragment = "3840";
constexpr const char* kSmallFragment = "960";
constexpr const char* kPattern = "testsrc2=size=640x480:rate=30";
constexpr const char* kTone = "sine=frequency=440:beep_factor=4:sample_rate=48000";

// What may never return is asked on a thread that is then left to itself.
template <class Answer>
Answer answerInTime(std::function<Answer()> question) {
  auto promise = std::make_shared<std::promise<Answer>>();
  std::future<Answer> answer = promise->get_future();
  try {
    std::thread([promise, question = std::move(question)] { promise->set_value(question()); }).detach();
  } catch (const std::system_error&) {
    return {};
  }
  return answer.wait_for(kLongestLook) == std::future_status::ready ? answer.get() : Answer{};
}

std::vector<fs::path> entriesOf(const char* folder) {
  std::error_code error;
  std::vector<fs::path> entries;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    entries.push_back(entry->path());
  return entries;
}

// The name under /dev/v4l/by-id stays with a camera whichever place it is plugged into.
std::map<fs::path, std::string> stableNames() {
  std::map<fs::path, std::string> names;
  for (const fs::path& link : entriesOf("/dev/v4l/by-id")) {
    std::error_code error;
    const fs::path device = fs::canonical(link, error);
    if (!error) names.emplace(device, link.string());
  }
  return names;
}

std::vector<CaptureDevice> cameras() {
  std::vector<std::pair<int, fs::path>> nodes;
  for (const fs::path& entry : entriesOf("/dev")) {
    const std::string name = entry.filename().string();
    if (name.starts_with("video") && name.size() > 5 && name.find_first_not_of("0123456789", 5) == name.npos)
      nodes.emplace_back(std::atoi(name.c_str() + 5), entry);
  }
  std::ranges::sort(nodes);
  const std::map<fs::path, std::string> stable = stableNames();
  std::vector<CaptureDevice> found;
  for (const auto& [number, node] : nodes) {
    const std::optional<std::string> name = cameraName(node.string());
    if (!name) continue;
    const auto link = stable.find(node);
    found.push_back({link == stable.end() ? node.string() : link->second, *name});
  }
  return found;
}

// Asking for a server where there is none would start one, or make its library print.
bool hasSoundServer() {
  if (const char* server = std::getenv("PULSE_SERVER"); server != nullptr && *server != '\0') return true;
  std::vector<fs::path> folders = {"/run/user/" + std::to_string(::getuid()) + "/pulse", "/run/pulse"};
  if (const char* folder = std::getenv("XDG_RUNTIME_DIR")) folders.emplace_back(fs::path(folder) / "pulse");
  if (const char* folder = std::getenv("PULSE_RUNTIME_PATH")) folders.emplace_back(folder);
  return std::ranges::any_of(folders, [](const fs::path& folder) {
    std::error_code error;
    return fs::exists(folder / "native", error);
  });
}

std::vector<CaptureDevice> soundServerSources() {
  const AVInputFormat* const format = av_find_input_format("pulse");
  AVDeviceInfoList* list = nullptr;
  if (format == nullptr || avdevice_list_input_sources(format, nullptr, nullptr, &list) < 0) return {};
  std::vector<CaptureDevice> found;
  for (int i = 0; i < list->nb_devices; ++i) {
    const AVDeviceInfo& device = *list->devices[i];
    const std::string_view name = device.device_name;
    // What the loudspeakers play is no microphone.
    if (name.ends_with(kMonitorSuffix)) continue;
    const auto place = i == list->default_device ? found.begin() : found.end();
    found.insert(place, {std::string(kSoundServerPrefix) + std::string(name), device.device_description});
  }
  avdevice_free_list_devices(&list);
  return found;
}

bool hasSystemSound() {
  return std::ranges::any_of(entriesOf("/dev/snd"), [](const fs::path& node) {
    const std::string name = node.filename().string();
    return name.starts_with("pcm") && name.ends_with('c');
  });
}

void tellNobody(const char*, int, const char*, int, const char*, ...) {}

// The system's sound library prints each of its failures unless it is given somebody to tell them to. It is
// here already, with the device library.
void silenceSystemSound() {
  using Handler = void (*)(const char*, int, const char*, int, const char*, ...);
  void* const library = ::dlopen("libasound.so.2", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) return;
  if (void* const symbol = ::dlsym(library, "snd_lib_error_set_handler")) {
    const auto setHandler = reinterpret_cast<int (*)(Handler)>(symbol);
    setHandler(tellNobody);
  }
  ::dlclose(library);
}

std::vector<CaptureDevice> microphones() {
  std::vector<CaptureDevice> found;
  if (hasSoundServer()) found = soundServerSources();
  if (hasSystemSound()) found.push_back({std::string(kSystemSound), {}});  // named by who shows it
  return found;
}

CaptureRequest cameraRequest(const std::string& path) {
  CaptureRequest request{kVideoMediaType, "v4l2", path, {}, false, {}};
  const std::optional<CameraFacts> facts = cameraFacts(path);
  if (!facts) return request;
  if (const std::optional<CameraMode> mode = bestCameraMode(facts->modes)) {
    request.options = {{"input_format", mode->format},
                       {"video_size", std::to_string(mode->width) + "x" + std::to_string(mode->height)}};
    if (mode->framesPerSecond > 0)
      request.options.emplace_back("framerate", std::to_string(mode->framesPerSecond));
  }
  return request;
}

class SystemCaptureDevices final : public CaptureDevices {
 public:
  SystemCaptureDevices() {
    silenceMovieLibraries();
    avdevice_register_all();
    silenceSystemSound();
  }

  std::vector<CaptureDevice> list(OSType mediaType) override {
    const bool isVideo = mediaType == kVideoMediaType;
    auto found = answerInTime<std::vector<CaptureDevice>>(isVideo ? cameras : microphones);
    // Not on that thread: it may go on while the program ends, and its language with it.
    for (CaptureDevice& device : found)
      if (device.identifier == kSystemSound) device.name = localized("Devices", "The System’s Sound Input");
    found.push_back({std::string(kTestPatternDevice),
                     isVideo ? localized("Devices", "Test Pattern") : localized("Devices", "Test Tone")});
    return found;
  }

  std::optional<CaptureRequest> request(OSType mediaType, std::string_view identifier,
                                        bool lowLatency) override {
    const bool isVideo = mediaType == kVideoMediaType;
    if (identifier == kTestPatternDevice)
      return CaptureRequest{mediaType, "lavfi", isVideo ? kPattern : kTone, {}, true, {}};
    if (isVideo) {
      if (!identifier.starts_with("/dev/")) return {};
      return answerInTime<std::optional<CaptureRequest>>(
          [path = std::string(identifier)] { return std::optional(cameraRequest(path)); });
    }
    if (identifier == kSystemSound) return CaptureRequest{mediaType, "alsa", "default", {}, false, {}};
    if (!identifier.starts_with(kSoundServerPrefix)) return {};
    return CaptureRequest{mediaType,
                          "pulse",
                          std::string(identifier.substr(kSoundServerPrefix.size())),
                          {{"sample_rate", "48000"},
                           {"channels", "2"},
                           {"fragment_size", lowLatency ? kSmallFragment : kUsualFragment},
                           {"name", "Clipwave"}},
                          false,
                          {}};
  }
};

}  // namespace

std::unique_ptr<CaptureDevices> makeCaptureDevices() {
  return std::make_unique<SystemCaptureDevices>();
}

}  // namespace clipwave
