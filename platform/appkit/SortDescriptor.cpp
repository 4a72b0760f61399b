#include "platform/appkit/SortDescriptor.h"

#include <algorithm>
#include <compare>

#include "platform/foundation/Value.h"

namespace clipwave {
namespace {

// Absent, numbers (booleans are numbers here), dates, texts, then what has no order of its own.
int rankOf(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Null:
      return 0;
    case Value::Kind::Boolean:
    case Value::Kind::Integer:
    case Value::Kind::Real:
      return 1;
    case Value::Kind::Date:
      return 2;
    case Value::Kind::String:
      return 3;
    default:
      return 4;
  }
}

std::weak_ordering compare(const Value& a, const Value& b) {
  const int rank = rankOf(a);
  if (const auto order = rank <=> rankOf(b); order != 0) return order;
  switch (rank) {
    case 1:
      // Whole numbers of 64 bits lose digits as reals.
      if (a.kind() != Value::Kind::Real && b.kind() != Value::Kind::Real) {
        return a.integerValue() <=> b.integerValue();
      }
      return std::weak_order(a.doubleValue(), b.doubleValue());
    case 2:
      return a.dateValue() <=> b.dateValue();
    case 3:
      return a.stringValue() <=> b.stringValue();
    default:
      return std::weak_ordering::equivalent;
  }
}

Value keyOf(ManagedObject& object, const SortDescriptor& descriptor) {
  return descriptor.stored ? object.primitiveValue(descriptor.key) : object.value(descriptor.key);
}

std::vector<Value> keysOf(ManagedObject& object, const std::vector<SortDescriptor>& descriptors) {
  std::vector<Value> keys;
  keys.reserve(descriptors.size());
  for (const SortDescriptor& descriptor : descriptors) keys.push_back(keyOf(object, descriptor));
  return keys;
}

}  // namespace

void sortRecords(std::vector<ManagedObject*>& records, const std::vector<SortDescriptor>& descriptors) {
  if (descriptors.empty()) return;
  // The keys are read once, not at every comparison: a key may be derived.
  const std::size_t width = descriptors.size();
  std::vector<Value> keys;
  keys.reserve(records.size() * width);
  std::vector<std::size_t> order;
  order.reserve(records.size());
  for (ManagedObject* record : records) {
    order.push_back(order.size());
    for (const SortDescriptor& descriptor : descriptors) keys.push_back(keyOf(*record, descriptor));
  }
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    for (std::size_t i = 0; i < width; ++i) {
      const auto compared = compare(keys[a * width + i], keys[b * width + i]);
      if (compared != 0) return descriptors[i].ascending ? compared < 0 : compared > 0;
    }
    return false;
  });
  std::vector<ManagedObject*> sorted;
  sorted.reserve(records.size());
  for (const std::size_t index : order) sorted.push_back(records[index]);
  std::copy(sorted.begin(), sorted.end(), records.begin());
}

std::size_t placeInOrder(ManagedObject& object, const std::vector<ManagedObject*>& sorted,
                         const std::vector<SortDescriptor>& descriptors) {
  if (descriptors.empty()) return sorted.size();
  const std::vector<Value> keys = keysOf(object, descriptors);
  const auto belongsBefore = [&](ManagedObject* other) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const auto compared = compare(keys[i], keyOf(*other, descriptors[i]));
      if (compared != 0) return descriptors[i].ascending ? compared < 0 : compared > 0;
    }
    return false;
  };
  // Not std::upper_bound, which may ask for a list that is in order.
  std::size_t low = 0;
  std::size_t high = sorted.size();
  while (low < high) {
    const std::size_t middle = low + (high - low) / 2;
    if (belongsBefore(sorted[middle])) {
      high = middle;
    } else {
      low = middle + 1;
    }
  }
  return low;
}

}  // namespace clipwave
