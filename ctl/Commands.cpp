#include "ctl/Commands.h"

#include <filesystem>
#include <system_error>

namespace clipwave {

ExitStatus usageError(const std::string& message) {
  printError("clipwavectl", message);
  return kUsage;
}

ExitStatus failure(const Error& error) {
  return failure(error.localizedDescription);
}

ExitStatus failure(const std::string& message) {
  printError("clipwavectl", message);
  return kFailed;
}

std::string absolutePath(const std::string& path) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.lexically_normal().string();
}

}  // namespace clipwave
