#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace clipwave::testing {
namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (fs::temp_directory_path() / "clipwave-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) std::abort();
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::write(std::string_view name, std::string_view content) const {
  const fs::path file = fs::path(path_) / name;
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
  return file.string();
}

std::string TemporaryFolder::makeFolder(std::string_view name) const {
  const fs::path folder = fs::path(path_) / name;
  fs::create_directories(folder);
  return folder.string();
}

std::string readFile(std::string_view path) {
  std::ifstream in{std::string(path), std::ios::binary};
  return {std::istreambuf_iterator<char>(in), {}};
}

EnvironmentVariable::EnvironmentVariable(const char* name, const char* value) : name_(name) {
  if (const char* old = std::getenv(name)) old_ = old;
  set(value);
}

EnvironmentVariable::~EnvironmentVariable() {
  set(old_ ? old_->c_str() : nullptr);
}

void EnvironmentVariable::set(const char* value) const {
  value != nullptr ? ::setenv(name_.c_str(), value, 1) : ::unsetenv(name_.c_str());
}

}  // namespace clipwave::testing
