// Completes the choice of a publish method: where the selected channels go, and under which URLs.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/appkit/Application.h"
#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Controls.h"
#include "platform/coredata/ManagedObjectContext.h"
#include "platform/dotmac/DotMacKit.h"
#include "ui/WindowLayout.h"

namespace clipwave {

class PublishMethod {
 public:
  struct Services {
    Application& application;
    ArrayController& channelController;
    DotMacKit& dotMac;
    WindowLayout& windowLayout;
    // The store; none while it could not be opened.
    std::function<ManagedObjectContext*()> managedObjectContext;
  };

  explicit PublishMethod(Services services) : services_(std::move(services)) {}

  // The pop-up's action, which comes after its binding has stored the selected tag in the selected channels
  // as one undo group: a cancelled folder panel undoes that group for good, and what follows from the choice
  // joins it.
  void changePublishMethod(const PopUpButton& sender);
  // Asks for another folder for the selected channels, which keep their URLs.
  void chooseDestination();
  // Writes the destination and, when a URL is given, both URLs into every selected channel.
  void setURLTextFieldsWithURL(const std::optional<std::string>& url, const std::string& mediaPath);
  // A channel's publish method was set: re-lays the window.
  void protocolChanged();

 private:
  void chooseFolder();
  void chooseDotMac();
  // Makes changes that are taken back together with the stored tag.
  void completeChoice(const std::function<void()>& changes);

  Services services_;
};

}  // namespace clipwave
