// A workspace that opens nothing and keeps what it was asked to open.
#pragma once

#include <map>

#include "platform/appkit/Workspace.h"

namespace clipwave::testing {

class FakeWorkspace final : public Workspace {
 public:
  // In order: "file PATH", "url URL", "file PATH with APPLICATION".
  std::vector<std::string> calls;

  // The chosen application of each scheme.
  std::map<std::string, std::string, std::less<>> applications;

  bool openFile(std::string_view path) override { return record("file " + std::string(path)); }
  bool openURL(std::string_view url) override { return record("url " + std::string(url)); }
  bool openFileWithApplication(std::string_view path, std::string_view applicationName) override {
    return record("file " + std::string(path) + " with " + std::string(applicationName));
  }
  std::string defaultApplicationForURLScheme(std::string_view scheme) override {
    const auto found = applications.find(scheme);
    return found == applications.end() ? "" : found->second;
  }
  Result<void> setDefaultApplicationForURLScheme(std::string_view application,
                                                 std::string_view scheme) override {
    applications[std::string(scheme)] = application;
    return {};
  }
  Result<void> removeDefaultApplicationForURLScheme(std::string_view, std::string_view scheme) override {
    applications.erase(std::string(scheme));
    return {};
  }

 private:
  bool record(std::string call) {
    calls.push_back(std::move(call));
    return true;
  }
};

}  // namespace clipwave::testing
