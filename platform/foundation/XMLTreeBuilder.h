// Builds the tree of a document that is being read, tag by tag. Internal to this room.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/XMLBounds.h"
#include "platform/foundation/XMLTree.h"

namespace clipwave {

class XMLTreeBuilder {
 public:
  // Passed over once an element has begun.
  void addInstruction(std::string_view target, std::string_view data);
  // The first element is the root; behind its end, no other may begin.
  void startElement(std::string_view name);
  // REQUIRES: the element begun last holds nothing yet.
  void addAttribute(std::string_view name, std::string_view value);
  // What the open element goes on with. REQUIRES: an element is open.
  std::string& text() { return text_; }
  void endElement();

  std::size_t openElements() const { return open_.size(); }
  bool hasRoot() const { return hasRoot_; }
  // The document holds more than kMostXMLNodes.
  bool isOverfull() const { return nodes_ > kMostXMLNodes; }
  std::unique_ptr<XMLTree> takeTree() { return std::move(tree_); }

 private:
  void keepText();

  std::unique_ptr<XMLTree> tree_ = std::make_unique<XMLTree>("");
  std::vector<XMLNode*> open_;
  std::string text_;  // that is not in the tree yet
  std::size_t nodes_ = 0;
  bool hasRoot_ = false;
};

}  // namespace clipwave
