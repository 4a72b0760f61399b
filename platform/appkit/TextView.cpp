#include "platform/appkit/TextView.h"

namespace clipwave {

void TextStorage::endEditing() {
  if (editingDepth_ == 0 || --editingDepth_ > 0 || !pending_) return;
  pending_ = false;
  changed();
}

void TextStorage::setString(std::string_view text) {
  if (string_ == text && runs_.empty()) return;
  string_ = text;
  runs_.clear();
  changed();
}

void TextStorage::addAttributes(const Dictionary& attributes, TextRange range) {
  if (range.location > string_.size() || range.length > string_.size() - range.location) return;
  runs_.push_back({range, attributes});
  changed();
}

void TextStorage::changed() {
  if (editingDepth_ > 0) {
    pending_ = true;
  } else if (onChange_) {
    onChange_();
  }
}

}  // namespace clipwave
