// Switches the main window between its simple and its advanced layout, and limits its split view.
#pragma once

#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Element.h"
#include "platform/foundation/UserDefaultsController.h"
#include "ui/MainWindow.h"

namespace clipwave {

// In points.
inline constexpr double kLowerViewOriginY = 74;
inline constexpr double kLayoutHeightDifference = 42;

class WindowLayout {
 public:
  WindowLayout(MainWindow& mainWindow, View& lowerView, ArrayController& channelController,
               UserDefaultsController& defaults);

  // Re-lays the window for the first selected channel's publish method, and redraws it.
  void updateWindowSize();
  // splitView:constrainMinCoordinate:ofSubviewAt: and its counterpart.
  float constrainMinCoordinate(float proposedMin, int dividerIndex) const;
  float constrainMaxCoordinate(float proposedMax, int dividerIndex) const;

 private:
  void switchToAdvanced();

  MainWindow& mainWindow_;
  View& lowerView_;
  ArrayController& channelController_;
  UserDefaultsController& defaults_;
};

}  // namespace clipwave
