// What is dragged over a table, and what the pasteboard carries.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Value.h"

namespace clipwave {

// The list of absolute paths of dragged or copied files, as an array of strings.
inline constexpr std::string_view NSFilenamesPboardType = "NSFilenamesPboardType";
inline constexpr std::string_view NSStringPboardType = "NSStringPboardType";

// Bits of a drag's source mask, and the answer to a drop.
enum DragOperation : unsigned {
  NSDragOperationNone = 0,
  NSDragOperationCopy = 1,
  NSDragOperationLink = 2,
  NSDragOperationGeneric = 4,
  NSDragOperationPrivate = 8,
  NSDragOperationMove = 16,
  NSDragOperationDelete = 32,
  NSDragOperationEvery = 0xFFFFFFFFU,
};

class Pasteboard {
 public:
  std::vector<std::string> types() const;
  bool hasType(std::string_view type) const { return content_.contains(type); }
  // Absent for a type that is not there.
  Value propertyListForType(std::string_view type) const;
  // Empties the pasteboard, then promises these types (absent until set).
  void declareTypes(const std::vector<std::string>& types);
  void setPropertyList(Value value, std::string_view type);

 private:
  std::map<std::string, Value, std::less<>> content_;
};

struct DraggingInfo {
  Pasteboard draggingPasteboard;
  unsigned draggingSourceOperationMask = NSDragOperationEvery;
};

}  // namespace clipwave
