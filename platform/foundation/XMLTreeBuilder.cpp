#include "platform/foundation/XMLTreeBuilder.h"

namespace clipwave {

void XMLTreeBuilder::addInstruction(std::string_view target, std::string_view data) {
  if (hasRoot_) return;
  ++nodes_;
  tree_->appendInstruction(target, data);
}

void XMLTreeBuilder::startElement(std::string_view name) {
  ++nodes_;
  if (!hasRoot_) {
    hasRoot_ = true;
    tree_->setName(tree_->root(), name);
    open_.push_back(&tree_->root());
    return;
  }
  keepText();
  open_.push_back(&tree_->appendElement(*open_.back(), name));
}

void XMLTreeBuilder::addAttribute(std::string_view name, std::string_view value) {
  ++nodes_;
  tree_->appendAttribute(*open_.back(), name, value);
}

void XMLTreeBuilder::endElement() {
  keepText();
  open_.pop_back();
}

void XMLTreeBuilder::keepText() {
  if (text_.empty()) return;
  XMLNode& node = *open_.back();
  node.lastChild == nullptr ? tree_->setText(node, text_) : tree_->setTail(*node.lastChild, text_);
  text_.clear();
}

}  // namespace clipwave
