#include "platform/quicktime/SoundOutput.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>

#include "platform/quicktime/MovieReader.h"

namespace clipwave {
namespace {

constexpr Uint16 kDeviceBuffer = 1024;  // samples of one channel: about 21 ms

// The library counts its users without a lock of its own.
std::mutex& libraryMutex() {
  static std::mutex mutex;
  return mutex;
}

bool startLibrary() {
  // Ending the program is not the sound library's business.
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  SDL_SetHint(SDL_HINT_APP_NAME, "Clipwave");
  return SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
}

}  // namespace

std::unique_ptr<SoundOutput> SoundOutput::open() {
  const std::lock_guard lock(libraryMutex());
  if (!startLibrary()) return nullptr;
  std::unique_ptr<SoundOutput> output(new SoundOutput);
  SDL_AudioSpec wanted{};
  wanted.freq = kSoundRate;
  wanted.format = AUDIO_S16SYS;
  wanted.channels = kSoundChannels;
  wanted.samples = kDeviceBuffer;
  wanted.callback = takeSamples;
  wanted.userdata = output.get();
  // No change is allowed, so that the library converts to whatever the device takes.
  output->device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
  if (output->device_ != 0) return output;
  SDL_QuitSubSystem(SDL_INIT_AUDIO);
  return nullptr;
}

SoundOutput::~SoundOutput() {
  if (device_ == 0) return;
  const std::lock_guard lock(libraryMutex());
  SDL_CloseAudioDevice(device_);
  SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

void SoundOutput::append(std::span<const std::int16_t> samples) {
  const std::lock_guard lock(mutex_);
  samples_.erase(samples_.begin(), samples_.begin() + static_cast<std::ptrdiff_t>(taken_));
  taken_ = 0;
  samples_.insert(samples_.end(), samples.begin(), samples.end());
}

void SoundOutput::appendSilence(double seconds) {
  append(std::vector<std::int16_t>(static_cast<std::size_t>(std::lround(seconds * kSoundRate)) *
                                   kSoundChannels));
}

void SoundOutput::finish() {
  const std::lock_guard lock(mutex_);
  finished_ = true;
}

void SoundOutput::clear() {
  const std::lock_guard lock(mutex_);
  samples_.clear();
  taken_ = 0;
  given_ = lastGiven_ = 0;
  finished_ = false;
}

void SoundOutput::setRunning(bool running) {
  SDL_PauseAudioDevice(device_, running ? 0 : 1);
}

void SoundOutput::setVolume(float volume) {
  const std::lock_guard lock(mutex_);
  volume_ = std::clamp(volume, 0.0F, 1.0F);
}

double SoundOutput::waitingSeconds() const {
  const std::lock_guard lock(mutex_);
  return static_cast<double>(samples_.size() - taken_) / kSoundChannels / kSoundRate;
}

// The device asks for the next stretch when it begins to play the one before; what it was given last is
// therefore still to be heard at that moment.
double SoundOutput::heardSeconds() const {
  const std::lock_guard lock(mutex_);
  const std::chrono::duration<double> since = std::chrono::steady_clock::now() - lastTime_;
  const double last = static_cast<double>(lastGiven_) / kSoundRate;
  return static_cast<double>(given_) / kSoundRate - last + std::clamp(since.count(), 0.0, last);
}

void SoundOutput::takeSamples(void* self, std::uint8_t* bytes, int count) {
  static_cast<SoundOutput*>(self)->fill(
      {reinterpret_cast<std::int16_t*>(bytes), static_cast<std::size_t>(count) / sizeof(std::int16_t)});
}

// On the device's own thread. Where samples are late there is silence, and time stands still.
void SoundOutput::fill(std::span<std::int16_t> target) {
  const std::lock_guard lock(mutex_);
  const std::size_t count = std::min(target.size(), samples_.size() - taken_);
  for (std::size_t i = 0; i < count; ++i)
    target[i] = static_cast<std::int16_t>(static_cast<float>(samples_[taken_ + i]) * volume_);
  std::fill(target.begin() + static_cast<std::ptrdiff_t>(count), target.end(), std::int16_t{0});
  taken_ += count;
  lastGiven_ = static_cast<std::int64_t>((finished_ ? target.size() : count) / kSoundChannels);
  given_ += lastGiven_;
  lastTime_ = std::chrono::steady_clock::now();
}

}  // namespace clipwave
