// One value of a record's attribute, a user default or a property list: absent, or of one of a few kinds.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/foundation/Date.h"

namespace clipwave {

class ManagedObject;
class Value;

using Array = std::vector<Value>;
using Dictionary = std::map<std::string, Value, std::less<>>;

// Base of objects that are carried in a value by handle (an opened movie). Compared by identity.
class Handle {
 public:
  virtual ~Handle() = default;
};

// Sixteen bytes. Strings, data, arrays and dictionaries are immutable and shared between copies, so that
// copying is cheap; the sharing is not counted atomically, and a value must not be handed to another thread.
// A value never owns the record it refers to: the object context does.
class Value {
 public:
// g++ 12 takes an enumerator for a shadow of the type of the same name, scoped though it is.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
  enum class Kind : std::uint8_t {
    Null,
    Boolean,
    Integer,
    Real,
    Date,
    String,
    Data,
    Array,
    Dictionary,
    Record,
    Handle
  };
#pragma GCC diagnostic pop

  Value() = default;
  Value(std::nullptr_t) {}         // NOLINT(google-explicit-constructor)
  Value(bool boolean);             // NOLINT(google-explicit-constructor)
  Value(int integer);              // NOLINT(google-explicit-constructor)
  Value(std::int64_t integer);     // NOLINT(google-explicit-constructor)
  Value(double real);              // NOLINT(google-explicit-constructor)
  Value(clipwave::Date date);      // NOLINT(google-explicit-constructor)
  Value(std::string_view string);  // NOLINT(google-explicit-constructor)
  Value(const std::string& string)
      : Value(std::string_view(string)) {}                        // NOLINT(google-explicit-constructor)
  Value(const char* string) : Value(std::string_view(string)) {}  // NOLINT(google-explicit-constructor)
  Value(clipwave::Array array);                                   // NOLINT(google-explicit-constructor)
  Value(clipwave::Dictionary dictionary);                         // NOLINT(google-explicit-constructor)
  // A null pointer gives the absent value.
  Value(ManagedObject* record);                     // NOLINT(google-explicit-constructor)
  Value(std::shared_ptr<clipwave::Handle> handle);  // NOLINT(google-explicit-constructor)
  template <class T>
  Value(const std::optional<T>& value) : Value() {  // NOLINT(google-explicit-constructor)
    if (value) *this = Value(*value);
  }
  static Value data(std::string_view bytes);

  Value(const Value& other) noexcept : kind_(other.kind_), payload_(other.payload_) {
    retain();
  }
  Value(Value&& other) noexcept
      : kind_(std::exchange(other.kind_, Kind::Null)), payload_(std::exchange(other.payload_, Payload{})) {}
  // By value, so that what this value held is let go of last: assigning an element of the own array is safe.
  Value& operator=(Value other) noexcept {
    std::swap(kind_, other.kind_);
    std::swap(payload_, other.payload_);
    return *this;
  }
  ~Value() {
    if (sharesContent() && --payload_.shared->references == 0) destroyContent();
  }

  Kind kind() const {
    return kind_;
  }
  bool isNull() const {
    return kind_ == Kind::Null;
  }
  bool isString() const {
    return kind_ == Kind::String;
  }

  // Each reader answers for the kind that it names and has a stated answer for every other kind.
  // Booleans: true or false; a number is true when not zero; a string is true for "YES", "yes", "true", "1"
  // and other non-zero numbers; everything else is false.
  bool boolValue() const;
  // Numbers: reals truncate toward zero and saturate; a string gives its leading decimal number, else 0; true
  // is 1.
  std::int64_t integerValue() const;
  double doubleValue() const;
  // The text or the bytes; an empty view for every other kind. The view lives as long as any copy of the
  // value; the character behind its end is NUL.
  std::string_view stringValue() const;
  std::string_view dataValue() const;
  // The text, or nothing for every other kind.
  std::optional<std::string> optionalString() const;
  std::optional<clipwave::Date> dateValue() const;
  // Empty containers for every other kind.
  const clipwave::Array& arrayValue() const;
  const clipwave::Dictionary& dictionaryValue() const;
  ManagedObject* recordValue() const;
  std::shared_ptr<clipwave::Handle> handleValue() const;

  // Same kind and same content; records and handles by identity. true and 1 are different values.
  friend bool operator==(const Value& a, const Value& b);

 private:
  // What copies share; the content follows in memory. Empty strings, data and containers share nothing.
  struct Shared {
    std::uint32_t references = 1;
  };
  struct Bytes;
  template <class T>
  struct Box;
  union Payload {
    std::int64_t integer = 0;
    bool boolean;
    double real;
    Shared* shared;
    ManagedObject* record;
  };

  static Payload makeBytes(std::string_view bytes);
  bool sharesContent() const {
    return kind_ >= Kind::String && kind_ != Kind::Record && payload_.shared != nullptr;
  }
  void retain() const noexcept {
    if (sharesContent()) ++payload_.shared->references;
  }
  void destroyContent() noexcept;
  std::string_view bytes() const;
  template <class T>
  const T& boxed() const;

  Kind kind_ = Kind::Null;
  Payload payload_;
};

static_assert(sizeof(Value) == 16);

}  // namespace clipwave
