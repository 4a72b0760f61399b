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
  switch (value.kind()) {
    case Value::Kind::Null:
      return "absent";
    case Value::Kind::Boolean:
      return value.boolValue() ? "true" : "false";
    case Value::Kind::Integer:
      return std::to_string(value.integerValue());
    case Value::Kind::Real:
      return std::to_string(value.doubleValue());
    case Value::Kind::Date:
      return "date " + std::to_string(value.dateValue()->microseconds);
    case Value::Kind::String:
      return "\"" + std::string(value.stringValue()) + "\"";
    case Value::Kind::Data:
      return "data " + std::string(value.dataValue());
    case Value::Kind::Record:
      return "record " + std::to_string(value.recordValue()->objectID());
    case Value::Kind::Array: {
      // Saving puts the records of a list in the order of their age.
      std::set<std::string> items;
      for (const Value& item : value.arrayValue()) items.insert(textOf(item));
      std::string text = "list";
      for (const std::string& item : items) text += " " + item;
      return text;
    }
    default:
      return "something else";
  }
}

inline std::string stored(const ManagedObject& record, const PropertyDescription& property) {
  if (property.type != PropertyType::ToMany) return textOf(record.primitiveValue(property.name));
  std::string text = "list";
  for (const ManagedObject* other : record.relatedObjects(property.name))
    text += " " + std::to_string(other->objectID());
  return text;
}

// Of what the file keeps.
inline std::string storedValues(const std::vector<std::shared_ptr<ManagedObject>>& records) {
  std::string text;
  for (const auto& record : records) {
    text += record->entity().name() + " " + std::to_string(record->objectID()) + "\n";
    for (const PropertyDescription& property : record->entity().properties())
      if (property.storage == Storage::Stored)
        text += "  " + property.name + " = " + stored(*record, property) + "\n";
  }
  return text;
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
  std::string text;
  for (ManagedObject* record : allRecords(context)) {
    text += record->entity().name() + " " + std::to_string(record->objectID()) + "\n";
    for (const PropertyDescription& property : record->entity().properties())
      text += "  " + property.name + " = " + textOf(record->value(property.name)) + "\n";
  }
  return text;
}

}  // namespace clipwave::fuzz
