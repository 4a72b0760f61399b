// The sequence grabber: captures picture and sound from the machine's devices, shows them, and records them
// into a movie file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Error.h"
#include "platform/quicktime/FourCharacterCode.h"
#include "platform/quicktime/GWorld.h"
#include "platform/quicktime/Movie.h"
#include "platform/quicktime/OSStatus.h"

namespace clipwave {

class Window;  // only handed through

inline constexpr OSType kSequenceGrabberComponent = fourCharacterCode("barg");
inline constexpr OSType kClockComponent = fourCharacterCode("clok");
inline constexpr OSType kPlatformManufacturer = fourCharacterCode("appl");
inline constexpr OSType kVideoMediaType = fourCharacterCode("vide");
inline constexpr OSType kAudioMediaType = fourCharacterCode("audi");
inline constexpr OSType kMPEG4VideoCodec = fourCharacterCode("mp4v");
inline constexpr OSType kAACFormat = fourCharacterCode("aac ");
inline constexpr OSType kSoundChannelPropertyClass = fourCharacterCode("audo");
inline constexpr OSType kRecordDevicePropertyClass = fourCharacterCode("audp");
inline constexpr OSType kStreamFormatProperty = fourCharacterCode("frmt");
inline constexpr OSType kMasterGainProperty = fourCharacterCode("mgan");

// What a channel is used for; a sum of these, 0 for nothing.
enum ChannelUsage : std::int32_t {
  seqGrabPreview = 1,
  seqGrabRecord = 2,
  seqGrabPlayDuringRecord = 4,
  seqGrabLowLatencyCapture = 8,
  seqGrabAlwaysUseTimeBase = 16,
};

// What setDataOutput takes: the movie is written to the disk as it is recorded.
inline constexpr std::int32_t seqGrabToDisk = 1;

// The volume of sound that is recorded as it comes.
inline constexpr std::int16_t kFullVolume = 256;

// A number with 16 bits before and 16 behind the point.
using Fixed = std::int32_t;
using UnsignedFixed = std::uint32_t;
constexpr double fixedToDouble(Fixed number) {
  return number / 65536.0;
}
constexpr double fixedToDouble(UnsignedFixed number) {
  return number / 65536.0;
}

// Names a component; 0 stands for any.
struct ComponentDescription {
  OSType componentType = 0;
  OSType componentSubType = 0;
  OSType componentManufacturer = 0;
  bool operator==(const ComponentDescription&) const = default;
};

// How the sound channel's samples are stored; forty bytes, as the property takes them.
struct AudioStreamBasicDescription {
  double sampleRate = 0;
  OSType formatID = 0;
  std::uint32_t formatFlags = 0;
  std::uint32_t bytesPerPacket = 0;
  std::uint32_t framesPerPacket = 0;
  std::uint32_t bytesPerFrame = 0;
  std::uint32_t channelsPerFrame = 0;
  std::uint32_t bitsPerChannel = 0;
  std::uint32_t reserved = 0;
};
static_assert(sizeof(AudioStreamBasicDescription) == 40);

// What a time base takes its time from: the system's clock, or a sound device's.
class ClockComponent {
 public:
  virtual ~ClockComponent() = default;
  // Fails where the clock's device is gone.
  virtual OSStatus componentInfo(ComponentDescription& description) const = 0;
};

// The time that samples are stamped with.
class TimeBase {
 public:
  virtual ~TimeBase() = default;
  virtual ClockComponent* masterClock() const = 0;  // never null
  virtual void setMasterClock(ClockComponent& clock) = 0;
};

// A folder and the name of a file in it, which need not be there.
struct FSSpec {
  std::string folder;
  std::string name;
};

struct CaptureDevice {
  std::string identifier;  // as the user default "captureDevice" or "captureSoundDevice" names it
  std::string name;        // for people
  bool operator==(const CaptureDevice&) const = default;
};

// The device that needs no hardware: a moving pattern, and a tone.
inline constexpr std::string_view kTestPatternDevice = "test-pattern";

// How a channel takes from its device, beyond its usage.
struct CaptureOptions {
  bool lowLatency = false;        // the smallest buffers, where a device leaves the choice
  bool deviceTimeStamps = false;  // the device's own times rather than the times of arrival
};

// One of the grabber's two channels; the grabber owns it. What a channel of the other kind does answers
// paramErr.
class SGChannel {
 public:
  virtual ~SGChannel() = default;
  virtual OSType mediaType() const = 0;

  virtual OSStatus setUsage(std::int32_t usage) = 0;
  virtual OSStatus usage(std::int32_t& usage) = 0;
  // Takes effect with the next start of a recording.
  virtual OSStatus setOptions(const CaptureOptions& options) = 0;

  // Video: the device's own size; the size that is shown and recorded, whatever the device's proportions.
  virtual OSStatus srcVideoBounds(QDRect& bounds) = 0;
  virtual OSStatus setBounds(const QDRect& bounds) = 0;
  virtual OSStatus setVideoCompressorType(OSType compressor) = 0;
  // Depth 0 and compressor 0 leave the choice to the platform; qualities count from 0 to 1023.
  virtual OSStatus setVideoCompressor(int depth, OSType compressor, int spatialQuality, int temporalQuality,
                                      int keyFrameRate) = 0;
  virtual OSStatus setFrameRate(Fixed framesPerSecond) = 0;
  virtual OSStatus frameRate(Fixed& framesPerSecond) = 0;
  virtual OSStatus setRequestedDataRate(std::int32_t bytesPerSecond) = 0;

  // Sound. The volume goes from 0 to kFullVolume. The master gain of the record device is a gain in decibels
  // where it is given as a 4-byte float, and a volume where it is given as a signed 2-byte number; the two
  // say the same thing (0 dB is full volume).
  virtual OSStatus soundInputRate(UnsignedFixed& samplesPerSecond) = 0;
  virtual OSStatus volume(std::int16_t& volume) = 0;
  virtual OSStatus setComponentProperty(OSType propertyClass, OSType property,
                                        std::span<const std::byte> value) = 0;
  virtual OSStatus setAudioUnitProperty(std::uint32_t property, std::uint32_t scope, std::uint32_t element,
                                        std::span<const std::byte> value) = 0;
  // The loudest sample heard of late, 0 to 1; 0 for a video channel.
  virtual float level() const = 0;

  virtual OSStatus timeBase(TimeBase*& timeBase) = 0;

  // What there is to choose from, newly looked up; and the one in use.
  virtual std::vector<CaptureDevice> devices() = 0;
  virtual CaptureDevice device() const = 0;
  // Takes another device; where that fails the channel keeps its former one. Not during a recording. The
  // choice is kept in the user defaults.
  virtual Result<void> setDevice(std::string_view identifier) = 0;
};

// Asks the user about a channel's device, application-modally.
class SettingsDialog {
 public:
  virtual ~SettingsDialog() = default;
  // userCanceledErr when nothing was changed.
  virtual OSStatus run(SGChannel& channel, Window* window) = 0;
};

// An open grabber. Main thread only; nothing is called back: everything moves forward in idle(). Devices are
// read and movies are written by threads of its own. Destroying it closes it: a recording that goes on is
// finished first.
class SequenceGrabber {
 public:
  virtual ~SequenceGrabber() = default;

  virtual OSStatus initialize() = 0;
  // Opens the device that the user chose ("captureDevice", "captureSoundDevice"), else the first one that
  // works. Fails, and makes no channel, where there is none. Waits a few seconds at the longest.
  virtual OSStatus newChannel(OSType mediaType, SGChannel*& channel) = 0;
  // Draws into `world` from now on; null for nowhere. The world stays the caller's, and must be taken back
  // before it goes.
  virtual OSStatus setGWorld(GWorld* world) = 0;
  virtual OSStatus startPreview() = 0;
  // A paused grabber neither draws nor records.
  virtual OSStatus pause(bool pause) = 0;
  // Takes over what the devices have delivered since the last time: draws the newest picture, and hands on
  // what is to be recorded. A few milliseconds at most. An error ends what is going on: a device that is
  // gone, a full disk; what was recorded until then can still be stopped for.
  virtual OSStatus idle() = 0;
  // Draws the newest picture again.
  virtual OSStatus update() = 0;
  // Ends preview or recording. The movie file is complete on return; after an error of idle() it holds what
  // was recorded until then. Fails where no movie could be made of it.
  virtual OSStatus stop() = 0;

  // Where the next recording goes; seqGrabToDisk is the only way there is.
  virtual OSStatus setDataOutput(const FSSpec& file, std::int32_t flags) = 0;
  // The file is there and empty, and is written into rather than replaced. What has been recorded is on the
  // disk within two seconds, in a form that opens, whatever happens to the program.
  virtual OSStatus startRecord() = 0;
  // The movie that was recorded last; none while it is being recorded, and where it cannot be opened.
  virtual std::shared_ptr<Movie> movie() = 0;
  // Of the recording that goes on, or the last one; in seconds.
  virtual double recordedTime() const = 0;
  // Pictures that should have been recorded and came too late, of the recording that goes on or the last one.
  virtual std::int64_t droppedPictures() const = 0;
  // Why the last operation that failed did, for a person; "" where there is nothing to say.
  virtual std::string trouble() const = 0;

  virtual OSStatus timeBase(TimeBase*& timeBase) = 0;
  // Runs the platform's dialogue for the channel; the window is the one that it belongs to.
  virtual OSStatus settingsDialog(SGChannel& channel, Window* window) = 0;
};

// The platform's capture components and movie files. Main thread only.
class CaptureKit {
 public:
  virtual ~CaptureKit() = default;

  virtual void enterMovies() = 0;
  virtual void exitMovies() = 0;
  // The first component that fits, opened; null for none. 0 in the description fits any.
  virtual std::unique_ptr<SequenceGrabber> openSequenceGrabber(const ComponentDescription& description) = 0;
  // The clock component of that description; null for none. Lives as long as the kit, or as the grabber whose
  // device it belongs to.
  virtual ClockComponent* findClock(const ComponentDescription& description) = 0;
  // Of pixels of 32 bits, which is the only format there is; see makeGWorld.
  virtual OSStatus newGWorld(std::unique_ptr<GWorld>& world, int pixelFormat, const QDRect& bounds) = 0;

  // Folder and name of a file that exists; none where it does not.
  virtual std::optional<FSSpec> specificationOfPath(std::string_view path) = 0;
  // An existing file's path; none where it does not exist.
  virtual std::optional<std::string> pathOfSpecification(const FSSpec& file) = 0;
  virtual OSStatus deleteMovieFile(const FSSpec& file) = 0;
  // Makes an empty file; the creator is what no file system here keeps.
  virtual OSStatus createMovieFile(const FSSpec& file, OSType creator, std::int16_t script,
                                   std::uint32_t flags) = 0;

  // What a video or sound channel could take from, the test pattern included (last).
  virtual std::vector<CaptureDevice> devices(OSType mediaType) = 0;
  // Who asks the user about devices; none: nobody can be asked. Not owned.
  virtual void setSettingsDialog(SettingsDialog* dialog) = 0;
};

}  // namespace clipwave
