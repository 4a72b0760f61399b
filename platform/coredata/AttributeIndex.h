// Which records have which text as the plain value of one indexed attribute.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

namespace clipwave {

class ManagedObject;

class AttributeIndex {
 public:
  // The records with this text, by age: the map's keys are their ids.
  using Records = std::map<std::int64_t, ManagedObject*>;

  // How many records have this text.
  std::size_t count(std::string_view text) const;
  // Grows whenever some text is left without a record: until then, what was taken is still taken.
  std::uint64_t releases() const { return releases_; }

 private:
  friend class ManagedObjectContext;
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  void add(std::string_view text, ManagedObject& object);
  void remove(std::string_view text, const ManagedObject& object);
  const Records& find(std::string_view text) const;

  std::unordered_map<std::string, Records, Hash, std::equal_to<>> records_;
  std::uint64_t releases_ = 0;
};

}  // namespace clipwave
