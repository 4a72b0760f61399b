// What the desktop hands to the program: movie files, and addresses of feeds.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "app/ClipwaveProgram.h"

namespace clipwave {

class Arrivals {
 public:
  explicit Arrivals(ClipwaveProgram& program) : program_(program) {}
  ~Arrivals();
  Arrivals(const Arrivals&) = delete;
  Arrivals& operator=(const Arrivals&) = delete;

  // Whether it is an address of a feed, and no file that has such a name here.
  static bool isFeedAddress(const std::string& item);

  // Items are absolute paths, or texts that isFeedAddress accepts; what is neither is told as no address on
  // the web. Paths are opened as movies at once, whatever goes on; addresses are imported one after the
  // other, as soon as no question, no sheet and no publish run is under way that an import would disturb.
  void take(const std::vector<std::string>& items);

 private:
  bool isImportWelcome() const;
  void importNext();
  void import(const std::string& address);

  ClipwaveProgram& program_;
  std::deque<std::string> addresses_;
  bool isImporting_ = false;
  std::shared_ptr<Timer> timer_;  // while addresses wait
};

}  // namespace clipwave
