#include "platform/quicktime/RealSequenceGrabber.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/Localization.h"
#include "platform/quicktime/CaptureTime.h"

namespace clipwave {
namespace {

OSStatus statusOf(const Error& error) {
  if (error.code == kFileWriteOutOfSpaceError) return dskFulErr;
  if (error.code == kFileReadNoSuchFileError || error.code == kFileNoSuchFileError) return fnfErr;
  return ioErr;
}

std::string cameraIsGone() {
  return localized("Recording", "The camera was disconnected.");
}

std::string microphoneIsGone() {
  return localized("Recording", "The microphone was disconnected.");
}

}  // namespace

RealSequenceGrabber::RealSequenceGrabber(const Kit& kit) : kit_(kit), timeBase_(kit.clocks.system) {}

RealSequenceGrabber::~RealSequenceGrabber() {
  stop();
  if (sound_) std::erase(kit_.clocks.devices, &sound_->clock());
}

ChannelServices RealSequenceGrabber::channelServices() {
  return {kit_.devices, kit_.services.defaults, [this] { return recording_ != nullptr; }};
}

bool RealSequenceGrabber::chosePattern() const {
  const std::string identifier =
      video_ ? video_->device().identifier : kit_.services.defaults.string("captureDevice");
  return identifier == kTestPatternDevice;
}

OSStatus RealSequenceGrabber::newChannel(OSType mediaType, SGChannel*& channel) {
  channel = nullptr;
  if (mediaType == kVideoMediaType)
    return addChannel(video_, std::make_unique<VideoChannel>(channelServices(), kit_.clocks.system), false,
                      channel);
  if (mediaType != kAudioMediaType) return paramErr;
  const OSStatus status =
      addChannel(sound_, std::make_unique<SoundChannel>(channelServices()), chosePattern(), channel);
  if (status == noErr) kit_.clocks.devices.push_back(&sound_->clock());
  return status;
}

template <class Channel>
OSStatus RealSequenceGrabber::addChannel(std::unique_ptr<Channel>& place, std::unique_ptr<Channel> made,
                                         bool usesPattern, SGChannel*& channel) {
  if (place) return paramErr;
  if (!made->open(usesPattern)) return noDeviceForChannel;
  place = std::move(made);
  channel = place.get();
  return noErr;
}

OSStatus RealSequenceGrabber::setGWorld(GWorld* world) {
  world_ = world;
  if (!isPaused_) draw(true);
  return noErr;
}

// A device that is gone may have come back since.
OSStatus RealSequenceGrabber::startPreview() {
  if (state_ == State::Recording) return paramErr;
  if (video_) video_->refresh();
  if (sound_) sound_->refresh();
  state_ = State::Previewing;
  return noErr;
}

OSStatus RealSequenceGrabber::pause(bool pause) {
  if (pause == isPaused_) return noErr;
  // What came until now belongs to the time before.
  takeOver();
  isPaused_ = pause;
  if (recording_ && failure_ == noErr) {
    if (pause)
      recording_->pause(captureTime());
    else
      recording_->resume(captureTime());
  }
  return noErr;
}

OSStatus RealSequenceGrabber::idle() {
  if (state_ == State::Stopped) return noErr;
  takeOver();
  if (!isPaused_) draw(false);
  if (failure_ != noErr) return failure_;
  if (const OSStatus status = checkDevices(); status != noErr) return status;
  if (!recording_) return noErr;
  if (const std::optional<Error> error = recording_->error()) return failure_ = fail(*error);
  return noErr;
}

void RealSequenceGrabber::takeOver() {
  CaptureSource::Delivery sound;
  CaptureSource::Delivery pictures;
  if (sound_) sound = sound_->collect();
  if (video_) pictures = video_->collect();
  if (recording_ && !isPaused_ && failure_ == noErr) recording_->add(sound, pictures);
}

void RealSequenceGrabber::draw(bool again) {
  if (world_ == nullptr || !video_ || state_ == State::Stopped) return;
  if (video_->uses(state_ == State::Recording ? seqGrabPlayDuringRecord : seqGrabPreview))
    video_->draw(*world_, again);
}

OSStatus RealSequenceGrabber::checkDevices() {
  const std::pair<GrabberChannel*, std::string> channels[] = {{video_.get(), cameraIsGone()},
                                                              {sound_.get(), microphoneIsGone()}};
  OSStatus status = noErr;
  for (const auto& [channel, sentence] : channels) {
    if (channel == nullptr || !channel->noticeEnd()) continue;
    if (recording_ && !records(channel)) continue;
    if (status == noErr) status = fail(ioErr, sentence);
  }
  if (recording_ && status != noErr) failure_ = status;
  return status;
}

OSStatus RealSequenceGrabber::fail(OSStatus status, std::string trouble) {
  trouble_ = std::move(trouble);
  return status;
}

OSStatus RealSequenceGrabber::fail(const Error& error) {
  const bool isFull = error.code == kFileWriteOutOfSpaceError;
  return fail(statusOf(error),
              isFull ? localized("Recording", "The disk is full.") : error.localizedDescription);
}

OSStatus RealSequenceGrabber::update() {
  if (!isPaused_) draw(true);
  return noErr;
}

OSStatus RealSequenceGrabber::stop() {
  if (state_ == State::Recording) takeOver();
  state_ = State::Stopped;
  if (!recording_) return noErr;
  const Result<void> outcome = recording_->finish();
  recordedTime_ = recording_->recordedTime();
  dropped_ = recording_->droppedPictures();
  const std::optional<Error> late = recording_->error();
  const OSStatus failure = std::exchange(failure_, noErr);
  recording_.reset();
  keepEverything(false);
  if (!outcome) return fail(outcome.error());
  recordedPath_ = path_;
  // An error that nobody was told of yet.
  if (late && failure == noErr) return fail(*late);
  return noErr;
}

OSStatus RealSequenceGrabber::setDataOutput(const FSSpec& file, std::int32_t flags) {
  bool isFolder = false;
  if (recording_ || flags != seqGrabToDisk || file.name.empty() || file.name.find('/') != std::string::npos)
    return paramErr;
  if (!kit_.services.files.fileExistsAtPath(file.folder, &isFolder) || !isFolder) return fnfErr;
  path_ = stringByAppendingPathComponent(file.folder, file.name);
  return noErr;
}

bool RealSequenceGrabber::records(const GrabberChannel* channel) const {
  return channel != nullptr && channel->uses(seqGrabRecord);
}

OSStatus RealSequenceGrabber::startRecord() {
  if (recording_ || path_.empty()) return paramErr;
  if (!records(video_.get()) && !records(sound_.get())) return paramErr;
  if (!kit_.services.files.fileExistsAtPath(path_))
    return fail(fnfErr, localized("Recording", "There is no file to record into."));
  if (records(video_.get()) && !video_->refresh()) return fail(ioErr, cameraIsGone());
  if (records(sound_.get()) && !sound_->refresh()) return fail(ioErr, microphoneIsGone());
  return openRecording();
}

// What is recorded is kept until it is taken; of the rest, and for the preview, the newest will do.
void RealSequenceGrabber::keepEverything(bool keeps) {
  if (video_) video_->source().setKeepsAll(keeps && records(video_.get()));
  if (sound_) sound_->source().setKeepsAll(keeps && records(sound_.get()));
}

OSStatus RealSequenceGrabber::openRecording() {
  Recording::Plan plan;
  plan.path = path_;
  if (records(video_.get())) {
    plan.picture = video_->recordedPicture();
    plan.usesDeviceTimes = video_->options().deviceTimeStamps;
  }
  if (records(sound_.get())) {
    plan.soundInputRate = sound_->source().facts().sampleRate;
    plan.soundIsMaster = timeBase_.masterClock() == &sound_->clock();
    plan.usesDeviceTimes = plan.usesDeviceTimes || sound_->options().deviceTimeStamps;
  }
  plan.startedAt = captureTime();
  keepEverything(true);
  Result<std::unique_ptr<Recording>> recording = Recording::start(plan);
  if (!recording) {
    keepEverything(false);
    return fail(recording.error());
  }
  recording_ = std::move(*recording);
  recordedPath_.clear();
  recordedTime_ = 0;
  dropped_ = 0;
  failure_ = noErr;
  trouble_.clear();
  state_ = State::Recording;
  if (isPaused_) recording_->pause(plan.startedAt);
  return noErr;
}

std::shared_ptr<Movie> RealSequenceGrabber::movie() {
  if (recording_ || recordedPath_.empty()) return nullptr;
  return kit_.services.movies.movieWithPath(recordedPath_);
}

OSStatus RealSequenceGrabber::timeBase(TimeBase*& timeBase) {
  timeBase = &timeBase_;
  return noErr;
}

OSStatus RealSequenceGrabber::settingsDialog(SGChannel& channel, Window* window) {
  if (kit_.settingsDialog == nullptr) return paramErr;
  return kit_.settingsDialog->run(channel, window);
}

}  // namespace clipwave
