#include "platform/foundation/XMLRepair.h"
namespace clipwave {
bool hasCrowdedXMLTag(std::string_view) {
  return false;
}
std::optional<std::string> repairedXML(std::string_view) {
  return std::nullopt;
}
}  // namespace clipwave
