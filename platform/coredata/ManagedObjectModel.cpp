#include "platform/coredata/ManagedObjectModel.h"

namespace clipwave {

EntityDescription::EntityDescription(std::string name, Factory factory,
                                     std::vector<PropertyDescription> properties)
    : name_(std::move(name)),
      factory_(std::move(factory)),
      properties_(std::move(properties)),
      direct_(properties_.size()),
      dependents_(properties_.size()) {
  indexes_.reserve(properties_.size() * 2);
  for (const PropertyDescription& property : properties_) {
    indexes_.emplace(property.name, static_cast<int>(slots_.size()));
    slots_.push_back(property.type == PropertyType::ToMany ? toManyCount_++ : -1);
  }
}

const PropertyDescription* EntityDescription::property(std::string_view key) const {
  const int index = indexOf(key);
  return index < 0 ? nullptr : &properties_[static_cast<std::size_t>(index)];
}

void EntityDescription::setDependentKeys(std::string_view derived,
                                         const std::vector<std::string_view>& sources) {
  const int target = indexOf(derived);
  if (target < 0) return;
  for (const std::string_view source : sources) {
    if (const int index = indexOf(source); index >= 0)
      direct_[static_cast<std::size_t>(index)].push_back(target);
  }
  // Worked out here once, so that announcing a change is a walk along a list.
  for (std::size_t source = 0; source < direct_.size(); ++source) {
    std::vector<bool> seen(direct_.size());
    seen[source] = true;
    std::vector<int> reached;
    const auto reach = [&](const std::vector<int>& keys) {
      for (const int key : keys) {
        if (seen[static_cast<std::size_t>(key)]) continue;
        seen[static_cast<std::size_t>(key)] = true;
        reached.push_back(key);
      }
    };
    reach(direct_[source]);
    for (std::size_t next = 0; next < reached.size(); ++next)
      reach(direct_[static_cast<std::size_t>(reached[next])]);
    dependents_[source] = std::move(reached);
  }
}

EntityDescription& ManagedObjectModel::addEntity(std::unique_ptr<EntityDescription> entity) {
  return *entities_.emplace_back(std::move(entity));
}

const EntityDescription* ManagedObjectModel::entity(std::string_view name) const {
  for (const auto& entity : entities_)
    if (entity->name() == name) return entity.get();
  return nullptr;
}

void ManagedObjectModel::setFetchRequestTemplate(std::string_view name, FetchRequest request,
                                                 std::string_view variable) {
  templates_.insert_or_assign(std::string(name), Template{std::move(request), std::string(variable)});
}

std::optional<FetchRequest> ManagedObjectModel::fetchRequestFromTemplate(std::string_view name,
                                                                         const Dictionary& variables) const {
  const auto found = templates_.find(name);
  if (found == templates_.end()) return std::nullopt;
  FetchRequest request = found->second.request;
  if (!found->second.variable.empty()) {
    const auto bound = variables.find(found->second.variable);
    if (bound == variables.end()) return std::nullopt;
    request.value = bound->second;
  }
  return request;
}

}  // namespace clipwave
