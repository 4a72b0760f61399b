// publish: a run from the command line, with the terminal in place of the window.
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <iostream>

#include "ctl/Commands.h"

namespace clipwave {

namespace {

enum class Existing { Ask, Replace, Keep };

// What becomes of a file that exists at the destination.
std::optional<Alert::Answer> answerForExistingFile(Companion& companion, const Alert& alert,
                                                   Existing existing) {
  if (alert.title != "File Exists!") return std::nullopt;
  if (existing == Existing::Replace) return Alert::Answer::Alternate;
  if (existing == Existing::Keep) {
    const auto& channels = companion.controller().channelController().content();
    const auto index = static_cast<std::size_t>(companion.controller().publishRun().currentSaveIndex());
    const bool isFeed =
        index < channels.size() && channels[index]->primitiveValue("filename").stringValue() == alert.subject;
    return isFeed ? Alert::Answer::Alternate : Alert::Answer::Default;
  }
  Alert question = alert;
  if (const auto answer = askAtTerminal(question)) return answer;
  printError(alert.title, "The file " + alert.subject + " already exists. Say --replace or --keep.");
  return Alert::Answer::Other;
}

std::string sentenceFor(PublishOutcome outcome, const std::optional<Error>& error) {
  switch (outcome) {
    case PublishOutcome::NotCommitted:
      return "An edit could not be committed. Nothing was published.";
    case PublishOutcome::NotSaved:
      return error ? error->localizedDescription : "The library could not be saved. Nothing was published.";
    case PublishOutcome::Refused:
      return "The run has stopped. Later channels were not published.";
    case PublishOutcome::Aborted:
      return "The run was cancelled.";
    default:
      return {};
  }
}

// Turns the first interrupt into the Cancel button for as long as it lives.
class InterruptCancels {
 public:
  InterruptCancels(RunLoop& runLoop, std::function<void()> cancel) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, &before_);
    descriptor_ = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    watch_ = runLoop.watch(descriptor_, RunLoop::Readiness::Readable, [this, cancel = std::move(cancel)] {
      signalfd_siginfo info;
      if (::read(descriptor_, &info, sizeof info) > 0) cancel();
    });
  }
  ~InterruptCancels() {
    watch_.reset();
    if (descriptor_ >= 0) ::close(descriptor_);
    sigprocmask(SIG_SETMASK, &before_, nullptr);
  }
  InterruptCancels(const InterruptCancels&) = delete;
  InterruptCancels& operator=(const InterruptCancels&) = delete;

 private:
  sigset_t before_{};
  int descriptor_ = -1;
  std::unique_ptr<DescriptorWatch> watch_;
};

}  // namespace

ExitStatus runPublish(Companion& companion, const CommandLine& arguments) {
  Existing existing = Existing::Ask;
  for (const std::string& argument : arguments) {
    const Existing wanted = argument == "--replace" ? Existing::Replace : Existing::Keep;
    if (argument != "--replace" && argument != "--keep")
      return usageError("publish has no option " + argument + ".");
    if (existing != Existing::Ask && existing != wanted)
      return usageError("Say --replace or --keep, not both.");
    existing = wanted;
  }
  if (existing != Existing::Ask)
    companion.defaults().setArgumentValues({{"noConfirm", existing == Existing::Replace}});
  companion.shell().setAnswerer(
      [&](const Alert& alert) { return answerForExistingFile(companion, alert, existing); });

  PublishRun& run = companion.controller().publishRun();
  std::optional<PublishOutcome> outcome;
  std::optional<Error> error;
  run.setOnEnd([&](PublishOutcome ended, const std::optional<Error>& why) {
    outcome = ended;
    error = why;
    companion.runLoop().stop();
  });
  if (::isatty(STDERR_FILENO) != 0) {
    run.setOnProgress([](std::string_view line) { std::cerr << "\r\033[K" << line << std::flush; });
  }
  {
    InterruptCancels interrupts(companion.runLoop(), [&] { run.save(); });
    companion.interface().publishButton.performClick();
    if (!outcome) companion.runLoop().run();
  }
  if (::isatty(STDERR_FILENO) != 0) std::cerr << "\r\033[K" << std::flush;

  const auto troubles = companion.controller().publishTroubles();
  for (const std::string& trouble : troubles) printError("clipwavectl", trouble);
  if (const std::string sentence = sentenceFor(*outcome, error); !sentence.empty())
    printError("clipwavectl", sentence);
  if (*outcome == PublishOutcome::Done) std::cout << companion.interface().statusTextView.string();
  const ExitStatus status = companion.finish();
  return *outcome == PublishOutcome::Done && troubles.empty() ? status : kFailed;
}

}  // namespace clipwave
