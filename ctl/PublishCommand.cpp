// publish: a run from the command line, with the terminal in place of the window.
#include <poll.h>
#include <unistd.h>

#include <iostream>

#include "ctl/Commands.h"
#include "ctl/Interrupts.h"
#include "ctl/ProgressBar.h"

namespace clipwave {

namespace {

enum class Existing { Ask, Replace, Keep };

// The channel that the run is at, or was at when it ended; none after the last one.
ManagedObject* currentChannel(Companion& companion) {
  const auto& channels = companion.controller().channelController().content();
  const auto index = static_cast<std::size_t>(companion.controller().publishRun().currentSaveIndex());
  return index < channels.size() ? channels[index] : nullptr;
}

// Above all, what becomes of a file that exists at the destination.
std::optional<Alert::Answer> answerFor(Companion& companion, Alert& alert, Existing existing,
                                       int interrupts) {
  // A run that a timer starts takes nobody to the page for signing up.
  if (alert.title == "No .Mac Account!") return declineAtTerminal(alert);
  if (alert.title != "File Exists!") return std::nullopt;
  // Who interrupts while file after file is asked about, perhaps of a server that hangs, is not to wait for
  // the last of them.
  pollfd interrupt{interrupts, POLLIN, 0};
  if (::poll(&interrupt, 1, 0) > 0) return Alert::Answer::Other;
  if (existing == Existing::Replace) return Alert::Answer::Alternate;
  if (existing == Existing::Keep) {
    ManagedObject* const channel = currentChannel(companion);
    const bool isFeed =
        channel != nullptr && channel->primitiveValue("filename").stringValue() == alert.subject;
    return isFeed ? Alert::Answer::Alternate : Alert::Answer::Default;
  }
  if (const auto answer = askAtTerminal(alert, interrupts)) return answer;
  printError(alert.title, "The file " + alert.subject + " already exists. Say --replace or --keep.");
  return Alert::Answer::Other;
}

std::string titleOf(ManagedObject* channel) {
  return channel != nullptr ? std::string(channel->value("vcTitle").stringValue()) : "";
}

std::string sentenceFor(PublishOutcome outcome, const std::optional<Error>& error, Companion& companion) {
  switch (outcome) {
    case PublishOutcome::NotCommitted:
      return "An edit could not be committed. Nothing was published.";
    case PublishOutcome::NotSaved:
      return error ? error->localizedDescription : "The library could not be saved. Nothing was published.";
    case PublishOutcome::Refused:
    case PublishOutcome::ConnectionError:
      return "The run has stopped at \"" + titleOf(currentChannel(companion)) +
             "\". This channel and later ones were not published.";
    case PublishOutcome::Aborted:
      return "The run was cancelled.";
    default:
      return {};
  }
}

// Hands what was published to the podcast client; false after the troubles were reported.
bool subscribe(Companion& companion) {
  SubscriptionHandOff& handOff = companion.controller().subscriptionHandOff();
  handOff.openInItunes();
  std::vector<std::string> troubles = handOff.troubles();
  const FeedPreparation& prepared = companion.controller().feedPreparation();
  if (prepared.urlsToLaunch().size() < prepared.pubURLs().size())
    troubles.emplace_back("Of channels with the same title, only the last one was handed over.");
  for (const std::string& trouble : troubles) printError("clipwavectl", trouble);
  return troubles.empty();
}

}  // namespace

ExitStatus runPublish(Companion& companion, const CommandArguments& arguments) {
  const Existing existing = arguments.has("--replace") ? Existing::Replace
                            : arguments.has("--keep")  ? Existing::Keep
                                                       : Existing::Ask;
  if (existing != Existing::Ask)
    companion.defaults().setArgumentValues({{"noConfirm", existing == Existing::Replace}});

  PublishRun& run = companion.controller().publishRun();
  std::optional<PublishOutcome> outcome;
  std::optional<Error> error;
  run.setOnEnd([&](PublishOutcome ended, const std::optional<Error>& why) {
    outcome = ended;
    error = why;
    companion.runLoop().stop();
  });
  // Log lines say the same, and would break into it.
  const bool showsProgress = ::isatty(STDERR_FILENO) != 0 && !companion.isVerbose();
  if (showsProgress) {
    run.setOnProgress([](std::string_view line) {
      // One column stays free: a terminal breaks the line behind its last one.
      std::cerr << "\r\033[K" << progressText(line, terminalColumns() - 1) << std::flush;
    });
  }
  // Not where the run has just ended: the button would start another.
  Interrupts interrupts(companion.runLoop(), [&run] {
    if (run.isCopying()) run.save();
  });
  companion.shell().setAnswerer(
      [&](Alert& alert) { return answerFor(companion, alert, existing, interrupts.descriptor()); });
  companion.interface().publishButton.performClick();
  if (!outcome) companion.runLoop().run();
  if (showsProgress) std::cerr << "\r\033[K" << std::flush;

  const auto troubles = run.troubles();
  for (const std::string& trouble : troubles) printError("clipwavectl", trouble);
  if (const std::string sentence = sentenceFor(*outcome, error, companion); !sentence.empty())
    printError("clipwavectl", sentence);
  // Saving again would fail again; the run has changed nothing.
  if (*outcome == PublishOutcome::NotSaved) return kFailed;
  const ExitStatus status = companion.finish();
  if (*outcome != PublishOutcome::Done) return kFailed;
  // Only now: a reader that has gone away ends the process, and what was sent is to be on record by then.
  std::cout << companion.interface().statusTextView.string();
  const bool handedOff = !arguments.has("--subscribe") || subscribe(companion);
  return troubles.empty() && handedOff ? status : kFailed;
}

}  // namespace clipwave
