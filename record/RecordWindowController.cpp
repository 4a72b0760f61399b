#include "record/RecordWindowController.h"

#include <algorithm>
#include <cstdio>

#include "platform/foundation/FileManager.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

constexpr std::string_view kExtension = ".mov";
// What a recording takes up in a second: the pictures, and the sound's 128 kilobits.
constexpr double kBytesPerSecond = Recorder::kBytesPerSecond + 16'000;
constexpr double kFreeSpaceEvery = 2;  // seconds

std::string clockText(double time) {
  const auto seconds = static_cast<long long>(time);
  char text[32];
  if (seconds < 3600)
    std::snprintf(text, sizeof text, "%lld:%02lld", seconds / 60, seconds % 60);
  else
    std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60, seconds % 60);
  return text;
}

std::string freeSpaceText(std::int64_t bytes) {
  const std::int64_t megabytes = bytes / 1'000'000;
  std::string size = std::to_string(megabytes) + " MB";
  if (megabytes >= 1000) {
    //: The decimal mark of a number.
    const std::string mark = localized("Recording", ".");
    size = std::to_string(megabytes / 1000) + mark + std::to_string(megabytes / 100 % 10) + " GB";
  }
  const int minutes =
      static_cast<int>(std::min(static_cast<double>(bytes) / kBytesPerSecond / 60, 1e9));  // of any disk
  const int hours = minutes / 60;
  if (hours > 1)
    return filledIn(localizedCount("Recording", "%1 free, about %n hours", "%1 free, about %n hour", hours),
                    {size});
  if (minutes > 1)
    return filledIn(
        localizedCount("Recording", "%1 free, about %n minutes", "%1 free, about %n minute", minutes),
        {size});
  return filledIn(localized("Recording", "%1 free, less than a minute"), {size});
}

std::string nameOf(std::string_view path) {
  return stringByDeletingPathExtension(lastPathComponent(path));
}

}  // namespace

RecordWindowController::RecordWindowController(const Recorder::Services& services)
    : WindowController("Record"), services_(services), recorder_(services, window()) {
  recorder_.closeButton.setAction([this] { closeRecordSheet(); });
  optionsButton_.setMenu(&optionsMenu_);
  addMenuItems();
  nameObservation_ = filenameTextField_.observe([this] {
    // An entry that is taken back is another name, too.
    if (filenameTextField_.stringValue() != checkedName_) controlTextDidChange();
  });
  pictureObservation_ = recorder_.observe([this] { refreshStatus(); });
}

RecordWindowController::~RecordWindowController() {
  dropInterface();
}

void RecordWindowController::addMenuItems() {
  using Operation = void (Recorder::*)();
  const std::pair<MenuItem*, Operation> kOperations[] = {
      {&fullSizeItem_, &Recorder::goFullSize},
      {&halfSizeItem_, &Recorder::goHalfSize},
      {&quarterSizeItem_, &Recorder::goQuarterSize},
      {&otherSizeItem_, &Recorder::showSizePanel},
      {&videoSettingsItem_, &Recorder::showVideoSettings},
      {&soundSettingsItem_, &Recorder::showSoundSettings},
      {&creditItem_, &Recorder::_runPanel},
  };
  for (MenuItem* item : {&recorder_.videoItem, &recorder_.soundItem}) optionsMenu_.addItem(*item);
  for (const auto& [item, operation] : kOperations) {
    item->setTarget([this, operation = operation](MenuItem&) { (recorder_.*operation)(); });
    optionsMenu_.addItem(*item);
  }
  for (MenuItem* item : {&recorder_.lowLatencyItem, &recorder_.timeBaseItem, &recorder_.soundClockItem})
    optionsMenu_.addItem(*item);
  optionsMenu_.setValidator([this](const MenuItem& item) { return recorder_.validateMenuItem(item); });
}

void RecordWindowController::proposePath(std::string_view path) {
  checkedName_ = nameOf(path);
  filenameTextField_.setStringValue(checkedName_);
  recorder_.setFilename(path);
  showNameHint("");
  startButton().setEnabled(true);
  refreshStatus();
}

void RecordWindowController::closeRecordSheet() {
  services_.application.endSheet(window());
  recorder_.unsetup();
}

void RecordWindowController::keyDown(const KeyPress& key) {
  if (key.character == U'r' && !key.hasModifiers && startButton().isEnabled()) recorder_.record();
}

void RecordWindowController::controlTextDidChange() {
  const std::string text = filenameTextField_.stringValue();
  checkedName_ = text;
  if (text.empty()) {
    startButton().setEnabled(false);
    return showNameHint(localized("Recording", "The movie needs a name."));
  }
  if (text.ends_with('.')) {
    services_.application.beep();
    checkedName_.pop_back();
    return filenameTextField_.setStringValue(checkedName_);
  }
  const std::string candidate =
      stringByDeletingLastPathComponent(recorder_.filename()) + "/" + text + std::string(kExtension);
  if (services_.files.fileExistsAtPath(candidate)) {
    startButton().setEnabled(false);
    return showNameHint(filledIn(localized("Recording", "“%1” exists already."), {text}));
  }
  startButton().setEnabled(true);
  recorder_.setFilename(candidate);
  showNameHint("");
}

// As long as there is trouble, it comes first.
void RecordWindowController::showNameHint(const std::string& hint) {
  nameHint_ = hint;
  nameHintTextField_.setStringValue(recorder_.trouble().empty() ? hint : recorder_.trouble());
}

void RecordWindowController::refreshStatus() {
  elapsedTimeTextField_.setStringValue(clockText(recorder_.isRecording() ? recorder_.recordedTime() : 0));
  soundLevelIndicator_.setHidden(!recorder_.hasSound());
  soundLevelIndicator_.setLevel(recorder_.soundLevel());
  showNameHint(nameHint_);
  refreshFreeSpace();
}

void RecordWindowController::refreshFreeSpace() {
  const double now = services_.runLoop.clock().uptime().count();
  if (recorder_.filename().empty() || (freeSpaceShownAt_ && now - *freeSpaceShownAt_ < kFreeSpaceEvery))
    return;
  freeSpaceShownAt_ = now;
  const auto free =
      services_.files.fileSystemFreeSizeAtPath(stringByDeletingLastPathComponent(recorder_.filename()));
  freeSpaceTextField_.setStringValue(free ? freeSpaceText(*free) : "");
}

}  // namespace clipwave
