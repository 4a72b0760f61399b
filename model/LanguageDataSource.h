// The table of feed languages: display name to language code.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Bundle.h"

namespace clipwave {

class LanguageDataSource {
 public:
  // Loads the resource "languages"; an empty table when it is missing.
  explicit LanguageDataSource(const Bundle& bundle);
  const std::map<std::string, std::string, std::less<>>& languages() const { return languages_; }
  // All names, sorted without regard to case.
  std::vector<std::string> display() const;
  std::optional<std::string> codeForName(std::string_view name) const;
  std::optional<std::string> nameForCode(std::string_view code) const;

 private:
  std::map<std::string, std::string, std::less<>> languages_;
};

}  // namespace clipwave
