// Holds against any bytes: what reads as a property list is written so that it reads back as the same value.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/Require.h"
#include "platform/foundation/PropertyList.h"

namespace clipwave::fuzz {
namespace {

// A list is written with dates to the second; and a number that is none equals nothing, not even itself.
Value asWritten(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::Date:
      return Date::fromSeconds(value.dateValue()->wholeSeconds());
    case Value::Kind::Real:
      return std::isnan(value.doubleValue()) ? Value("nan") : value;
    case Value::Kind::Array: {
      Array array;
      for (const Value& item : value.arrayValue()) array.push_back(asWritten(item));
      return array;
    }
    case Value::Kind::Dictionary: {
      Dictionary dictionary;
      for (const auto& [key, item] : value.dictionaryValue()) dictionary[key] = asWritten(item);
      return dictionary;
    }
    default:
      return value;
  }
}

void readWriteRead(std::string_view data) {
  const Result<Value> read = propertyListFromData(data);
  if (!read) {
    require(!read.error().localizedDescription.empty(), "a failure says why");
    return;
  }
  const std::string written = dataFromPropertyList(*read);
  const Result<Value> again = propertyListFromData(written);
  require(again.ok(), "what was written can be read", {written});
  require(asWritten(*again) == asWritten(*read), "it reads as the same value", {written});
  requireSame(dataFromPropertyList(*again), written, "it is written in the same way again");
}

}  // namespace
}  // namespace clipwave::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  clipwave::fuzz::readWriteRead({reinterpret_cast<const char*>(data), size});
  return 0;
}
