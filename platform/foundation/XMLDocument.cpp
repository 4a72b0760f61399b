#include "platform/foundation/XMLDocument.h"

#include <new>
#include <utility>

#include "platform/foundation/Localization.h"
#include "platform/foundation/XMLBounds.h"
#include "platform/foundation/XMLEncoding.h"
#include "platform/foundation/XMLReader.h"
#include "platform/foundation/XMLRepair.h"
#include "platform/foundation/XMLTree.h"

namespace clipwave {
namespace {

void appendAllText(std::string& text, const XMLNode& node) {
  text.append(node.text);
  for (const XMLNode* child = node.firstChild; child != nullptr; child = child->next) {
    appendAllText(text, *child);
    text.append(child->tail);
  }
}

}  // namespace

XMLElement XMLElement::addChild(std::string_view name) {
  return {tree_, &tree_->appendElement(*node_, name)};
}

XMLElement XMLElement::addChild(std::string_view name, std::string_view text) {
  const XMLElement child = addChild(name);
  if (firstUnfitByte(text) == std::string_view::npos) {
    tree_->setText(*child.node_, text);
  } else {
    tree_->setText(*child.node_, textFitForXML(text));
  }
  return child;
}

void XMLElement::addAttribute(std::string_view name, std::string_view value) {
  if (firstUnfitByte(value) == std::string_view::npos) {
    tree_->appendAttribute(*node_, name, value);
  } else {
    tree_->appendAttribute(*node_, name, textFitForXML(value));
  }
}

std::string XMLElement::name() const {
  return std::string(node_->name);
}

std::string XMLElement::stringValue() const {
  std::string text;
  appendAllText(text, *node_);
  return text;
}

std::string XMLElement::ownText() const {
  std::string text(node_->text);
  for (const XMLNode* child = node_->firstChild; child != nullptr; child = child->next) text += child->tail;
  return text;
}

std::vector<XMLElement> XMLElement::children(const std::string_view* name) const {
  std::vector<XMLElement> found;
  for (XMLNode* child = node_->firstChild; child != nullptr; child = child->next) {
    if (name == nullptr || child->name == *name) found.push_back(XMLElement(tree_, child));
  }
  return found;
}

std::vector<XMLElement> XMLElement::elements() const {
  return children(nullptr);
}

std::vector<XMLElement> XMLElement::elementsForName(std::string_view name) const {
  return children(&name);
}

XMLElement XMLElement::firstElementForName(std::string_view name) const {
  XMLNode* child = node_->firstChild;
  while (child != nullptr && child->name != name) child = child->next;
  return {tree_, child};
}

std::optional<std::string> XMLElement::attribute(std::string_view name) const {
  for (const XMLAttribute* attribute = node_->firstAttribute; attribute != nullptr;
       attribute = attribute->next) {
    if (attribute->name == name) return std::string(attribute->value);
  }
  return std::nullopt;
}

std::vector<std::pair<std::string, std::string>> XMLElement::attributes() const {
  std::vector<std::pair<std::string, std::string>> all;
  for (const XMLAttribute* attribute = node_->firstAttribute; attribute != nullptr;
       attribute = attribute->next) {
    all.emplace_back(attribute->name, attribute->value);
  }
  return all;
}

XMLDocument::XMLDocument(std::string_view rootName) : tree_(std::make_unique<XMLTree>(rootName)) {}
XMLDocument::XMLDocument(std::unique_ptr<XMLTree> tree) : tree_(std::move(tree)) {}
XMLDocument::XMLDocument(XMLDocument&&) noexcept = default;
XMLDocument& XMLDocument::operator=(XMLDocument&&) noexcept = default;
XMLDocument::~XMLDocument() = default;

Result<XMLDocument> XMLDocument::parse(std::string_view data, Parsing parsing, std::string_view charset) try {
  const bool tolerant = parsing == Parsing::Tolerant;
  std::optional<std::string> text = decodedXML(data, charset, tolerant);
  if (!text) return refusedXML(localized("Documents", "The document's bytes do not fit its encoding."));
  if (text->size() > kMostXMLBytes) return refusedXML(localized("Documents", "The document is too large."));
  Result<std::unique_ptr<XMLTree>> tree = readXML(*text, tolerant);
  if (!tree && tolerant) {
    if (firstUnfitByte(*text) != std::string::npos) *text = textFitForXML(*text);
    tree = readBrokenXML(*text);
  }
  if (!tree) return tree.error();
  return XMLDocument(*std::move(tree));
} catch (const std::bad_alloc&) {
  return refusedXML(localized("Documents", "There is not enough memory for the document."));
}

XMLElement XMLDocument::rootElement() const {
  return {tree_.get(), &tree_->root()};
}

void XMLDocument::addProcessingInstruction(std::string_view target, std::string_view data) {
  std::string content = textFitForXML(data);
  // The instruction would end there.
  for (std::size_t at = 0; (at = content.find("?>", at)) != std::string::npos;)
    content.insert(at + 1, 1, ' ');
  tree_->appendInstruction(target, content);
}

std::string XMLDocument::prettyPrinted() const {
  return tree_->prettyPrinted();
}

}  // namespace clipwave
