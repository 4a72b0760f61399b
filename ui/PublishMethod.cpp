#include "ui/PublishMethod.h"

#include "model/Channel.h"
#include "model/LibraryModel.h"
#include "platform/foundation/Localization.h"
#include "transfer/CopyFiles.h"

namespace clipwave {

namespace {

OpenPanel folderPanel() {
  OpenPanel panel;
  panel.canChooseFiles = false;
  panel.canChooseDirectories = true;
  panel.canCreateDirectories = true;
  panel.message = "Select a folder to publish to:";
  return panel;
}

}  // namespace

void PublishMethod::changePublishMethod(const PopUpButton& sender) {
  const auto tag = sender.selectedTag();
  if (tag == kFolderMethod) {
    chooseFolder();
  } else if (tag == kDotMacMethod) {
    chooseDotMac();
  }
  services_.windowLayout.updateWindowSize();
}

void PublishMethod::chooseDestination() {
  const OpenPanelAnswer chosen = services_.application.runOpenPanel(folderPanel());
  if (chosen.empty()) return;
  setURLTextFieldsWithURL(std::nullopt, chosen.front());
  services_.channelController.setUndoActionName(localized("Undo", "Change of Destination"));
}

void PublishMethod::chooseFolder() {
  const OpenPanelAnswer chosen = services_.application.runOpenPanel(folderPanel());
  if (!chosen.empty()) {
    completeChoice([&] { setURLTextFieldsWithURL(std::string(kPlaceholderURL), chosen.front()); });
  } else if (ManagedObjectContext* context = services_.managedObjectContext()) {
    // A change that the user has called off is not offered for repetition.
    context->undoManager().undoAndForget();
  }
}

void PublishMethod::chooseDotMac() {
  if (CopyFiles::dmusername(services_.dotMac)) {
    completeChoice([this] {
      for (ManagedObject* channel : services_.channelController.selectedObjects())
        static_cast<Channel&>(*channel).setDotMacDefaults();
    });
    return;
  }
  CopyFiles::offerToSignUp(services_.application, services_.dotMac);
  completeChoice([this] { services_.channelController.selection().setValue("protocolTag", kFolderMethod); });
}

void PublishMethod::setURLTextFieldsWithURL(const std::optional<std::string>& url,
                                            const std::string& mediaPath) {
  for (ManagedObject* channel : services_.channelController.selectedObjects()) {
    channel->setValue("mediaPath", mediaPath);
    if (!url) continue;
    channel->setValue("websiteURL", *url);
    channel->setValue("vcURL", *url);
  }
}

void PublishMethod::protocolChanged() {
  services_.windowLayout.updateWindowSize();
}

void PublishMethod::completeChoice(const std::function<void()>& changes) {
  ManagedObjectContext* context = services_.managedObjectContext();
  if (context == nullptr) return changes();
  UndoManager& undoManager = context->undoManager();
  undoManager.performInGroup(undoManager.groupToUndo(), changes);
}

}  // namespace clipwave
