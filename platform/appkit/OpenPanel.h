// The platform's dialogue for choosing existing files or folders.
#pragma once

#include <string>
#include <vector>

namespace clipwave {

struct OpenPanel {
  bool canChooseFiles = true;
  bool canChooseDirectories = false;
  bool canCreateDirectories = false;
  bool allowsMultipleSelection = false;
  std::string title = {};  // "" for the platform's own
  std::string message = {};
  std::string prompt = {};     // the choosing button's title; "" for the platform's own
  std::string directory = {};  // where it opens; "" for the platform's choice
  // File-name extensions and quoted HFS types; empty for every file.
  std::vector<std::string> allowedTypes = {};
};

// The chosen paths; empty when the user cancelled.
using OpenPanelAnswer = std::vector<std::string>;

}  // namespace clipwave
