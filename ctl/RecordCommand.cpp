// record: an episode from the camera, without a window.
#include <unistd.h>

#include <charconv>
#include <cmath>
#include <iostream>
#include <optional>

#include "ctl/Commands.h"
#include "ctl/Interrupts.h"
#include "ctl/RecordLookup.h"

namespace clipwave {

namespace {

struct RecordOptions {
  double seconds = 0;
  std::string name;  // "": as proposed
};

std::optional<double> positiveNumber(const std::string& text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole && std::isfinite(number) && number > 0 ? std::optional(number) : std::nullopt;
}

// Nothing after what is wrong was reported.
std::optional<RecordOptions> optionsFromArguments(const CommandArguments& arguments) {
  const std::string text = arguments.value("--seconds").value_or("");
  const auto seconds = positiveNumber(text);
  if (!seconds) {
    usageError("--seconds takes a number above 0, not \"" + text + "\".");
    return std::nullopt;
  }
  const auto name = arguments.value("--name");
  // The field that takes the name lets none end with a full stop.
  if (name && (name->empty() || name->ends_with('.') || name->find('/') != std::string::npos)) {
    usageError("“" + *name + "” cannot be a movie’s name.");
    return std::nullopt;
  }
  return RecordOptions{*seconds, name.value_or("")};
}

// Gives the movie its name; false after it was reported that it cannot have it.
bool takeName(RecordWindowController& sheet, const std::string& name) {
  if (!name.empty()) sheet.filenameTextField().edit(name);
  if (sheet.startButton().isEnabled()) return true;
  printError("clipwavectl", sheet.nameHintTextField().stringValue());
  return false;
}

// Runs the loop until the recording is as long as wanted, ends by itself or is interrupted.
void waitForEnd(Companion& companion, RecordWindowController& sheet, double seconds) {
  Recorder& recorder = sheet.recorder();
  const bool showsProgress = ::isatty(STDERR_FILENO) != 0 && !companion.isVerbose();
  std::string shown;
  // Told of every picture.
  const Observation pictures = recorder.observe([&] {
    if (!recorder.isRecording() || recorder.recordedTime() >= seconds) companion.runLoop().stop();
    const std::string& elapsed = sheet.elapsedTimeTextField().stringValue();
    if (showsProgress && elapsed != shown) std::cerr << "\r\033[KRecording " << elapsed << std::flush;
    shown = elapsed;
  });
  companion.runLoop().run();
  if (showsProgress) std::cerr << "\r\033[K" << std::flush;
}

}  // namespace

ExitStatus runRecord(Companion& companion, const CommandArguments& arguments) {
  const auto options = optionsFromArguments(arguments);
  if (!options) return kUsage;
  ArrayController& channels = companion.controller().channelController();
  const auto channel = findChannel(channels, arguments.words().front());
  if (!channel) return failure(channel.error());
  channels.setSelectedObjects({*channel});

  // Before the devices' threads begin: a signal that the main thread holds back would come to one of them.
  const Interrupts interrupts(companion.runLoop(), [&companion] { companion.runLoop().stop(); });
  RecordHandOff& handOff = companion.controller().recordHandOff();
  handOff.recordMovie();
  if (!handOff.isOpen()) return kFailed;  // it was told why
  RecordWindowController& sheet = handOff.recordWindowController();
  if (!takeName(sheet, options->name)) return kFailed;
  const std::string path = sheet.recorder().filename();
  bool isMade = false;
  const auto made = companion.services().notifications.observe(
      kMovieCreated, [&isMade](const Notification&) { isMade = true; });
  sheet.startButton().performClick();
  if (!sheet.recorder().isRecording()) {
    if (!companion.shell().hasFailed()) return failure("“" + path + "” cannot be written.");
    return kFailed;
  }
  waitForEnd(companion, sheet, options->seconds);
  handOff.endRecording();
  const ExitStatus status = companion.finish();
  if (isMade) std::cout << path << '\n';
  return status;
}

}  // namespace clipwave
