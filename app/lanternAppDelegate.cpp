#include "app/lanternAppDelegate.h"

#include <algorithm>

#include "model/EpisodeFromFile.h"
#include "model/LibraryModel.h"
#include "platform/coredata/PersistentStoreCoordinator.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/TimeZone.h"

namespace clipwave {

namespace {

constexpr std::size_t kErrorsShown = 3;

}  // namespace

lanternAppDelegate::lanternAppDelegate(const ApplicationServices& services, LibraryHost& host,
                                       DelegateOutlets outlets)
    : services_(services), host_(host), outlets_(outlets) {}

lanternAppDelegate::~lanternAppDelegate() {
  // The lists refer to records of the context that goes now.
  for (ArrayController* list :
       {&outlets_.vodcastController, &outlets_.imageController, &outlets_.channelController}) {
    list->setManagedObjectContext(nullptr);
  }
}

const ManagedObjectModel& lanternAppDelegate::managedObjectModel() {
  if (!managedObjectModel_) managedObjectModel_ = makeLibraryModel(host_);
  return *managedObjectModel_;
}

std::optional<std::string> lanternAppDelegate::applicationSupportFolder() {
  auto folder = services_.process.applicationSupportFolder();
  if (!folder) {
    services_.application.runAlertPanel("Alert", "Can't find application support folder", "Quit");
    services_.application.terminate();
    return std::nullopt;
  }
  return stringByAppendingPathComponent(*folder, "Clipwave");
}

ManagedObjectContext* lanternAppDelegate::managedObjectContext() {
  if (managedObjectContext_) return managedObjectContext_.get();
  const bool isRetry = storeError_.has_value();
  storeError_.reset();
  const auto folder = applicationSupportFolder();
  if (!folder) {
    storeError_ = cocoaError(kFileNoSuchFileError, "Can't find application support folder");
    return nullptr;
  }
  // A folder that cannot be made shows when the store is added.
  if (!services_.files.fileExistsAtPath(*folder)) (void)services_.files.createDirectoryAtPath(*folder);
  url_ = stringByAppendingPathComponent(*folder, "Clipwave.xml");

  auto coordinator = std::make_unique<PersistentStoreCoordinator>(managedObjectModel(), services_.files);
  if (const auto added = coordinator->addPersistentStore(NSXMLStoreType, url_); !added) {
    storeError_ = added.error();
    services_.application.presentError(added.error());
    return nullptr;
  }
  managedObjectContext_ = std::make_unique<ManagedObjectContext>(std::move(coordinator), services_.runLoop);
  outlets_.channelController.setManagedObjectContext(managedObjectContext_.get());
  outlets_.vodcastController.setManagedObjectContext(managedObjectContext_.get());
  outlets_.imageController.setManagedObjectContext(managedObjectContext_.get());
  if (isRetry) {
    // The start-up's fetch found no store.
    outlets_.channelController.fetch();
    outlets_.imageController.fetch();
  }
  return managedObjectContext_.get();
}

UndoManager* lanternAppDelegate::windowWillReturnUndoManager(const Window&) {
  // Asked at every look at the Edit menu: a store that could not be opened is told once, not each time.
  ManagedObjectContext* context = storeError_ ? nullptr : managedObjectContext();
  return context != nullptr ? &context->undoManager() : nullptr;
}

void lanternAppDelegate::saveAction() {
  ManagedObjectContext* context = managedObjectContext();
  if (context == nullptr) return;
  if (const auto saved = context->save(); !saved) services_.application.presentError(saved.error());
}

TerminateReply lanternAppDelegate::applicationShouldTerminate() {
  if (!managedObjectContext_) return TerminateReply::TerminateNow;
  if (!managedObjectContext_->commitEditing()) return TerminateReply::TerminateCancel;
  const auto saved = managedObjectContext_->save();
  if (saved) return TerminateReply::TerminateNow;
  if (services_.application.presentError(saved.error())) return TerminateReply::TerminateCancel;
  const auto answer = services_.application.runAlertPanel(
      "", "Could not save changes while quitting. Quit anyway?", "Quit anyway", "Cancel");
  return answer == Alert::Answer::Default ? TerminateReply::TerminateNow : TerminateReply::TerminateCancel;
}

Error lanternAppDelegate::willPresentError(const Error& error) {
  if (error.domain != NSCocoaErrorDomain || error.code != kValidationMultipleErrorsError) return error;
  const auto& details = error.detailedErrors;
  std::string message = std::to_string(details.size()) + " validation errors have occurred";
  message += details.size() > kErrorsShown ? ".\nThe first 3 are:\n" : ":\n";
  for (std::size_t i = 0; i < std::min(details.size(), kErrorsShown); ++i) {
    message += details[i].localizedDescription + "\n";
  }
  Error rewritten = error;
  rewritten.localizedDescription = std::move(message);
  return rewritten;
}

void lanternAppDelegate::openFiles(const std::vector<std::string>& paths) {
  ManagedObjectContext* context = managedObjectContext();
  if (context == nullptr) return;  // the user has been told
  // An edit that is refused would keep its channel selected, and the episodes would go there.
  if (!context->commitEditing()) context->discardEditing();
  ManagedObject* channel = outlets_.channelController.newObject();
  if (channel == nullptr) return;
  outlets_.channelController.addObject(*channel);
  outlets_.channelController.setSelectedObjects({channel});
  const std::string prefix = services_.defaults.string("defaultPodcastPrefix");
  for (const std::string& path : paths) addEpisodeFromFile(outlets_.vodcastController, prefix, path);
  outlets_.channelController.setUndoActionName(localized("Undo", "Open Movies"));
}

std::vector<NamedCode> lanternAppDelegate::channelNames() const {
  return {{"Summary", "vcSummary"}, {"Subtitle", "vcSubtitle"}};
}

std::vector<std::string> lanternAppDelegate::timezones() const {
  return TimeZone::knownTimeZoneNames();
}

void lanternAppDelegate::showHelp() {
  const auto path = services_.bundle.pathForResource("Clipwave Instructions", "pdf");
  if (path) services_.workspace.openFile(*path);
}

}  // namespace clipwave
