#include "ctl/RecordText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/JSON.h"
#include "platform/foundation/TimeZone.h"

namespace clipwave {

namespace {

bool isAttribute(const PropertyDescription& property) {
  return property.type != PropertyType::ToOne && property.type != PropertyType::ToMany &&
         property.type != PropertyType::Handle;
}

Value imageDictionary(ManagedObject* image) {
  if (image == nullptr) return {};
  return Dictionary{{"title", image->value("title")}, {"url", image->value("url")}};
}

Error wrongValue(std::string_view key, std::string_view text, const std::string& expected) {
  return cocoaError(kKeyValueValidationError,
                    std::string(key) + " takes " + expected + ", not \"" + std::string(text) + "\".");
}

}  // namespace

Value recordDictionary(ManagedObject& record) {
  Dictionary dictionary;
  const EntityDescription& entity = record.entity();
  // What is derived from the opened movie answers only once it is held.
  if (entity.property("movie") != nullptr) record.value("movie");
  for (const PropertyDescription& property : entity.properties()) {
    if (isAttribute(property)) dictionary[property.name] = record.value(property.name);
  }
  dictionary["id"] = record.objectID();
  if (entity.property("image") != nullptr)
    dictionary["image"] = imageDictionary(record.relatedObject("image"));
  if (entity.property("children") != nullptr) {
    Array children;
    for (ManagedObject* child : record.relatedObjects("children"))
      children.push_back(recordDictionary(*child));
    dictionary["children"] = std::move(children);
  }
  return dictionary;
}

std::string oneLine(std::string_view text) {
  std::string line;
  for (text = trimmed(text); !text.empty();) {
    const std::size_t end = std::min(text.find_first_of(kBlanks), text.size());
    line.append(line.empty() ? "" : " ").append(text.substr(0, end));
    text = trimmed(text.substr(end));
  }
  return line;
}

std::string valueText(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::String:
      return std::string(value.stringValue());
    case Value::Kind::Date:
      return iso8601(*value.dateValue());
    case Value::Kind::Boolean:
      return value.boolValue() ? "1" : "0";
    case Value::Kind::Integer:
      return std::to_string(value.integerValue());
    case Value::Kind::Null:
      return {};
    default:
      return JSONFromValue(value);
  }
}

std::string recordText(ManagedObject& record) {
  std::string text;
  const Value dictionary = recordDictionary(record);
  for (const auto& [key, value] : dictionary.dictionaryValue()) {
    // Marks that are off would drown the rest: a channel has thirty of them.
    const bool isOff = value.kind() == Value::Kind::Boolean && !value.boolValue();
    if (value.isNull() || isOff || key == "children" || key == "alias") continue;
    if (key == "image") {
      text += "image: " + valueText(value.dictionaryValue().at("url")) + "\n";
    } else {
      text += key + ": " + valueText(value) + "\n";
    }
  }
  return text;
}

bool isSettable(const PropertyDescription& property) {
  // A derived key may take a value, but keeps none.
  return isAttribute(property) && property.type != PropertyType::Binary &&
         property.storage == Storage::Stored;
}

Result<Value> valueFromText(const EntityDescription& entity, std::string_view key, std::string_view text) {
  const PropertyDescription* property = entity.property(key);
  if (property == nullptr) {
    return cocoaError(kKeyValueValidationError,
                      "There is no key " + std::string(key) + " in a " + entity.name() + ".");
  }
  if (!isSettable(*property))
    return cocoaError(kKeyValueValidationError, std::string(key) + " cannot be set.");
  if (text.empty()) return Value();
  switch (property->type) {
    case PropertyType::Boolean:
      if (text != "0" && text != "1") return wrongValue(key, text, "0 or 1");
      return Value(text == "1");
    case PropertyType::Integer32: {
      std::int32_t number = 0;
      const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
      if (error != std::errc() || end != text.data() + text.size())
        return wrongValue(key, text, "a whole number");
      return Value(number);
    }
    case PropertyType::Date: {
      const auto date = dateFromISO8601(text);
      if (!date) return wrongValue(key, text, "a date such as 2009-03-04T02:05:09Z");
      return Value(*date);
    }
    default:
      return Value(text);
  }
}

}  // namespace clipwave
