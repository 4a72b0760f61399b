// How the recorder starts and stops a recording, and drives it on.
#include "platform/foundation/Localization.h"
#include "record/PixelConversion.h"
#include "record/Recorder.h"

namespace clipwave {
namespace {

constexpr OSType kMovieFileCreator = fourCharacterCode("TVOD");
constexpr std::int16_t kSystemScript = -1;
// Neither a movie nor a resource file is made within the file, and it is not opened.
constexpr std::uint32_t kCreateMovieFileFlags = 0x7000'0000;
constexpr std::size_t kLongestPath = 1024;  // in bytes

std::int32_t withFlag(std::int32_t usage, std::int32_t flag, bool isSet) {
  return isSet ? usage | flag : usage & ~flag;
}

}  // namespace

void Recorder::record() {
  if (gCurrentlyRecording_) return stopRecording();
  if (!gSeqGrabber_ || (!recordVideo_ && !recordSound_)) return;
  startRecording();
}

void Recorder::startRecording() {
  SequenceGrabber& grabber = *gSeqGrabber_;
  grabber.stop();
  endTrouble(Cause::Size);
  prepareFile();
  const auto file = services_.captureKit.specificationOfPath(filename_);
  if (!file) {
    // No alert is shown for this one.
    tellTrouble(Cause::Name,
                filledIn(localized("Recording", "“%1” cannot be made."), {lastPathComponent(filename_)}));
    return failRecording(true);
  }
  if (grabber.setDataOutput(*file, seqGrabToDisk) != noErr) return failRecording(false);
  if (hasVideo() && recordVideo_) {
    applyCaptureOptions();
    chooseMasterClock();
  }
  if (hasSound()) gSoundChannel_->setUsage(recordSound_ ? kSoundUsage : 0);
  if (hasVideo()) gVideoChannel_->setUsage(recordVideo_ ? kVideoUsage : 0);
  grabber.pause(false);
  services_.captureKit.deleteMovieFile(*file);
  if (services_.captureKit.createMovieFile(*file, kMovieFileCreator, kSystemScript, kCreateMovieFileFlags) !=
          noErr ||
      grabber.startRecord() != noErr)
    return failRecording(false);
  gCurrentlyRecording_ = true;
  endTrouble(troubleCause_);
  grabber.update();
  recordStarted(_stringWithFSRef(*file));
}

// Where no file can be made, none will be found.
void Recorder::prepareFile() {
  if (services_.files.fileExistsAtPath(filename_)) services_.log.write("file exists!");
  static_cast<void>(services_.files.createFileAtPath(filename_));
}

// The recording's own usage, which is set next, knows nothing of these; so they go to the device, too.
void Recorder::applyCaptureOptions() {
  std::int32_t usage = 0;
  if (gVideoChannel_->usage(usage) == noErr) {
    usage = withFlag(usage, seqGrabLowLatencyCapture, lowLatencyCapture_);
    gVideoChannel_->setUsage(withFlag(usage, seqGrabAlwaysUseTimeBase, useTimeBase_));
  }
  const CaptureOptions options{lowLatencyCapture_, useTimeBase_};
  gVideoChannel_->setOptions(options);
  if (hasSound()) gSoundChannel_->setOptions(options);
}

void Recorder::chooseMasterClock() {
  TimeBase* timeBase = nullptr;
  if (gSeqGrabber_->timeBase(timeBase) != noErr || timeBase == nullptr) return;
  if (hasSound() && recordSound_ && useSoundClock_) {
    followSoundClock(*timeBase);
  } else {
    restoreMasterClock(*timeBase);
  }
}

void Recorder::followSoundClock(TimeBase& timeBase) {
  ComponentDescription current;
  TimeBase* soundTimeBase = nullptr;
  if (timeBase.masterClock()->componentInfo(current) != noErr) return;
  if (gSoundChannel_->timeBase(soundTimeBase) != noErr || soundTimeBase == nullptr) return;
  // A second recording by the sound's clock finds that clock in the grabber's place already.
  if (!replacedClock_) replacedClock_ = current;
  timeBase.setMasterClock(*soundTimeBase->masterClock());
}

void Recorder::restoreMasterClock(TimeBase& timeBase) {
  if (!replacedClock_) return;
  if (ClockComponent* clock = services_.captureKit.findClock(*replacedClock_))
    timeBase.setMasterClock(*clock);
}

void Recorder::failRecording(bool quiet) {
  gCurrentlyRecording_ = false;
  logTrouble();
  gSeqGrabber_->pause(false);
  restartPreview();
  recordFailed(quiet);
}

void Recorder::logTrouble() {
  if (const std::string trouble = gSeqGrabber_->trouble(); !trouble.empty()) services_.log.write(trouble);
}

void Recorder::stopRecording() {
  if (const OSStatus status = gSeqGrabber_->stop(); status != noErr) {
    log("SGStop()", status);
    logTrouble();
    return breakOff();
  }
  gCurrentlyRecording_ = false;
  gSeqGrabber_->startPreview();
  // A copy: those who are told may set the next recording's name.
  recordFinished(std::string(filename_));
}

// The camera is gone, or the disk is full.
void Recorder::captureFailed(OSStatus status) {
  log("SGIdle()", status);
  logTrouble();
  gSeqGrabber_->stop();
  breakOff();
}

// What was recorded so far is a movie like any other, where there is one that opens.
void Recorder::breakOff() {
  const bool isMovie = lastRecordedMovie() != nullptr;
  gCurrentlyRecording_ = false;
  restartPreview();
  const std::string path = filename_;
  if (isMovie) {
    post(kMovieCreated, path);
    post(kRecordingBrokenOff, path);
  }
  recordFailed(false);
}

// A recording of the sound alone had switched the camera's channel off.
void Recorder::restartPreview() {
  std::int32_t usage = kVideoUsage;
  if (hasVideo() && gVideoChannel_->usage(usage) == noErr && usage == 0)
    gVideoChannel_->setUsage(kVideoUsage);
  gSeqGrabber_->startPreview();
}

void Recorder::post(std::string_view name, const std::optional<std::string>& path) {
  // Named, not owned.
  const std::shared_ptr<Handle> self(std::shared_ptr<Handle>(), this);
  services_.notifications.post(name, self, {{std::string(kRecordingPath), path}});
}

void Recorder::recordStarted(const std::optional<std::string>& path) {
  recordButton.setImage("StopButton");
  closeButton.setEnabled(false);
  post(kRecordingStarted, path);
}

void Recorder::recordFinished(const std::string& path) {
  post(kMovieCreated, path);
  cleanup();
}

void Recorder::recordFailed(bool quiet) {
  recordButton.setImage("RecordButton");
  if (!quiet)
    services_.application.runAlertPanel("Recording Error", "An error has occurred while recording.", "OK");
  closeButton.setEnabled(true);
}

void Recorder::_updateDisplay() {
  if (gSeqGrabber_) {
    const OSStatus status = gSeqGrabber_->idle();
    if (status != noErr && gCurrentlyRecording_) return captureFailed(status);
    if (status != noErr) {
      log("SGIdle()", status);
      logTrouble();
      tellTrouble(Cause::Device, gSeqGrabber_->trouble());
    }
  }
  if (gWorld_) setImage(_imageFromGWorld(gWorld_.get()));
}

std::shared_ptr<const Bitmap> Recorder::_imageFromGWorld(GWorld* gworld) {
  if (gworld == nullptr) {
    services_.log.write("Invalid parameter not satisfying: gworld != NULL");
    return nullptr;
  }
  return bitmapFromGWorld(*gworld);
}

std::optional<std::string> Recorder::_stringWithFSRef(const FSSpec& file) const {
  auto path = services_.captureKit.pathOfSpecification(file);
  return path && path->size() <= kLongestPath ? path : std::nullopt;
}

}  // namespace clipwave
