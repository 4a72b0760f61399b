// One press of the Publish button: walks the channels, drives their transfers, and ends with the report.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/Application.h"
#include "platform/appkit/Controls.h"
#include "platform/appkit/TextView.h"
#include "platform/appkit/Window.h"
#include "platform/coredata/ManagedObjectContext.h"
#include "platform/foundation/Log.h"
#include "publish/FeedPreparation.h"
#include "transfer/CopyBackEnd.h"

namespace clipwave {

// The elements of the main window and the report sheet that the run shows itself in.
struct PublishElements {
  Window& mainWindow;
  Button& publishButton;
  ProgressIndicator& copyStatus;
  TextField& copyStatusTextField;
  Window& statusWindow;
  TextView& statusText;
};

// How a run ended, also where the window says nothing.
enum class PublishOutcome {
  Done,
  NotCommitted,  // an edit refused to be committed, or the focus could not be taken from it
  NotSaved,      // the store could not be saved
  BadURLs,       // channels still carry the placeholder URL
  Refused,  // a back-end did not start; it has said why, or the user cancelled, or nothing was left to copy
  ConnectionError,  // ".Mac Error!"
  Aborted,
};

class PublishRun final : public CopyDelegate {
 public:
  // Makes a new back-end for a publish-method tag.
  using BackEndFactory = std::function<std::shared_ptr<CopyBackEnd>(int protocolTag)>;
  struct Services {
    Application& application;
    Log& log;
    ArrayController& channelController;
    // The store; none while it could not be opened: then nothing is published.
    std::function<ManagedObjectContext*()> managedObjectContext;
    BackEndFactory makeBackEnd;
  };

  // Everything that is handed over must outlive the run.
  PublishRun(Services services, FeedPreparation& preparation, PublishElements elements);
  // Aborts a transfer that goes on, without waiting for it.
  ~PublishRun() override;

  // Starts a run, or cancels the one in progress. A cancelled run is over when its back-end has answered with
  // copyAborted, or is gone; until then its controls stay as they are, and a further press changes nothing.
  void save();
  void saveNextBatchOfFiles();
  void batchCopyCompleted();
  void connectionClosedCleanup();
  void closeStatusSheet();
  void statusSheetDidEnd(int returnCode);
  static void hiliteAndActivateURLs(TextView& textView);

  bool isCopying() const { return isCopying_; }
  void setIsCopying(bool isCopying) { isCopying_ = isCopying; }
  std::int32_t currentSaveIndex() const { return currentSaveIndex_; }
  const std::shared_ptr<CopyBackEnd>& cf() const { return cf_; }
  void setCf(std::shared_ptr<CopyBackEnd> backEnd);
  // What the last run passed over in silence or told without its reason, one line each, for a companion.
  std::vector<std::string> troubles() const;

  // Called once at every end of a run, with what became of it; for NotSaved the error is the store's.
  void setOnEnd(std::function<void(PublishOutcome, const std::optional<Error>&)> onEnd) {
    onEnd_ = std::move(onEnd);
  }
  // Called at each status line, with its text, and at each finished file, with "NAME copied".
  void setOnProgress(std::function<void(std::string_view statusLine)> onProgress) {
    onProgress_ = std::move(onProgress);
  }

  // What a back-end of an earlier run still sends, after it was cancelled, does not touch the run in
  // progress.
  void fileCopied(const CopyEntry& entry) override;
  void updateCopyStatusForFile(std::string_view filename, int percentComplete) override;
  void copyCompleted(CopyBackEnd& backEnd) override;
  void connectionError(CopyBackEnd& backEnd, int error, std::string_view errorMessage) override;
  void copyAborted(CopyBackEnd& backEnd) override;

 private:
  void cancel();
  void showBadURLs();
  void startTransfer(ManagedObject& channel);
  void showStatus(std::string_view text);
  bool isAwaited(const CopyBackEnd& backEnd) const { return awaited_.lock().get() == &backEnd; }
  bool isFromEarlierRun(const CopyBackEnd& backEnd) const { return isAwaiting_ && !isAwaited(backEnd); }
  bool stopAwaiting();
  void noteTroubles(const CopyBackEnd& backEnd);
  void end(PublishOutcome outcome, const std::optional<Error>& error = {});

  Services services_;
  FeedPreparation& preparation_;
  PublishElements elements_;
  bool isCopying_ = false;
  std::shared_ptr<CopyBackEnd> cf_;
  // Whether a back-end is still to end the run, and which: also the one that Cancel has let go of, which its
  // transactions keep alive until it has answered.
  bool isAwaiting_ = false;
  std::weak_ptr<CopyBackEnd> awaited_;
  std::int32_t currentSaveIndex_ = 0;
  std::vector<std::string> troubles_;  // of the back-ends
  std::function<void(PublishOutcome, const std::optional<Error>&)> onEnd_;
  std::function<void(std::string_view)> onProgress_;
};

}  // namespace clipwave
