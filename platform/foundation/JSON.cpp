#include "platform/foundation/JSON.h"

#include <nlohmann/json.hpp>

#include "platform/foundation/TimeZone.h"

namespace clipwave {

namespace {

constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

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
    case Value::Kind::Data:
      return base64(value.dataValue());
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

std::string base64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    unsigned group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      group = group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      text += i + k <= bytes.size() ? kDigits[group >> (18 - 6 * k) & 0x3F] : '=';
    }
  }
  return text;
}

}  // namespace clipwave
