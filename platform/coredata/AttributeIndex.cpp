#include "platform/coredata/AttributeIndex.h"

#include "platform/coredata/ManagedObject.h"

namespace clipwave {

std::size_t AttributeIndex::count(std::string_view text) const {
  return find(text).size();
}

void AttributeIndex::add(std::string_view text, ManagedObject& object) {
  auto place = records_.find(text);
  if (place == records_.end()) place = records_.try_emplace(std::string(text)).first;
  place->second.emplace(object.objectID(), &object);
}

void AttributeIndex::remove(std::string_view text, const ManagedObject& object) {
  const auto place = records_.find(text);
  if (place == records_.end()) return;
  place->second.erase(object.objectID());
  if (!place->second.empty()) return;
  records_.erase(place);
  ++releases_;
}

const AttributeIndex::Records& AttributeIndex::find(std::string_view text) const {
  static const Records kNone;
  const auto place = records_.find(text);
  return place == records_.end() ? kNone : place->second;
}

}  // namespace clipwave
