// A change of relationships that is carried out, and taken back, as one: which records are joined and parted,
// and at which places of their lists. Internal to this room.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/coredata/ManagedObject.h"

namespace clipwave {

class RelationshipChange {
 public:
  static constexpr std::size_t kAtEnd = static_cast<std::size_t>(-1);

  // `index` is the relationship's position in the entity of `object`. Steps take effect in the order in which
  // they were added.
  void join(ManagedObject& object, int index, ManagedObject& other);
  void part(ManagedObject& object, int index, ManagedObject& other);
  // Carries it out, inverse sides included: marks the records changed, registers the undo step, and then
  // tells the observers of each key that was touched, once. Nothing happens when a record has left its
  // context.
  void apply();

 private:
  struct Step {
    bool joins;
    std::shared_ptr<ManagedObject> object;
    int index;
    std::shared_ptr<ManagedObject> other;
    std::size_t place = kAtEnd;         // of `other` in a to-many list of `object`
    std::size_t inversePlace = kAtEnd;  // of `object` in a to-many list of `other`
  };
  static int inverseIndex(const Step& step);
  static void joinSide(ManagedObject& object, int index, ManagedObject& other, std::size_t place);
  static std::size_t partSide(ManagedObject& object, int index, const ManagedObject& other);
  void carryOut(Step& step);
  RelationshipChange reversed() const;
  void announce() const;

  std::vector<Step> steps_;
};

}  // namespace clipwave
