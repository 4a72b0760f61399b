// A WebDAV server of the test's own on 127.0.0.1, run as processes of its own.
#pragma once

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

// Lets in "ann" with the password "secret", from when it was made on. Killed with all its processes at the
// end, also where the test comes to no end.
class DAVServer {
 public:
  enum class Kind { ApacheBasic, ApacheDigest, Rclone };

  // `configuration` is Apache's; `preload` is a library that Apache's processes load first.
  explicit DAVServer(Kind kind, std::string configuration = {}, std::string preload = {});
  ~DAVServer() { kill(); }
  DAVServer(const DAVServer&) = delete;
  DAVServer& operator=(const DAVServer&) = delete;

  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }
  // On its disk.
  std::string operator/(const std::string& name) const { return folder_ / ("disk/" + name); }
  // Everything on its disk, by paths from "/" on: of a file its bytes, of a folder nothing.
  std::map<std::string, std::optional<std::string>> contents() const;

  void kill();         // at once, in the middle of whatever it does
  void startAgain();   // on the same port
  void pause() const;  // until resume()
  void resume() const;

 private:
  bool start();
  bool isListening() const;
  std::string apacheConfiguration() const;

  Kind kind_;
  std::string configuration_;
  std::string preload_;
  TemporaryFolder folder_;
  int port_ = 0;
  pid_t process_ = 0;  // the first of its group
};

}  // namespace clipwave::testing
