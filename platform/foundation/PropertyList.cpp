#include "platform/foundation/PropertyList.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/Base64.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/TimeZone.h"
#include "platform/foundation/XMLDocument.h"

namespace clipwave {
namespace {

Error corrupt(const std::string& reason) {
  return cocoaError(kPropertyListReadCorruptError,
                    filledIn(localized("Documents", "The property list cannot be read: %1"), {reason}));
}

// `sentence` has "%1" for the text.
Error unreadable(std::string_view sentence, std::string_view text) {
  return corrupt(filledIn(sentence, {text}));
}

void addData(XMLElement parent, std::string_view bytes) {
  std::string text;
  appendBase64(text, bytes);
  parent.addChild("data", text);
}

// People and programs break the lines of data as they like.
std::optional<std::string> bytesFromData(std::string_view text) {
  std::string digits;
  for (const char c : text)
    if (kBlanks.find(c) == std::string_view::npos) digits += c;
  return parseBase64(digits);
}

Result<Value> readInteger(std::string_view text) {
  std::string_view digits = trimmed(text);
  const bool negative = digits.starts_with('-');
  if (negative || digits.starts_with('+')) digits.remove_prefix(1);
  const bool hexadecimal = digits.starts_with("0x") || digits.starts_with("0X");
  if (hexadecimal) digits.remove_prefix(2);
  std::uint64_t magnitude = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, problem] = std::from_chars(digits.data(), end, magnitude, hexadecimal ? 16 : 10);
  if (stop != end || problem == std::errc::invalid_argument)
    return unreadable(localized("Documents", "“%1” is no integer."), text);
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  const bool outside = problem == std::errc::result_out_of_range || magnitude > kMost;
  if (outside)
    return Value(negative ? std::numeric_limits<std::int64_t>::min()
                          : std::numeric_limits<std::int64_t>::max());
  const auto integer = static_cast<std::int64_t>(magnitude);
  return Value(negative ? -integer : integer);
}

Result<Value> readReal(std::string_view text) {
  std::string_view digits = trimmed(text);
  if (digits.starts_with('+')) digits.remove_prefix(1);
  double real = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, problem] = std::from_chars(digits.data(), end, real);
  if (stop != end || problem != std::errc())
    return unreadable(localized("Documents", "“%1” is no number."), text);
  return Value(real);
}

Result<Value> read(const XMLElement& element);

// Containers hold elements and nothing else.
std::optional<Error> looseText(const XMLElement& element) {
  const std::string text = element.ownText();
  if (trimmed(text).empty()) return std::nullopt;
  return corrupt(
      filledIn(localized("Documents", "Text stands between the elements of “%1”."), {element.name()}));
}

Result<Value> readArray(const XMLElement& element) {
  if (const auto problem = looseText(element)) return *problem;
  Array array;
  for (const XMLElement& child : element.elements()) {
    Result<Value> value = read(child);
    if (!value) return value;
    array.push_back(std::move(*value));
  }
  return Value(std::move(array));
}

Result<Value> readDictionary(const XMLElement& element) {
  if (const auto problem = looseText(element)) return *problem;
  Dictionary dictionary;
  std::optional<std::string> key;
  for (const XMLElement& child : element.elements()) {
    const bool isKey = child.name() == "key";
    if (isKey == key.has_value()) {
      return corrupt(isKey ? filledIn(localized("Documents", "The key “%1” has no value."), {*key})
                           : localized("Documents", "A value has no key."));
    }
    if (isKey) {
      key = child.stringValue();
      continue;
    }
    Result<Value> value = read(child);
    if (!value) return value;
    dictionary.insert_or_assign(*std::exchange(key, std::nullopt), std::move(*value));
  }
  if (key) return corrupt(filledIn(localized("Documents", "The key “%1” has no value."), {*key}));
  return Value(std::move(dictionary));
}

Result<Value> read(const XMLElement& element) {
  const std::string kind = element.name();
  if (kind == "dict") return readDictionary(element);
  if (kind == "array") return readArray(element);
  if (kind == "true") return Value(true);
  if (kind == "false") return Value(false);
  const std::string text = element.stringValue();
  if (kind == "string") return Value(text);
  if (kind == "integer") return readInteger(text);
  if (kind == "real") return readReal(text);
  if (kind == "date") {
    const std::optional<Date> date = dateFromISO8601(trimmed(text));
    if (!date) return unreadable(localized("Documents", "“%1” is no date."), text);
    return Value(*date);
  }
  if (kind == "data") {
    const std::optional<std::string> bytes = bytesFromData(text);
    if (!bytes) return unreadable(localized("Documents", "“%1” is no data."), text);
    return Value::data(*bytes);
  }
  return corrupt(filledIn(localized("Documents", "“%1” is no kind of value."), {kind}));
}

std::string realText(double real) {
  char buffer[32];
  const auto [end, problem] = std::to_chars(buffer, buffer + sizeof buffer, real);
  return problem == std::errc() ? std::string(buffer, end) : "0";
}

bool canBeWritten(const Value& value) {
  return !value.isNull() && value.kind() != Value::Kind::Record && value.kind() != Value::Kind::Handle;
}

void write(XMLElement& parent, const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Boolean:
      parent.addChild(value.boolValue() ? "true" : "false");
      break;
    case Value::Kind::Integer:
      parent.addChild("integer", std::to_string(value.integerValue()));
      break;
    case Value::Kind::Real:
      parent.addChild("real", realText(value.doubleValue()));
      break;
    case Value::Kind::Date:
      parent.addChild("date", iso8601(*value.dateValue()));
      break;
    case Value::Kind::String:
      parent.addChild("string", value.stringValue());
      break;
    case Value::Kind::Data:
      addData(parent, value.dataValue());
      break;
    case Value::Kind::Array: {
      XMLElement array = parent.addChild("array");
      for (const Value& item : value.arrayValue()) write(array, item);
      break;
    }
    case Value::Kind::Dictionary: {
      XMLElement dictionary = parent.addChild("dict");
      for (const auto& [key, item] : value.dictionaryValue()) {
        if (!canBeWritten(item)) continue;
        dictionary.addChild("key", key);
        write(dictionary, item);
      }
      break;
    }
    case Value::Kind::Null:
    case Value::Kind::Record:
    case Value::Kind::Handle:
      break;
  }
}

}  // namespace

Result<Value> propertyListFromData(std::string_view data) {
  const Result<XMLDocument> document = XMLDocument::parse(data, XMLDocument::Parsing::Strict);
  if (!document) return corrupt(document.error().localizedDescription);
  const XMLElement root = document->rootElement();
  if (root.name() != "plist")
    return corrupt(filledIn(localized("Documents", "The root element is “%1”, not “plist”."), {root.name()}));
  if (const auto problem = looseText(root)) return *problem;
  const std::vector<XMLElement> values = root.elements();
  if (values.size() != 1)
    return corrupt(filledIn(localized("Documents", "It holds %1 values instead of one."),
                            {std::to_string(values.size())}));
  return read(values.front());
}

std::string dataFromPropertyList(const Value& value) {
  XMLDocument document("plist");
  XMLElement root = document.rootElement();
  root.addAttribute("version", "1.0");
  write(root, value);
  return document.prettyPrinted();
}

}  // namespace clipwave
