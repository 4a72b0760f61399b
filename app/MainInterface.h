// The main interface: the window with its elements and the list controllers, as the program starts with them.
#pragma once

#include "app/ApplicationServices.h"
#include "model/LibraryModel.h"
#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Controls.h"
#include "platform/appkit/MovieView.h"
#include "platform/appkit/PopUpBinding.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/TextView.h"
#include "platform/appkit/Window.h"
#include "platform/foundation/Localization.h"
#include "ui/CustomArrayController.h"
#include "ui/CustomTableView.h"
#include "ui/MainWindow.h"
#include "ui/WindowLayout.h"

namespace clipwave {

struct MainInterface {
  explicit MainInterface(const ApplicationServices& services);
  MainInterface(const MainInterface&) = delete;
  MainInterface& operator=(const MainInterface&) = delete;

  ArrayController channelController{std::string(kChannelEntity)};
  CustomArrayController vodcastController;
  ArrayController imageController{std::string(kImageEntity)};

  MainWindow mainWindow;
  CustomTableView vcastTableView;
  TableView channelTableView;
  MovieView previewPane;
  TextField rssURLBox;
  Window prefWindow;
  Window rssFeedWindow;
  TextField titleTextField;
  TextField channelTitleTextField;
  // The report's text; both names of the outlets denote this one view.
  TextView statusTextView;
  Window statusWindow;
  Window editImagePropsWindow;
  ScrollView advancedOptionsScrollView;
  ScrollView advancedOptionsRSSScrollView;
  View lowerView;
  TextField copyStatusTextField;
  ProgressIndicator copyStatus;
  Button publishButton;
  PopUpButton protocolPopUp;

 private:
  PopUpBinding protocolBinding_{protocolPopUp, channelController, "protocolTag",
                                localized("Undo", "Change of Publish Method")};
};

}  // namespace clipwave
