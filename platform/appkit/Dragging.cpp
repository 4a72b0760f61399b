#include "platform/appkit/Dragging.h"

namespace clipwave {

std::vector<std::string> Pasteboard::types() const {
  std::vector<std::string> types;
  for (const auto& [type, value] : content_) types.push_back(type);
  return types;
}

Value Pasteboard::propertyListForType(std::string_view type) const {
  const auto found = content_.find(type);
  return found == content_.end() ? Value() : found->second;
}

void Pasteboard::declareTypes(const std::vector<std::string>& types) {
  content_.clear();
  for (const std::string& type : types) content_[type];
}

void Pasteboard::setPropertyList(Value value, std::string_view type) {
  content_[std::string(type)] = std::move(value);
}

}  // namespace clipwave
