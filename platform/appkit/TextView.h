// Text of several lines whose ranges carry attributes: links, underlines, colours.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/Element.h"
#include "platform/foundation/Value.h"

namespace clipwave {

inline constexpr std::string_view NSLinkAttributeName = "NSLink";                 // the URL's text
inline constexpr std::string_view NSUnderlineStyleAttributeName = "NSUnderline";  // 1: a single line
inline constexpr std::string_view NSForegroundColorAttributeName = "NSColor";     // "blue"

// Bytes [location, location + length) of the UTF-8 text.
struct TextRange {
  std::size_t location = 0;
  std::size_t length = 0;
  bool operator==(const TextRange&) const = default;
};

class TextStorage {
 public:
  struct Run {
    TextRange range;
    Dictionary attributes;
  };
  const std::string& string() const { return string_; }
  // Between the two, observers are not told; the last endEditing tells them once.
  void beginEditing() { ++editingDepth_; }
  void endEditing();
  // Replaces the text; every attribute goes.
  void setString(std::string_view text);
  // Adds attributes to a range inside the text; a range that reaches outside is ignored.
  void addAttributes(const Dictionary& attributes, TextRange range);
  // In the order in which they were added.
  const std::vector<Run>& runs() const { return runs_; }

 private:
  friend class TextView;
  void changed();
  std::string string_;
  std::vector<Run> runs_;
  int editingDepth_ = 0;
  bool pending_ = false;
  std::function<void()> onChange_;
};

class TextView : public Element {
 public:
  TextView() {
    textStorage_.onChange_ = [this] { changed(); };
  }
  TextStorage& textStorage() { return textStorage_; }
  const std::string& string() const { return textStorage_.string(); }
  void setString(std::string_view text) { textStorage_.setString(text); }

 private:
  TextStorage textStorage_;
};

}  // namespace clipwave
