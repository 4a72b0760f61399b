#include "app/MainInterface.h"

#include "model/Channel.h"
#include "platform/foundation/Localization.h"

namespace clipwave {

MainInterface::MainInterface(const ApplicationServices& services)
    : vodcastController(services.application, services.files, services.process),
      vcastTableView(services.application) {
  vodcastController.bindContentToSelectionOf(channelController, "children");
  vcastTableView.bind("content", &vodcastController, "arrangedObjects");
  channelTableView.bind("content", &channelController, "arrangedObjects");

  mainWindow.setTitle("Clipwave");
  // The stored layout is the advanced one.
  lowerView.setFrame({{0, kLowerViewOriginY}, {1024, 240}});
  publishButton.setTitle("Publish");
  copyStatusTextField.setHidden(true);
  protocolPopUp.setItems({{localized("Publishing", "Folder"), kFolderMethod}, {".Mac", kDotMacMethod}});
}

}  // namespace clipwave
