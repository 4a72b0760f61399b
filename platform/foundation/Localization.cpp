#include "platform/foundation/Localization.h"

#include <atomic>

namespace clipwave {
namespace {

std::atomic<Translation> translationOfProcess{nullptr};

}  // namespace

void setTranslation(Translation translation) {
  translationOfProcess = translation;
}

std::string localized(const char* context, const char* text) {
  const Translation translation = translationOfProcess;
  return translation != nullptr ? translation(context, text, nullptr, -1) : text;
}

std::string localizedCount(const char* context, const char* several, const char* one, int count) {
  const Translation translation = translationOfProcess;
  if (translation != nullptr) return translation(context, several, one, count);
  std::string text = count == 1 ? one : several;
  const std::string number = std::to_string(count);
  for (std::size_t at = 0; (at = text.find("%n", at)) != std::string::npos; at += number.size())
    text.replace(at, 2, number);
  return text;
}

std::string filledIn(std::string_view text, std::initializer_list<std::string_view> arguments) {
  std::string filled;
  std::size_t next = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char mark = text[at] == '%' && at + 1 < text.size() ? text[at + 1] : '\0';
    const std::size_t argument = mark == '@' ? next : static_cast<std::size_t>(mark - '1');
    if ((mark != '@' && (mark < '1' || mark > '9')) || argument >= arguments.size()) {
      filled += text[at];
      continue;
    }
    if (mark == '@') ++next;
    filled += arguments.begin()[argument];
    ++at;
  }
  return filled;
}

}  // namespace clipwave
