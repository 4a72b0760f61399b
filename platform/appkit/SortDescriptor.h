// The order of a list: by which keys its records are sorted, and where a record has its place.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/coredata/ManagedObject.h"

namespace clipwave {

// Texts compare byte by byte, dates by time, numbers by size; absent values come first in ascending order.
struct SortDescriptor {
  std::string key;
  bool ascending = true;
  // Compares what is stored and computes nothing: for keys whose first reading is costly (it opens a movie).
  bool stored = false;
  bool operator==(const SortDescriptor&) const = default;
};

// Sorts by the first descriptor, equal ones by the next. Records that are equal by all keep their order.
// Reads each key of each record at most once.
void sortRecords(std::vector<ManagedObject*>& records, const std::vector<SortDescriptor>& descriptors);

// The index at which `object` belongs in `sorted`, behind its equals; the end without descriptors. Looks at
// few of the records, so that in a list that is not in order any more the answer is some place within it.
std::size_t placeInOrder(ManagedObject& object, const std::vector<ManagedObject*>& sorted,
                         const std::vector<SortDescriptor>& descriptors);

}  // namespace clipwave
