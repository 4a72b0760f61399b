// The tree behind an XML document: its elements, attributes and texts, in memory that is given back as a
// whole. Internal to this room.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

namespace clipwave {

struct XMLAttribute {
  std::string_view name;
  std::string_view value;
  XMLAttribute* next = nullptr;
};

// Texts are kept beside the elements that they follow, so that an element with a text alone is one node.
struct XMLNode {
  std::string_view name;
  std::string_view text;  // ahead of the first child
  std::string_view tail;  // behind the element, within its parent
  XMLAttribute* firstAttribute = nullptr;
  XMLAttribute* lastAttribute = nullptr;
  XMLNode* firstChild = nullptr;
  XMLNode* lastChild = nullptr;
  XMLNode* next = nullptr;
};

// Names, texts and values are copied into the tree; all of them must be fit for XML.
class XMLTree {
 public:
  explicit XMLTree(std::string_view rootName);
  XMLTree(const XMLTree&) = delete;
  XMLTree& operator=(const XMLTree&) = delete;

  XMLNode& root() { return root_; }
  void setName(XMLNode& node, std::string_view name) { node.name = keep(name); }
  XMLNode& appendElement(XMLNode& parent, std::string_view name);
  void appendAttribute(XMLNode& node, std::string_view name, std::string_view value);
  void setText(XMLNode& node, std::string_view text) { node.text = keep(text); }
  void setTail(XMLNode& node, std::string_view tail) { node.tail = keep(tail); }
  // Ahead of the root element, behind the instructions before it.
  void appendInstruction(std::string_view target, std::string_view data);

  std::string prettyPrinted() const;

 private:
  std::string_view keep(std::string_view text);

  // A feed of thousands of episodes is a quarter of a million small pieces; one by one, they cost the heap
  // more than all that is done with them.
  std::pmr::monotonic_buffer_resource memory_;
  XMLNode root_;
  std::vector<std::string> instructions_;
  std::size_t expectedLength_ = 0;  // of the document when it is written
};

}  // namespace clipwave
