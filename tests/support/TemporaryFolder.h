// A folder of the test's own, removed with everything in it when the test ends.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace clipwave::testing {

class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& path() const { return path_; }
  // The path of `name` in the folder.
  std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }
  // Writes a file and answers its path; folders of `name` are made.
  std::string write(std::string_view name, std::string_view content) const;
  std::string makeFolder(std::string_view name) const;

 private:
  std::string path_;
};

std::string readFile(std::string_view path);  // "" when it cannot be read

// Sets an environment variable (nullptr: unsets it) and puts the old value back when it is destroyed.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const char* value);
  ~EnvironmentVariable();
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  void set(const char* value) const;

  std::string name_;
  std::optional<std::string> old_;
};

}  // namespace clipwave::testing
