#include "platform/foundation/XMLDocument.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <climits>
#include <cstring>
#include <new>
#include <utility>

#include "platform/foundation/XMLEncoding.h"
#include "platform/foundation/XMLRepair.h"
#include "platform/foundation/XMLTree.h"

namespace clipwave {
namespace {

const xmlChar* bytes(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}
const xmlChar* bytes(std::string_view text) {
  return reinterpret_cast<const xmlChar*>(text.data());
}

std::string_view view(const xmlChar* text) {
  return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

// Names stay as they are written, prefix and all: no tree of ours holds a namespace, so that there is none to
// look up and none to go missing. They live in the document's dictionary, which spares an allocation for
// each.
xmlChar* sharedName(xmlDoc* document, std::string_view name) {
  const xmlChar* shared = xmlDictLookup(document->dict, bytes(name), static_cast<int>(name.size()));
  if (shared == nullptr) throw std::bad_alloc();
  return const_cast<xmlChar*>(shared);
}

xmlNode* appendElement(xmlDoc* document, xmlNode* parent, xmlChar* name) {
  xmlNode* node = xmlNewDocNodeEatName(document, nullptr, name, nullptr);
  if (node == nullptr) throw std::bad_alloc();
  node->parent = parent;
  if (parent->last == nullptr) {
    parent->children = node;
  } else {
    parent->last->next = node;
    node->prev = parent->last;
  }
  parent->last = node;
  return node;
}

// `text` must be fit for XML. Works on an element without content and on a new attribute alike: both begin as
// an xmlNode does.
template <class Node>
void setOnlyText(Node* node, std::string_view text) {
  if (text.empty()) return;
  xmlNode* content = xmlNewTextLen(bytes(text), static_cast<int>(text.size()));
  if (content == nullptr) throw std::bad_alloc();
  content->doc = node->doc;
  content->parent = reinterpret_cast<xmlNode*>(node);
  node->children = node->last = content;
}

xmlAttr* appendAttribute(xmlNode* node, xmlChar* name) {
  xmlAttr* attribute = xmlNewNsPropEatName(node, nullptr, name, nullptr);
  if (attribute == nullptr) throw std::bad_alloc();
  return attribute;
}

std::string textWithin(const xmlNode* node) {
  // Nearly always there is one piece of text, which needs no copying back and forth.
  const xmlNode* child = node->children;
  if (child == nullptr) return {};
  if (child->next == nullptr && child->type == XML_TEXT_NODE) return std::string(view(child->content));
  xmlChar* content = xmlNodeGetContent(node);
  std::string text(view(content));
  xmlFree(content);
  return text;
}

// What goes on during one parse, beside the parser's own state.
struct ParseState {
  std::optional<Error> error;
  bool recovering = false;
  // A reference to an entity that XML does not predefine.
  bool metUnknownEntity = false;
};

ParseState& stateOf(void* context) {
  return *static_cast<ParseState*>(static_cast<xmlParserCtxt*>(context)->_private);
}

// Has the parser report names as they stand and look up no prefixes; it settles that itself, otherwise,
// before it begins.
void startDocument(void* context) {
  xmlSAX2StartDocument(context);
  static_cast<xmlParserCtxt*>(context)->sax2 = 0;
}

void startElement(void* context, const xmlChar* name, const xmlChar** attributes) {
  auto* parser = static_cast<xmlParserCtxt*>(context);
  xmlDoc* document = parser->myDoc;
  xmlNode* parent = parser->node != nullptr ? parser->node : reinterpret_cast<xmlNode*>(document);
  xmlNode* node = appendElement(document, parent, sharedName(document, view(name)));
  parser->nodemem = -1;
  for (; attributes != nullptr && *attributes != nullptr; attributes += 2) {
    xmlAttr* attribute = appendAttribute(node, sharedName(document, view(attributes[0])));
    const std::string_view value = view(attributes[1]);
    if (value.find('&') == std::string_view::npos) {
      setOnlyText(attribute, value);
      continue;
    }
    // The parser leaves "&" as a reference in attributes, to be resolved here.
    attribute->children = xmlStringGetNodeList(document, attributes[1]);
    for (xmlNode* part = attribute->children; part != nullptr; part = part->next) {
      part->parent = reinterpret_cast<xmlNode*>(attribute);
      attribute->last = part;
    }
  }
  nodePush(parser, node);
}

void endElement(void* context, const xmlChar*) {
  auto* parser = static_cast<xmlParserCtxt*>(context);
  parser->nodemem = -1;
  nodePop(parser);
}

xmlEntity* findEntity(void* context, const xmlChar* name) {
  xmlEntity* predefined = xmlGetPredefinedEntity(name);
  if (predefined == nullptr) stateOf(context).metUnknownEntity = true;
  return predefined;
}

// Declared attribute values would be copied into every element, so that a small document grows beyond bounds.
void declareAttribute(void* context, const xmlChar*, const xmlChar*, int, int, const xmlChar* defaultValue,
                      xmlEnumeration* tree) {
  xmlFreeEnumeration(tree);
  if (defaultValue == nullptr) return;
  ParseState& state = stateOf(context);
  if (!state.error)
    state.error = cocoaError(kPropertyListReadCorruptError, "The document type declares attribute values.");
  xmlStopParser(static_cast<xmlParserCtxt*>(context));
}

void noteError(void* context, xmlErrorPtr problem) {
  ParseState& state = stateOf(context);
  if (problem->level != XML_ERR_FATAL || state.recovering) return;
  if (!state.error) {
    std::string message(view(bytes(problem->message)));
    while (!message.empty() && message.back() == '\n') message.pop_back();
    state.error =
        cocoaError(kPropertyListReadCorruptError, "Line " + std::to_string(problem->line) + ": " + message);
  }
  // Going on would only take time, on text whose structure nothing vouches for.
  xmlStopParser(static_cast<xmlParserCtxt*>(context));
}

void prepareHandlers(xmlSAXHandler& handlers) {
  handlers.startDocument = startDocument;
  handlers.startElementNs = nullptr;
  handlers.endElementNs = nullptr;
  handlers.startElement = startElement;
  handlers.endElement = endElement;
  // Entities that are never declared cannot be expanded.
  handlers.entityDecl = [](void*, const xmlChar*, int, const xmlChar*, const xmlChar*, xmlChar*) {};
  handlers.unparsedEntityDecl = [](void*, const xmlChar*, const xmlChar*, const xmlChar*, const xmlChar*) {};
  handlers.getEntity = findEntity;
  handlers.getParameterEntity = [](void*, const xmlChar*) -> xmlEntity* { return nullptr; };
  handlers.attributeDecl = declareAttribute;
  handlers.externalSubset = [](void*, const xmlChar*, const xmlChar*, const xmlChar*) {};
  handlers.serror = noteError;
}

// Parses UTF-8 text. The answer is null when nothing came of it; `state` then says why.
xmlDoc* parsed(std::string_view text, ParseState& state) {
  if (text.size() > INT_MAX) {
    state.error = cocoaError(kPropertyListReadCorruptError, "The document is too large.");
    return nullptr;
  }
  xmlParserCtxt* parser = xmlNewParserCtxt();
  if (parser == nullptr) throw std::bad_alloc();
  prepareHandlers(*parser->sax);
  parser->_private = &state;
  int options = XML_PARSE_NONET | XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC;
  if (state.recovering) options |= XML_PARSE_RECOVER;
  xmlDoc* document =
      xmlCtxtReadMemory(parser, text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", options);
  if (document == nullptr) {
    // A parse that was stopped leaves what it had read.
    xmlFreeDoc(parser->myDoc);
    parser->myDoc = nullptr;
    if (!state.error) state.error = cocoaError(kPropertyListReadCorruptError, "The document is not XML.");
  } else if (xmlDocGetRootElement(document) == nullptr || state.error) {
    xmlFreeDoc(document);
    document = nullptr;
    if (!state.error)
      state.error = cocoaError(kPropertyListReadCorruptError, "The document holds no element.");
  }
  xmlFreeParserCtxt(parser);
  return document;
}

struct FreeDocument {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using OwnedDocument = std::unique_ptr<xmlDoc, FreeDocument>;

// Copies what the parser read below `from` into `to`. The parser bounds the depth.
void copyContent(XMLTree& tree, XMLNode& to, const xmlNode* from) {
  for (const xmlAttr* attribute = from->properties; attribute != nullptr; attribute = attribute->next) {
    tree.appendAttribute(to, view(attribute->name), textWithin(reinterpret_cast<const xmlNode*>(attribute)));
  }
  std::string text;
  XMLNode* before = nullptr;
  const auto keepText = [&] {
    if (text.empty()) return;
    before == nullptr ? tree.setText(to, text) : tree.setTail(*before, text);
    text.clear();
  };
  for (const xmlNode* child = from->children; child != nullptr; child = child->next) {
    if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE) {
      text += view(child->content);
    } else if (child->type == XML_ELEMENT_NODE) {
      keepText();
      before = &tree.appendElement(to, view(child->name));
      copyContent(tree, *before, child);
    }
  }
  keepText();
}

std::unique_ptr<XMLTree> treeFrom(const xmlDoc* document) {
  const xmlNode* root = xmlDocGetRootElement(document);
  auto tree = std::make_unique<XMLTree>(view(root->name));
  for (const xmlNode* node = document->children; node != root; node = node->next) {
    if (node->type == XML_PI_NODE) tree->appendInstruction(view(node->name), view(node->content));
  }
  copyContent(*tree, tree->root(), root);
  return tree;
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
  std::string text(node_->text);
  for (XMLNode* child = node_->firstChild; child != nullptr; child = child->next) {
    text.append(XMLElement(tree_, child).stringValue()).append(child->tail);
  }
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

Result<XMLDocument> XMLDocument::parse(std::string_view data, Parsing parsing, std::string_view charset) {
  const bool tolerant = parsing == Parsing::Tolerant;
  std::optional<std::string> text = decodedXML(data, charset, tolerant);
  if (!text)
    return cocoaError(kPropertyListReadCorruptError, "The document's bytes do not fit its encoding.");
  ParseState strictly;
  if (hasCrowdedXMLTag(*text)) {
    strictly.error = cocoaError(kPropertyListReadCorruptError, "A tag carries too many attributes.");
  } else if (const OwnedDocument document(parsed(*text, strictly)); document) {
    // An entity that nobody declared leaves a hole in the text, also where that is well-formed.
    if (!tolerant || !strictly.metUnknownEntity) return XMLDocument(treeFrom(document.get()));
  }
  if (!tolerant) return *strictly.error;

  text = repairedXML(*text);
  if (!text) return cocoaError(kPropertyListReadCorruptError, "The document holds no element.");
  ParseState leniently;
  leniently.recovering = true;
  const OwnedDocument document(parsed(*text, leniently));
  if (!document) return *leniently.error;
  return XMLDocument(treeFrom(document.get()));
}

XMLElement XMLDocument::rootElement() const {
  return {tree_.get(), &tree_->root()};
}

void XMLDocument::addProcessingInstruction(std::string_view target, std::string_view data) {
  std::string content = textFitForXML(data);
  // The instruction would end there.
  for (std::size_t at = 0; (at = content.find("?>", at)) != std::string::npos;) content.insert(at + 1, " ");
  tree_->appendInstruction(target, content);
}

std::string XMLDocument::prettyPrinted() const {
  return tree_->prettyPrinted();
}

}  // namespace clipwave
