// Named announcements from anyone to whoever listens, delivered at once on the main thread.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/foundation/Observation.h"
#include "platform/foundation/Value.h"

namespace clipwave {

struct Notification {
  std::string name;
  Value object;         // who posted it; absent when nobody in particular did
  Dictionary userInfo;  // empty when there is none
};

class NotificationCenter {
 public:
  using Function = std::function<void(const Notification&)>;

  // `function` is called for every posting of `name`, from any sender, until the observation ends.
  Observation observe(std::string_view name, Function function);
  // Returns after every observer was called, in the order of registration.
  void post(std::string_view name, Value object = {}, Dictionary userInfo = {});

 private:
  std::map<std::string, Observers<const Notification&>, std::less<>> observers_;
};

}  // namespace clipwave
