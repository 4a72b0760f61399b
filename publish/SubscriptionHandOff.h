// Tells podcast clients where the published feeds are: subscription files for one that is installed here, and
// a message with links for everybody else.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/Application.h"
#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Dragging.h"
#include "platform/appkit/Workspace.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"
#include "publish/FeedPreparation.h"

namespace clipwave {

// The subscription file of one channel, pretty-printed.
std::string subscriptionDocument(std::string_view title, std::string_view feedURL);
// The invitation with a link to each channel that has an address, in the order given.
std::string subscriptionMessage(const std::vector<ManagedObject*>& channels);

class SubscriptionHandOff {
 public:
  struct Services {
    Application& application;
    FileManager& files;
    Log& log;
    Workspace& workspace;
    ArrayController& channelController;
    Pasteboard& generalPasteboard;
    const FeedPreparation& feedPreparation;  // its urlsToLaunch
    // Where subscription files are written; a test's own folder in tests.
    std::string folder = "/tmp";
  };
  explicit SubscriptionHandOff(Services services) : services_(std::move(services)) {}

  // Writes a file for each feed of the last publish run and has each opened with "iTunes". An old file of
  // that name that cannot be removed ends it all with a beep; one that cannot be written is told by a beep,
  // and opened all the same.
  void openInItunes();
  // Puts the message for the selected channels (all of them, when none is selected) on the general
  // pasteboard; nothing happens without channels.
  void sendEmail();

  // What went wrong in the last openInItunes, one sentence each, for a companion that reports what a window
  // passes over.
  const std::vector<std::string>& troubles() const { return troubles_; }

 private:
  bool removeOldFile(const std::string& path);
  bool writeFile(const std::string& path, std::string_view bytes);

  Services services_;
  std::vector<std::string> troubles_;
};

}  // namespace clipwave
