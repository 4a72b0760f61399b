// The system log: plain lines without levels.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace clipwave {

class Log {
 public:
  virtual ~Log() = default;
  // One line, without its line break; line breaks and control characters within are made visible by the real
  // log.
  virtual void write(std::string_view line) = 0;
};

// Lines on standard error, each behind the program's name; the desktop's session collects them.
class StandardErrorLog final : public Log {
 public:
  explicit StandardErrorLog(std::string program) : program_(std::move(program)) {}
  void write(std::string_view line) override;

 private:
  std::string program_;
};

// Keeps every line, for tests and for a companion that shows lines only on request.
class RecordingLog final : public Log {
 public:
  void write(std::string_view line) override { lines.emplace_back(line); }
  std::vector<std::string> lines;
};

}  // namespace clipwave
