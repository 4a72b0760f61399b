// The application's delegate: owns the store that holds the library, saves it, quits, shows errors, opens
// files from the desktop.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/ApplicationServices.h"
#include "model/LibraryHost.h"
#include "platform/appkit/ArrayController.h"
#include "platform/coredata/ManagedObjectContext.h"
#include "platform/coredata/ManagedObjectModel.h"
#include "platform/coredata/UndoManager.h"

namespace clipwave {

// The outlets of the main interface that the delegate holds.
struct DelegateOutlets {
  Window& window;
  ArrayController& vodcastController;
  ArrayController& channelController;
  ArrayController& imageController;
};

// One of the choices that the interface offers: what is shown, and the channel attribute that it stands for.
struct NamedCode {
  std::string name;
  std::string code;
  bool operator==(const NamedCode&) const = default;
};

class lanternAppDelegate final : public ApplicationDelegate {
 public:
  // `host` is what the records ask; it outlives the delegate, as do the services and the outlets.
  lanternAppDelegate(const ApplicationServices& services, LibraryHost& host, DelegateOutlets outlets);
  ~lanternAppDelegate() override;

  // Built on the first call, then kept.
  const ManagedObjectModel& managedObjectModel();
  // The folder "Clipwave" in the Application Support folder; not made. Without one the user is told and the
  // application terminates.
  std::optional<std::string> applicationSupportFolder();
  // The store stack, built on the first call and handed to the lists. None while the store cannot be opened:
  // the error has been shown, and the next call tries again.
  ManagedObjectContext* managedObjectContext();
  // Why the last call of managedObjectContext answered none.
  const std::optional<Error>& storeError() const { return storeError_; }
  const std::string& url() const { return url_; }

  // The context's undo manager, the one of every window; none without a context.
  UndoManager* windowWillReturnUndoManager(const Window& window);
  void saveAction();
  std::vector<NamedCode> channelNames() const;
  std::vector<std::string> timezones() const;
  void showHelp();
  ArrayController& channelController() { return outlets_.channelController; }
  ArrayController& vodcastController() { return outlets_.vodcastController; }

  TerminateReply applicationShouldTerminate() override;
  Error willPresentError(const Error& error) override;
  void openFiles(const std::vector<std::string>& paths) override;
  bool applicationShouldTerminateAfterLastWindowClosed() override { return true; }

 private:
  ApplicationServices services_;
  LibraryHost& host_;
  DelegateOutlets outlets_;
  std::unique_ptr<ManagedObjectModel> managedObjectModel_;
  std::string url_;
  std::optional<Error> storeError_;
  std::unique_ptr<ManagedObjectContext> managedObjectContext_;
};

}  // namespace clipwave
