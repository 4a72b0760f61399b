// A workspace that opens nothing and keeps what it was asked to open.
#pragma once

#include "platform/appkit/Workspace.h"

namespace clipwave::testing {

class FakeWorkspace final : public Workspace {
 public:
  // In order: "file PATH", "url URL", "file PATH with APPLICATION".
  std::vector<std::string> calls;

  bool openFile(std::string_view path) override { return record("file " + std::string(path)); }
  bool openURL(std::string_view url) override { return record("url " + std::string(url)); }
  bool openFileWithApplication(std::string_view path, std::string_view applicationName) override {
    return record("file " + std::string(path) + " with " + std::string(applicationName));
  }

 private:
  bool record(std::string call) {
    calls.push_back(std::move(call));
    return true;
  }
};

}  // namespace clipwave::testing
