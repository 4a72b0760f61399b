#include "platform/foundation/NotificationCenter.h"

#include <utility>

namespace clipwave {

Observation NotificationCenter::observe(std::string_view name, Function function) {
  return observers_.try_emplace(std::string(name)).first->second.add(std::move(function));
}

void NotificationCenter::post(std::string_view name, Value object, Dictionary userInfo) {
  const auto found = observers_.find(name);
  if (found == observers_.end()) return;
  found->second.call(Notification{std::string(name), std::move(object), std::move(userInfo)});
}

}  // namespace clipwave
