#include "model/LanguageDataSource.h"

#include <algorithm>

#include "platform/foundation/ASCII.h"

namespace clipwave {
namespace {

bool precedesIgnoringCase(std::string_view a, std::string_view b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return static_cast<unsigned char>(lowerCased(x)) < static_cast<unsigned char>(lowerCased(y));
  });
}

}  // namespace

LanguageDataSource::LanguageDataSource(const Bundle& bundle) {
  for (const auto& [name, code] : bundle.dictionaryForResource("languages")) {
    if (code.isString()) languages_.emplace(name, code.stringValue());
  }
}

std::vector<std::string> LanguageDataSource::display() const {
  std::vector<std::string> names;
  names.reserve(languages_.size());
  for (const auto& [name, code] : languages_) names.push_back(name);
  std::stable_sort(names.begin(), names.end(), precedesIgnoringCase);
  return names;
}

std::optional<std::string> LanguageDataSource::codeForName(std::string_view name) const {
  const auto found = languages_.find(name);
  if (found == languages_.end()) return std::nullopt;
  return found->second;
}

std::optional<std::string> LanguageDataSource::nameForCode(std::string_view code) const {
  for (const auto& [name, itsCode] : languages_) {
    if (itsCode == code) return name;
  }
  return std::nullopt;
}

}  // namespace clipwave
