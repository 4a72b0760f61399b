#include "platform/foundation/XMLTree.h"

#include <cstring>
#include <new>

#include "platform/foundation/XMLText.h"

namespace clipwave {
namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr std::size_t kIndentation = 2;

bool hasTextBetweenChildren(const XMLNode& node) {
  if (!node.text.empty()) return true;
  for (const XMLNode* child = node.firstChild; child != nullptr; child = child->next) {
    if (!child->tail.empty()) return true;
  }
  return false;
}

// `indented`: whether white space may stand around the element without becoming part of somebody's text.
void appendElement(std::string& out, const XMLNode& node, std::size_t depth, bool indented) {
  if (indented) out.append(kIndentation * depth, ' ');
  out.append("<").append(node.name);
  for (const XMLAttribute* attribute = node.firstAttribute; attribute != nullptr;
       attribute = attribute->next) {
    out.append(" ").append(attribute->name).append("=\"");
    appendEscapedXML(out, attribute->value, XMLPlace::Attribute);
    out.append("\"");
  }
  if (node.text.empty() && node.firstChild == nullptr) {
    out.append("/>");
  } else {
    out.append(">");
    appendEscapedXML(out, node.text, XMLPlace::Content);
    const bool indentChildren = indented && !hasTextBetweenChildren(node);
    if (indentChildren) out.append("\n");
    for (const XMLNode* child = node.firstChild; child != nullptr; child = child->next) {
      appendElement(out, *child, depth + 1, indentChildren);
      appendEscapedXML(out, child->tail, XMLPlace::Content);
    }
    if (indentChildren) out.append(kIndentation * depth, ' ');
    out.append("</").append(node.name).append(">");
  }
  if (indented) out.append("\n");
}

}  // namespace

XMLTree::XMLTree(std::string_view rootName) {
  root_.name = keep(rootName);
}

std::string_view XMLTree::keep(std::string_view text) {
  if (text.empty()) return {};
  auto* copy = static_cast<char*>(memory_.allocate(text.size(), 1));
  std::memcpy(copy, text.data(), text.size());
  expectedLength_ += text.size();
  return {copy, text.size()};
}

XMLNode& XMLTree::appendElement(XMLNode& parent, std::string_view name) {
  auto* node = new (memory_.allocate(sizeof(XMLNode), alignof(XMLNode))) XMLNode;
  node->name = keep(name);
  (parent.lastChild == nullptr ? parent.firstChild : parent.lastChild->next) = node;
  parent.lastChild = node;
  // The end tag's name, the brackets, and white space for a usual depth.
  expectedLength_ += name.size() + 16;
  return *node;
}

void XMLTree::appendAttribute(XMLNode& node, std::string_view name, std::string_view value) {
  auto* attribute = new (memory_.allocate(sizeof(XMLAttribute), alignof(XMLAttribute))) XMLAttribute;
  attribute->name = keep(name);
  attribute->value = keep(value);
  (node.lastAttribute == nullptr ? node.firstAttribute : node.lastAttribute->next) = attribute;
  node.lastAttribute = attribute;
  expectedLength_ += 4;
}

void XMLTree::appendInstruction(std::string_view target, std::string_view data) {
  std::string& instruction = instructions_.emplace_back("<?");
  instruction.append(target);
  if (!data.empty()) instruction.append(" ").append(data);
  instruction.append("?>\n");
}

std::string XMLTree::prettyPrinted() const {
  std::string text;
  text.reserve(expectedLength_ + kDeclaration.size());
  text.append(kDeclaration);
  for (const std::string& instruction : instructions_) text.append(instruction);
  clipwave::appendElement(text, root_, 0, true);
  return text;
}

}  // namespace clipwave
