// The capture view of the record sheet: shows the live picture, and records into a movie file.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/appkit/Application.h"
#include "platform/appkit/Controls.h"
#include "platform/appkit/ImageView.h"
#include "platform/appkit/Menu.h"
#include "platform/appkit/Workspace.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/RunLoop.h"
#include "platform/quicktime/SequenceGrabber.h"

namespace clipwave {

// Posted with the recorder as object and the movie's path under kRecordingPath.
inline constexpr std::string_view kRecordingStarted = "recordingStarted";
inline constexpr std::string_view kMovieCreated = "movieCreated";
// Posted after kMovieCreated when a recording ended by itself: the sheet stays open for another one.
inline constexpr std::string_view kRecordingBrokenOff = "recordingBrokenOff";
inline constexpr std::string_view kRecordingPath = "path";

// Observers of the view are told at every new picture, sixty times a second.
class Recorder final : public ImageView, public Handle {
 public:
  // What the pictures of a recording are asked to take up in a second.
  static constexpr std::int32_t kBytesPerSecond = 192'000;

  // All of it outlives the recorder.
  struct Services {
    Application& application;
    RunLoop& runLoop;
    FileManager& files;
    NotificationCenter& notifications;
    Workspace& workspace;
    Log& log;
    CaptureKit& captureKit;
  };
  // `window` is the sheet that holds the view.
  Recorder(const Services& services, Window& window);
  // Tears down like unsetup().
  ~Recorder() override;

  // The elements around the view, as the record sheet shows them.
  Button recordButton;  // Record while idle, Stop while recording
  Button closeButton;
  MenuItem videoItem{"setRecordVideo:"};  // its check mark mirrors recordVideo
  MenuItem soundItem{"setRecordSound:"};
  MenuItem lowLatencyItem{"toggleOption:", 0};
  MenuItem timeBaseItem{"toggleOption:", 1};
  MenuItem soundClockItem{"toggleOption:", 2};
  Window sizePanel;
  TextField hSizeField;  // height
  TextField wSizeField;  // width

  // Opens the grabber, begins the preview, and sets the capture to 320 by 240. What fails is written to the
  // log, and the engine stays usable as far as it got.
  void setup();
  // Ends the preview and closes the grabber; a recording that goes on is finished, and nobody is told.
  void unsetup();
  // Ends the use of the sheet: ends the sheet, then unsetup(). The sheet's end handler may let go of the
  // recorder, as long as it destroys it later.
  void cleanup();

  // Starts a recording when none runs, stops the running one otherwise.
  void record();
  bool isRecording() const { return gCurrentlyRecording_; }
  // The full path of the movie file that the next recording writes.
  void setFilename(std::string_view filename);
  const std::string& filename() const { return filename_; }
  // The grabber's current movie; none where there is none that opens.
  std::shared_ptr<Movie> lastRecordedMovie() const;

  bool hasVideo() const { return gVideoChannel_ != nullptr; }
  bool hasSound() const { return gSoundChannel_ != nullptr; }
  bool recordVideo() const { return recordVideo_; }
  bool recordSound() const { return recordSound_; }
  // The camera's native size, whatever the size of the capture.
  Size videoSize() const;
  // Resizes the capture, to whole pixels. Where that fails, the preview stands still until the next size that
  // can be had.
  void setVideoSize(Size size);
  void goFullSize() { goToScale(1); }
  void goHalfSize() { goToScale(0.5); }
  void goQuarterSize() { goToScale(0.25); }
  void showSizePanel();
  void sizePanelOKButtonPressed();
  void sizePanelCancelButtonPressed();

  // Each inverts its sender's state, and what it stands for.
  void setRecordVideo(MenuItem& sender);
  void setRecordSound(MenuItem& sender);
  void toggleOption(MenuItem& sender);
  bool lowLatencyCapture() const { return lowLatencyCapture_; }
  bool useTimeBase() const { return useTimeBase_; }
  bool useSoundClock() const { return useSoundClock_; }
  void showVideoSettings();
  void showSoundSettings();
  bool validateMenuItem(const MenuItem& item) const;
  // Credits what the recorder builds on; "More Info" opens its page.
  void _runPanel();

  float frameRate() const;       // pictures in a second; 0 when the platform cannot say
  float soundInputRate() const;  // samples in a second; 0 when the platform cannot say
  // 256 is full volume; numbers between 0 and 256 both ways.
  float volume() const;
  void setVolume(float volume);
  // Of the recording that goes on, or the last one.
  double recordedTime() const;  // seconds
  float soundLevel() const;     // 0 to 1
  // What took the live picture away or kept a recording from starting, for a person; "" while nothing does.
  const std::string& trouble() const { return trouble_; }
  SequenceGrabber* sequenceGrabber() const { return gSeqGrabber_.get(); }
  GWorld* gWorld() const { return gWorld_.get(); }

  void awakeFromNib() {}
  bool handlesWindow() const { return false; }

 private:
  static constexpr std::int32_t kVideoUsage = seqGrabPreview | seqGrabRecord | seqGrabPlayDuringRecord;
  static constexpr std::int32_t kSoundUsage = seqGrabPreview | seqGrabRecord;

  enum class Cause { None, Device, Size, Name };

  void _initializeSequenceGrabber();
  bool initializeVideo();
  bool initializeSound();
  bool makeWorld(const QDRect& bounds);
  bool takeBounds(const QDRect& bounds);
  void applyVideoSettings();

  void startRecording();
  void prepareFile();
  void applyCaptureOptions();
  void chooseMasterClock();
  void followSoundClock(TimeBase& timeBase);
  void restoreMasterClock(TimeBase& timeBase);
  void failRecording(bool quiet);
  void stopRecording();
  void captureFailed(OSStatus status);
  void breakOff();
  void restartPreview();
  void recordStarted(const std::optional<std::string>& path);
  void recordFinished(const std::string& path);
  void recordFailed(bool quiet);

  void _updateDisplay();
  std::shared_ptr<const Bitmap> _imageFromGWorld(GWorld* gworld);
  std::optional<std::string> _stringWithFSRef(const FSSpec& file) const;
  void goToScale(double scale);
  void takeSize(Size size);
  void _updateWindowSize(Size size);
  void showSettings(SGChannel* channel);
  void post(std::string_view name, const std::optional<std::string>& path);
  void log(std::string_view operation, OSStatus status);
  void logTrouble();
  void tellTrouble(Cause cause, std::string text);
  void endTrouble(Cause cause);

  Services services_;
  Window& window_;
  bool recordVideo_ = false;
  bool recordSound_ = false;
  bool lowLatencyCapture_ = false;
  bool useTimeBase_ = false;
  bool useSoundClock_ = false;
  bool gCurrentlyRecording_ = false;
  bool isSetUp_ = false;
  std::shared_ptr<Timer> timer_;
  std::unique_ptr<GWorld> gWorld_;
  std::unique_ptr<SequenceGrabber> gSeqGrabber_;
  SGChannel* gVideoChannel_ = nullptr;
  SGChannel* gSoundChannel_ = nullptr;
  QDRect gActiveVideoRect_;
  std::string filename_;
  std::string trouble_;
  Cause troubleCause_ = Cause::None;
  // The master clock that a recording by the sound's clock replaced; known for this recorder's life.
  std::optional<ComponentDescription> replacedClock_;
};

}  // namespace clipwave
