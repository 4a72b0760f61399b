// Failures as values: an error with a domain, a code and a sentence for a person, and the result that carries
// one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace clipwave {

// The domain of the platform's own errors: files, property lists, the store and validation.
inline constexpr std::string_view NSCocoaErrorDomain = "NSCocoaErrorDomain";

// Codes within NSCocoaErrorDomain that callers tell apart.
enum ErrorCode : int {
  kFileNoSuchFileError = 4,
  kFileLockingError = 255,  // another process holds the file
  kFileReadUnknownError = 256,
  kFileReadNoPermissionError = 257,
  kFileReadNoSuchFileError = 260,
  kFileWriteUnknownError = 512,
  kFileWriteNoPermissionError = 513,
  kFileWriteFileExistsError = 516,
  kFileWriteOutOfSpaceError = 640,
  kFileWriteVolumeReadOnlyError = 642,
  kValidationErrorMinimum = 1024,
  kKeyValueValidationError = 1024,
  kValidationMultipleErrorsError = 1560,  // detailedErrors holds each of them
  kValidationErrorMaximum = 2047,
  kPropertyListReadCorruptError = 3840,
  kPersistentStoreInvalidTypeError = 134000,
  kPersistentStoreOpenError = 134080,                     // unreadable, truncated or not XML
  kPersistentStoreIncompatibleVersionHashError = 134100,  // written by a newer major version
};

struct Error {
  std::string domain;
  int code = 0;
  // One sentence or more for a person; what application:willPresentError: may rewrite.
  std::string localizedDescription;
  // The single errors behind kValidationMultipleErrorsError, in the order found; empty otherwise.
  std::vector<Error> detailedErrors;

  bool operator==(const Error&) const = default;
};

inline Error cocoaError(int code, std::string description) {
  return Error{std::string(NSCocoaErrorDomain), code, std::move(description), {}};
}

// Either a value or the error that kept it from coming into being. Asking for the one that is not there is
// a programming error.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value)
      : state_(std::in_place_index<0>, std::move(value)) {}  // NOLINT(google-explicit-constructor)
  Result(Error error)
      : state_(std::in_place_index<1>, std::move(error)) {}  // NOLINT(google-explicit-constructor)

  bool ok() const { return state_.index() == 0; }
  explicit operator bool() const { return ok(); }
  T& value() & { return *std::get_if<0>(&state_); }
  const T& value() const& { return *std::get_if<0>(&state_); }
  // By value, so that a loop over the value of a result that is not kept has something to hold on to.
  T value() && { return std::move(*std::get_if<0>(&state_)); }
  T& operator*() & { return value(); }
  const T& operator*() const& { return value(); }
  T operator*() && { return std::move(*this).value(); }
  T* operator->() { return &value(); }
  const T* operator->() const { return &value(); }
  const Error& error() const { return *std::get_if<1>(&state_); }

 private:
  std::variant<T, Error> state_;
};

// Success without a value, or the error.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Error error) : error_(std::move(error)) {}  // NOLINT(google-explicit-constructor)

  bool ok() const { return !error_.has_value(); }
  explicit operator bool() const { return ok(); }
  const Error& error() const { return *error_; }

 private:
  std::optional<Error> error_;
};

}  // namespace clipwave
