// Who runs the process, where, and which folders are theirs.
#pragma once

#include <memory>
#include <string>

#include "platform/foundation/Error.h"

namespace clipwave {

class ProcessInfo {
 public:
  virtual ~ProcessInfo() = default;
  virtual std::string hostName() const = 0;
  virtual std::string userName() const = 0;
  virtual std::string fullUserName() const = 0;  // the login name where no full name is known
  // $HOME, else the home folder that the user database names; "" when there is none.
  virtual std::string homeDirectory() const = 0;
  // The per-user data folder ($XDG_DATA_HOME when absolute, else ~/.local/share), made with mode 0700 where a
  // new account has none. Fails without a home folder, or where the path cannot be a folder.
  virtual Result<std::string> applicationSupportFolder() const = 0;
  // The per-user settings folder ($XDG_CONFIG_HOME when absolute, else ~/.config); not made.
  virtual Result<std::string> configurationFolder() const = 0;
};

std::unique_ptr<ProcessInfo> makeProcessInfo();

// The path of the running program's own file; "" when the system does not say.
std::string executablePath();

}  // namespace clipwave
