// One process for each library: a second start hands its files and addresses to the first and ends.
#pragma once

#include <QByteArray>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/foundation/RunLoop.h"

namespace clipwave {

// Needs a QCoreApplication. The two meet in $XDG_RUNTIME_DIR, or where that is not the user's own, in a
// folder of the user's own among the temporary files; the name there follows from the library's folder. A
// lock that the system drops with its process decides who is first, so that what a crashed one left is no
// obstacle.
class SingleInstance {
 public:
  enum class Role { First, Second, Unreachable };
  using OnItems = std::function<void(std::vector<std::string> items, QByteArray activationToken)>;

  // Takes the desktop's activation token ($XDG_ACTIVATION_TOKEN, else $DESKTOP_STARTUP_ID) from the
  // environment: the desktop gives it to this process alone. `runLoop` must outlive it.
  SingleInstance(RunLoop& runLoop, const std::string& libraryFolder);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // `items` are paths of files, relative ones from the current folder, and addresses of feeds. First: this
  // process goes on, and receives the items of later ones until this object ends; also where the two could
  // meet nowhere (the library's own lock then decides). Second: the first one has acknowledged the items;
  // this process has nothing left to do. Unreachable: there is a first one and it did not answer within
  // `timeout`; unreachableMessage() tells the user. Blocks up to `timeout`.
  Role claim(const std::vector<std::string>& items, Seconds timeout = Seconds(5));
  // What the user is told then, in their language.
  static std::string unreachableMessage();

  // Called from the loop, as a deferred call, once for each later start: with its absolute paths and
  // addresses (none: only the window is wanted) and its activation token. What arrives before this is set
  // waits for it.
  void setOnItems(OnItems onItems);

 private:
  class Reception;

  std::unique_ptr<Reception> reception_;
};

}  // namespace clipwave
