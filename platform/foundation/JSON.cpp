#include "platform/foundation/JSON.h"

#include <nlohmann/json.hpp>

#include "platform/foundation/Base64.h"
#include "platform/foundation/TimeZone.h"

namespace clipwave {

namespace {

nlohmann::json node(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Boolean:
      return value.boolValue();
    case Value::Kind::Integer:
      return value.integerValue();
    case Value::Kind::Real:
      return value.doubleValue();
    case Value::Kind::Date:
      return iso8601(*value.dateValue());
    case Value::Kind::String:
      return std::string(value.stringValue());
    case Value::Kind::Data: {
      std::string text;
      appendBase64(text, value.dataValue());
      return text;
    }
    case Value::Kind::Array: {
      auto list = nlohmann::json::array();
      for (const Value& element : value.arrayValue()) list.push_back(node(element));
      return list;
    }
    case Value::Kind::Dictionary: {
      auto object = nlohmann::json::object();
      for (const auto& [key, element] : value.dictionaryValue()) object[key] = node(element);
      return object;
    }
    case Value::Kind::Null:
    case Value::Kind::Record:
    case Value::Kind::Handle:
      break;
  }
  return nullptr;
}

}  // namespace

std::string JSONFromValue(const Value& value) {
  return node(value).dump(2, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace clipwave
