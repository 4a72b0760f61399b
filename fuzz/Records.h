// What the records of a library say, as one text to compare and to look at.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "fuzz/Require.h"
#include "platform/coredata/ManagedObjectContext.h"

namespace clipwave::fuzz {

inline std::string textOf(const Value& value) {
  std::string text = std::to_string(static_cast<int>(value.kind()));
  if (value.kind() == Value::Kind::Array) {
    // Saving puts the records of a list in the order of their age.
    std::set<std::string> items;
    for (const Value& item : value.arrayValue()) items.insert(textOf(item));
    for (const std::string& item : items) text += " " + item;
  } else if (const ManagedObject* record = value.recordValue()) {
    text += " record " + std::to_string(record->objectID());
  } else if (const auto date = value.dateValue()) {
    text += " date " + std::to_string(date->microseconds);
  } else {
    text.append(" ").append(value.stringValue()).append(value.dataValue());
    text += " " + std::to_string(value.integerValue()) + " " + std::to_string(value.doubleValue());
  }
  return text;
}

// The records with the text that `textOfProperty` answers for each of their properties.
std::string textOfRecords(const auto& records, auto textOfProperty) {
  std::string text;
  for (const auto& record : records) {
    text += record->entity().name() + " " + std::to_string(record->objectID()) + "\n";
    for (const PropertyDescription& property : record->entity().properties())
      text += "  " + property.name + " = " + textOfProperty(*record, property) + "\n";
  }
  return text;
}

// Of what the file keeps.
inline std::string storedValues(const std::vector<std::shared_ptr<ManagedObject>>& records) {
  return textOfRecords(records, [](const ManagedObject& record, const PropertyDescription& property) {
    if (property.storage != Storage::Stored) return std::string();
    if (property.type != PropertyType::ToMany) return textOf(record.primitiveValue(property.name));
    std::string text;
    for (const ManagedObject* other : record.relatedObjects(property.name))
      text += " " + std::to_string(other->objectID());
    return text;
  });
}

inline std::vector<ManagedObject*> allRecords(ManagedObjectContext& context) {
  std::vector<ManagedObject*> records;
  for (const auto& entity : context.managedObjectModel().entities()) {
    const auto found = context.executeFetchRequest({.entityName = entity->name()});
    require(found.ok(), "every entity can be fetched");
    records.insert(records.end(), found->begin(), found->end());
  }
  return records;
}

// Of what a reader is told, derived values and all. Reading fills values in.
inline std::string readValues(ManagedObjectContext& context) {
  return textOfRecords(allRecords(context), [](ManagedObject& record, const PropertyDescription& property) {
    return textOf(record.value(property.name));
  });
}

}  // namespace clipwave::fuzz
