// Finds the number of a new channel: the smallest at which neither its title nor its feed file's name is
// taken.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/coredata/ManagedObjectContext.h"

namespace clipwave {

// "Channel %02i" and "%@%02i.xml".
std::string numberedChannelTitle(int number);
std::string numberedFeedFileName(std::string_view prefix, int number);

// Remembers for each file-name prefix how far the numbers are all taken, so that a library's next channel
// does not try every number from 1 up. What it remembers serves until some title or file name is given up
// again.
class ChannelNumbering {
 public:
  // The free number for the channels of the new channel's store, itself among them. The channel must be in a
  // context.
  int numberFor(ManagedObject& newChannel, std::string_view prefix);

 private:
  struct Progress {
    // A channel of the context in which the numbers were tried; it says whether that context is still the
    // one.
    std::weak_ptr<ManagedObject> witness;
    std::uint64_t releasedTitles = 0;
    std::uint64_t releasedFileNames = 0;
    int number = 1;  // every smaller one is taken
  };
  std::map<std::string, Progress, std::less<>> progress_;
};

}  // namespace clipwave
