#include "ui/WindowLayout.h"

#include "model/Channel.h"

namespace clipwave {

WindowLayout::WindowLayout(MainWindow& mainWindow, View& lowerView, ArrayController& channelController,
                           UserDefaultsController& defaults)
    : mainWindow_(mainWindow),
      lowerView_(lowerView),
      channelController_(channelController),
      defaults_(defaults) {}

void WindowLayout::updateWindowSize() {
  const IndexSet& selected = channelController_.selectionIndexes();
  if (selected.empty()) {
    if (mainWindow_.isSimple()) switchToAdvanced();
  } else {
    ManagedObject* first = channelController_.arrangedObjects()[*selected.begin()];
    const auto tag = first->value("protocolTag").integerValue();
    if (mainWindow_.isSimple() && tag == kFolderMethod) {
      switchToAdvanced();
    } else if (!mainWindow_.isSimple() && tag == kDotMacMethod) {
      Rect frame = lowerView_.frame();
      frame.size.height += kLayoutHeightDifference;
      lowerView_.setFrame(frame);
      mainWindow_.setIsSimple(true);
    }
  }
  mainWindow_.contentView().display();
}

void WindowLayout::switchToAdvanced() {
  Rect frame = lowerView_.frame();
  frame.origin.y = kLowerViewOriginY;
  lowerView_.setFrameOrigin(frame.origin);
  frame.size.height -= kLayoutHeightDifference;
  lowerView_.setFrame(frame);
  mainWindow_.setIsSimple(false);
}

float WindowLayout::constrainMinCoordinate(float /*proposedMin*/, int /*dividerIndex*/) const {
  return static_cast<float>(defaults_.value("minsplitview").doubleValue());
}

float WindowLayout::constrainMaxCoordinate(float proposedMax, int /*dividerIndex*/) const {
  return static_cast<float>(defaults_.value("maxsplitfactor").doubleValue()) * proposedMax;
}

}  // namespace clipwave
