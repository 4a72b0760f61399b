#include "publish/PublishRun.h"

#include <utility>

#include "model/LibraryModel.h"
#include "publish/SubscriptionLinks.h"

namespace clipwave {
namespace {

// Whether any channel of the whole library still waits for its real URL.
bool anyChannelHasPlaceholderURL(ManagedObjectContext* context) {
  if (context == nullptr) return false;
  const std::optional<FetchRequest> request =
      context->managedObjectModel().fetchRequestFromTemplate("defaultURLFetch1");
  if (!request) return false;
  const Result<std::vector<ManagedObject*>> channels = context->executeFetchRequest(*request);
  return channels.ok() && !channels->empty();
}

}  // namespace

PublishRun::PublishRun(Services services, FeedPreparation& preparation, PublishElements elements)
    : services_(std::move(services)), preparation_(preparation), elements_(elements) {}

PublishRun::~PublishRun() {
  // What a transfer that goes on still reports would reach a run that is no longer there.
  if (const auto backEnd = awaited_.lock()) backEnd->abandon();
}

void PublishRun::setCf(std::shared_ptr<CopyBackEnd> backEnd) {
  if (backEnd) {
    awaited_ = backEnd;
    isAwaiting_ = true;
  }
  cf_ = std::move(backEnd);
}

// Whether the run was still to be ended by a back-end.
bool PublishRun::stopAwaiting() {
  awaited_.reset();
  return std::exchange(isAwaiting_, false);
}

void PublishRun::save() {
  if (isCopying_) {
    cancel();
    return;
  }
  preparation_.forgetTroubles();
  troubles_.clear();
  preparation_.setPubURLs({});
  currentSaveIndex_ = 0;
  ManagedObjectContext* context = services_.managedObjectContext();
  if (context == nullptr) return end(PublishOutcome::NotSaved);
  if (!context->commitEditing() || !elements_.mainWindow.makeFirstResponder(&elements_.mainWindow)) {
    return end(PublishOutcome::NotCommitted);
  }
  if (const Result<void> saved = context->save(); !saved) return end(PublishOutcome::NotSaved, saved.error());
  preparation_.setUrlsToLaunch({});
  saveNextBatchOfFiles();
}

void PublishRun::cancel() {
  std::shared_ptr<CopyBackEnd> backEnd = cf_;
  if (backEnd) backEnd->abort();
  // Unless what the abort called has begun another run already.
  if (cf_ == backEnd) setCf(nullptr);
  backEnd = nullptr;
  if (!awaited_.expired()) return;
  // Nobody is left to answer: the back-end had nothing in progress that would keep it alive, or the run ended
  // with its controls still in the copying look.
  connectionClosedCleanup();
  if (stopAwaiting()) end(PublishOutcome::Aborted);
}

void PublishRun::saveNextBatchOfFiles() {
  const std::vector<ManagedObject*>& channels = services_.channelController.content();
  const auto count = static_cast<std::int32_t>(channels.size());
  const auto channelAt = [&channels](std::int32_t index) {
    return channels[static_cast<std::size_t>(index)];
  };
  while (currentSaveIndex_ < count && !channelAt(currentSaveIndex_)->value("vcPublish").boolValue()) {
    ++currentSaveIndex_;
  }
  if (currentSaveIndex_ >= count) {
    services_.log.write("done");
    batchCopyCompleted();
    return;
  }
  if (anyChannelHasPlaceholderURL(services_.managedObjectContext())) {
    showBadURLs();
    return end(PublishOutcome::BadURLs);
  }
  ManagedObject& channel = *channelAt(currentSaveIndex_);
  preparation_.prepareFilesForIndex(currentSaveIndex_);
  startTransfer(channel);
}

void PublishRun::showBadURLs() {
  Alert alert;
  alert.title = "Bad URLs";
  alert.message = "Some of the channels have the default URL name (" + std::string(kPlaceholderURL) +
                  "). Please change to your URL before publishing.";
  services_.application.beginAlertSheet(std::move(alert), elements_.mainWindow, {});
}

void PublishRun::startTransfer(ManagedObject& channel) {
  const auto protocolTag = static_cast<int>(channel.value("protocolTag").integerValue());
  const std::shared_ptr<CopyBackEnd> backEnd = services_.makeBackEnd(protocolTag);
  setCf(backEnd);
  if (!backEnd->copyFiles(preparation_.filesToCopy(), channel.value("mediaPath").optionalString(), *this)) {
    // A failure that was reported from within the call has ended the run already.
    if (!isAwaited(*backEnd)) return;
    noteTroubles(*backEnd);
    // Nothing more will come from this back-end; left as they are, the controls of an earlier channel's
    // transfer would offer a "Cancel" that cancels nothing.
    connectionClosedCleanup();
    return end(PublishOutcome::Refused);
  }
  elements_.copyStatus.startAnimation();
  elements_.publishButton.setTitle("Cancel");
  showStatus("Publishing...");
  elements_.copyStatusTextField.setHidden(false);
  isCopying_ = true;
}

void PublishRun::batchCopyCompleted() {
  connectionClosedCleanup();
  elements_.statusText.setString(reportText(preparation_.pubURLs()));
  hiliteAndActivateURLs(elements_.statusText);
  Window& sheet = elements_.statusWindow;
  services_.application.beginSheet(sheet, elements_.mainWindow,
                                   [this](int returnCode) { statusSheetDidEnd(returnCode); });
  sheet.makeKeyAndOrderFront();
  sheet.makeFirstResponder(&sheet);
  end(PublishOutcome::Done);
}

void PublishRun::connectionClosedCleanup() {
  elements_.copyStatus.stopAnimation();
  elements_.publishButton.setEnabled(true);
  elements_.publishButton.setTitle("Publish");
  elements_.copyStatusTextField.setHidden(true);
  isCopying_ = false;
}

void PublishRun::closeStatusSheet() {
  services_.application.endSheet(elements_.statusWindow);
}

void PublishRun::statusSheetDidEnd(int) {
  elements_.statusWindow.orderOut();
}

void PublishRun::hiliteAndActivateURLs(TextView& textView) {
  TextStorage& storage = textView.textStorage();
  storage.beginEditing();
  for (const TextRange& range : findSubscriptionLinks(storage.string())) {
    const std::string url = storage.string().substr(range.location, range.length);
    storage.addAttributes({{std::string(NSLinkAttributeName), url},
                           {std::string(NSUnderlineStyleAttributeName), 1},
                           {std::string(NSForegroundColorAttributeName), "blue"}},
                          range);
  }
  storage.endEditing();
}

void PublishRun::fileCopied(const CopyEntry& entry) {
  if (const auto episode = entry.managedObject.lock(); episode && !episode->isDeleted()) {
    episode->setValue("vcCopy", false);
  }
  if (onProgress_) onProgress_(entry.filename + " copied");
}

void PublishRun::updateCopyStatusForFile(std::string_view filename, int percentComplete) {
  const std::string text = std::string(filename) + " completed " + std::to_string(percentComplete);
  services_.log.write(text);
  showStatus(text);
}

void PublishRun::showStatus(std::string_view text) {
  elements_.copyStatusTextField.setStringValue(text);
  if (onProgress_) onProgress_(text);
}

void PublishRun::copyCompleted(CopyBackEnd& backEnd) {
  if (!isAwaited(backEnd)) return;
  // Cancelled at the moment when the last file had arrived: there is nothing left to abort, and still the
  // run is over.
  if (cf_.get() != &backEnd) return copyAborted(backEnd);
  noteTroubles(backEnd);
  // The next channel's back-end takes this one's place while it is still on the stack.
  const std::shared_ptr<CopyBackEnd> untilReturn = cf_;
  ++currentSaveIndex_;
  saveNextBatchOfFiles();
}

void PublishRun::connectionError(CopyBackEnd& backEnd, int, std::string_view errorMessage) {
  if (isFromEarlierRun(backEnd)) return;
  noteTroubles(backEnd);
  const bool endsRun = stopAwaiting();
  connectionClosedCleanup();
  services_.application.runCriticalAlertPanel(".Mac Error!", errorMessage, "OK");
  if (endsRun) end(PublishOutcome::ConnectionError);
}

void PublishRun::copyAborted(CopyBackEnd& backEnd) {
  if (isFromEarlierRun(backEnd)) return;
  noteTroubles(backEnd);
  const bool endsRun = stopAwaiting();
  connectionClosedCleanup();
  if (endsRun) end(PublishOutcome::Aborted);
}

void PublishRun::noteTroubles(const CopyBackEnd& backEnd) {
  troubles_.insert(troubles_.end(), backEnd.troubles().begin(), backEnd.troubles().end());
}

std::vector<std::string> PublishRun::troubles() const {
  std::vector<std::string> all = preparation_.troubles();
  all.insert(all.end(), troubles_.begin(), troubles_.end());
  return all;
}

void PublishRun::end(PublishOutcome outcome, const std::optional<Error>& error) {
  stopAwaiting();
  // The callee may replace what is called at the next end.
  if (const auto onEnd = onEnd_) onEnd(outcome, error);
}

}  // namespace clipwave
