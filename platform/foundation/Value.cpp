#include "platform/foundation/Value.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>

#include "platform/foundation/ASCII.h"

namespace clipwave {
namespace {

// Empty, and still with a NUL behind its end.
constexpr std::string_view kEmpty("", 0);  // NOLINT(bugprone-string-constructor)

// The text from its first sign or digit on; std::from_chars takes neither blanks nor a plus sign, and would
// take the words "inf" and "nan", which are no decimal numbers.
std::string_view numberPart(std::string_view text) {
  const std::size_t start = text.find_first_not_of(kBlanks);
  if (start == std::string_view::npos) return {};
  text.remove_prefix(start);
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return {};
  }
  const std::size_t first = text.starts_with('-') ? 1 : 0;
  if (first >= text.size() || (text[first] != '.' && (text[first] < '0' || text[first] > '9'))) return {};
  return text;
}

std::int64_t leadingInteger(std::string_view text) {
  const std::string_view part = numberPart(text);
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), number);
  if (error != std::errc::result_out_of_range) return number;
  return part.starts_with('-') ? std::numeric_limits<std::int64_t>::min()
                               : std::numeric_limits<std::int64_t>::max();
}

// `rest` is what follows the number.
double leadingReal(std::string_view text, std::string_view* rest = nullptr) {
  const std::string_view part = numberPart(text);
  double number = 0;
  const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), number);
  if (rest != nullptr) *rest = part.substr(static_cast<std::size_t>(end - part.data()));
  if (error == std::errc::result_out_of_range) {
    // The library says only that no double fits: a negative exponent means too small, anything else too
    // large.
    const std::string_view used(part.data(), static_cast<std::size_t>(end - part.data()));
    const bool tiny = used.find("e-") != used.npos || used.find("E-") != used.npos;
    return std::copysign(tiny ? 0.0 : HUGE_VAL, part.starts_with('-') ? -1.0 : 1.0);
  }
  return number;
}

bool textMeansTrue(std::string_view text) {
  if (text == "YES" || text == "yes" || text == "true") return true;
  std::string_view rest;
  return leadingReal(text, &rest) != 0 && rest.find_first_not_of(kBlanks) == rest.npos;
}

std::int64_t truncated(double real) {
  if (std::isnan(real)) return 0;
  // 2^63 itself is a double, the largest 64-bit integer is not: the comparison has to be on this side of it.
  if (real >= 0x1p63) return std::numeric_limits<std::int64_t>::max();
  if (real < -0x1p63) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(real);
}

}  // namespace

// Followed by `size` bytes and a NUL, in the same allocation.
struct Value::Bytes : Shared {
  std::size_t size = 0;
  char* text() { return reinterpret_cast<char*>(this + 1); }
};

template <class T>
struct Value::Box : Shared {
  explicit Box(T value) : content(std::move(value)) {}
  T content;
};

Value::Payload Value::makeBytes(std::string_view bytes) {
  Payload payload;
  payload.shared = nullptr;
  if (bytes.empty()) return payload;
  void* memory = ::operator new(sizeof(Bytes) + bytes.size() + 1);
  auto* made = new (memory) Bytes;
  made->size = bytes.size();
  std::memcpy(made->text(), bytes.data(), bytes.size());
  made->text()[bytes.size()] = '\0';
  payload.shared = made;
  return payload;
}

Value::Value(bool boolean) : kind_(Kind::Boolean) {
  payload_.boolean = boolean;
}
Value::Value(int integer) : Value(std::int64_t{integer}) {}
Value::Value(std::int64_t integer) : kind_(Kind::Integer) {
  payload_.integer = integer;
}
Value::Value(double real) : kind_(Kind::Real) {
  payload_.real = real;
}
Value::Value(clipwave::Date date) : kind_(Kind::Date) {
  payload_.integer = date.microseconds;
}
Value::Value(std::string_view string) : kind_(Kind::String), payload_(makeBytes(string)) {}

Value::Value(clipwave::Array array) : kind_(Kind::Array) {
  payload_.shared = array.empty() ? nullptr : new Box<clipwave::Array>(std::move(array));
}

Value::Value(clipwave::Dictionary dictionary) : kind_(Kind::Dictionary) {
  payload_.shared = dictionary.empty() ? nullptr : new Box<clipwave::Dictionary>(std::move(dictionary));
}

Value::Value(ManagedObject* record) {
  if (record == nullptr) return;
  kind_ = Kind::Record;
  payload_.record = record;
}

Value::Value(std::shared_ptr<clipwave::Handle> handle) {
  if (!handle) return;
  kind_ = Kind::Handle;
  payload_.shared = new Box<std::shared_ptr<clipwave::Handle>>(std::move(handle));
}

Value Value::data(std::string_view bytes) {
  Value value;
  value.kind_ = Kind::Data;
  value.payload_ = makeBytes(bytes);
  return value;
}

void Value::destroyContent() noexcept {
  switch (kind_) {
    case Kind::Array:
      delete static_cast<Box<clipwave::Array>*>(payload_.shared);
      break;
    case Kind::Dictionary:
      delete static_cast<Box<clipwave::Dictionary>*>(payload_.shared);
      break;
    case Kind::Handle:
      delete static_cast<Box<std::shared_ptr<clipwave::Handle>>*>(payload_.shared);
      break;
    default:
      ::operator delete(static_cast<Bytes*>(payload_.shared));
      break;
  }
}

std::string_view Value::bytes() const {
  if (payload_.shared == nullptr) return kEmpty;
  auto* shared = static_cast<Bytes*>(payload_.shared);
  return {shared->text(), shared->size};
}

template <class T>
const T& Value::boxed() const {
  return static_cast<Box<T>*>(payload_.shared)->content;
}

bool Value::boolValue() const {
  switch (kind_) {
    case Kind::Boolean:
      return payload_.boolean;
    case Kind::Integer:
      return payload_.integer != 0;
    case Kind::Real:
      return payload_.real != 0;
    case Kind::String:
      return textMeansTrue(bytes());
    default:
      return false;
  }
}

std::int64_t Value::integerValue() const {
  switch (kind_) {
    case Kind::Boolean:
      return payload_.boolean ? 1 : 0;
    case Kind::Integer:
      return payload_.integer;
    case Kind::Real:
      return truncated(payload_.real);
    case Kind::String:
      return leadingInteger(bytes());
    default:
      return 0;
  }
}

double Value::doubleValue() const {
  switch (kind_) {
    case Kind::Boolean:
      return payload_.boolean ? 1 : 0;
    case Kind::Integer:
      return static_cast<double>(payload_.integer);
    case Kind::Real:
      return payload_.real;
    case Kind::String:
      return leadingReal(bytes());
    default:
      return 0;
  }
}

std::string_view Value::stringValue() const {
  return kind_ == Kind::String ? bytes() : kEmpty;
}

std::string_view Value::dataValue() const {
  return kind_ == Kind::Data ? bytes() : kEmpty;
}

std::optional<std::string> Value::optionalString() const {
  if (kind_ != Kind::String) return std::nullopt;
  return std::string(bytes());
}

std::optional<clipwave::Date> Value::dateValue() const {
  if (kind_ != Kind::Date) return std::nullopt;
  return clipwave::Date{payload_.integer};
}

const clipwave::Array& Value::arrayValue() const {
  static const clipwave::Array kEmpty;
  return kind_ == Kind::Array && sharesContent() ? boxed<clipwave::Array>() : kEmpty;
}

const clipwave::Dictionary& Value::dictionaryValue() const {
  static const clipwave::Dictionary kEmpty;
  return kind_ == Kind::Dictionary && sharesContent() ? boxed<clipwave::Dictionary>() : kEmpty;
}

ManagedObject* Value::recordValue() const {
  return kind_ == Kind::Record ? payload_.record : nullptr;
}

std::shared_ptr<clipwave::Handle> Value::handleValue() const {
  return kind_ == Kind::Handle ? boxed<std::shared_ptr<clipwave::Handle>>() : nullptr;
}

bool operator==(const Value& a, const Value& b) {
  if (a.kind_ != b.kind_) return false;
  switch (a.kind_) {
    case Value::Kind::Null:
      return true;
    case Value::Kind::Boolean:
      return a.payload_.boolean == b.payload_.boolean;
    case Value::Kind::Integer:
    case Value::Kind::Date:
      return a.payload_.integer == b.payload_.integer;
    case Value::Kind::Real:
      return a.payload_.real == b.payload_.real;
    case Value::Kind::String:
    case Value::Kind::Data:
      return a.payload_.shared == b.payload_.shared || a.bytes() == b.bytes();
    case Value::Kind::Array:
      return a.payload_.shared == b.payload_.shared || a.arrayValue() == b.arrayValue();
    case Value::Kind::Dictionary:
      return a.payload_.shared == b.payload_.shared || a.dictionaryValue() == b.dictionaryValue();
    case Value::Kind::Record:
      return a.payload_.record == b.payload_.record;
    case Value::Kind::Handle:
      return a.handleValue() == b.handleValue();
  }
  return false;
}

}  // namespace clipwave
