#include "platform/foundation/XMLDocument.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <climits>
#include <cstring>
#include <new>
#include <utility>

#include "platform/foundation/XMLEncoding.h"
#include "platform/foundation/XMLRepair.h"

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
  if (document != nullptr) {
    xmlFree(const_cast<xmlChar*>(document->encoding));
    document->encoding = xmlStrdup(bytes("UTF-8"));
  }
  return document;
}

// The library reads its indentation from settings that anyone in the process may have changed.
class StandardIndentation {
 public:
  StandardIndentation()
      : indents_(xmlIndentTreeOutput), indent_(xmlTreeIndentString), noEmptyTags_(xmlSaveNoEmptyTags) {
    xmlIndentTreeOutput = 1;
    xmlTreeIndentString = "  ";
    xmlSaveNoEmptyTags = 0;
  }
  ~StandardIndentation() {
    xmlIndentTreeOutput = indents_;
    xmlTreeIndentString = indent_;
    xmlSaveNoEmptyTags = noEmptyTags_;
  }
  StandardIndentation(const StandardIndentation&) = delete;
  StandardIndentation& operator=(const StandardIndentation&) = delete;

 private:
  int indents_;
  const char* indent_;
  int noEmptyTags_;
};

}  // namespace

XMLElement XMLElement::addChild(std::string_view name) {
  return XMLElement(appendElement(node_->doc, node_, sharedName(node_->doc, name)));
}

XMLElement XMLElement::addChild(std::string_view name, std::string_view text) {
  const XMLElement child = addChild(name);
  if (firstUnfitByte(text) == std::string_view::npos) {
    setOnlyText(child.node_, text);
  } else {
    setOnlyText(child.node_, textFitForXML(text));
  }
  return child;
}

void XMLElement::addAttribute(std::string_view name, std::string_view value) {
  xmlAttr* attribute = appendAttribute(node_, sharedName(node_->doc, name));
  if (firstUnfitByte(value) == std::string_view::npos) {
    setOnlyText(attribute, value);
  } else {
    setOnlyText(attribute, textFitForXML(value));
  }
}

std::string XMLElement::name() const {
  return std::string(view(node_->name));
}

std::string XMLElement::stringValue() const {
  return textWithin(node_);
}

std::string XMLElement::ownText() const {
  std::string text;
  for (const xmlNode* child = node_->children; child != nullptr; child = child->next) {
    if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE) text += view(child->content);
  }
  return text;
}

std::vector<XMLElement> XMLElement::elements() const {
  std::vector<XMLElement> found;
  for (xmlNode* child = node_->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE) found.push_back(XMLElement(child));
  }
  return found;
}

std::vector<XMLElement> XMLElement::elementsForName(std::string_view name) const {
  std::vector<XMLElement> found;
  for (xmlNode* child = node_->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE && view(child->name) == name) found.push_back(XMLElement(child));
  }
  return found;
}

std::optional<std::string> XMLElement::attribute(std::string_view name) const {
  for (const xmlAttr* attribute = node_->properties; attribute != nullptr; attribute = attribute->next) {
    if (view(attribute->name) == name) return textWithin(reinterpret_cast<const xmlNode*>(attribute));
  }
  return std::nullopt;
}

std::vector<std::pair<std::string, std::string>> XMLElement::attributes() const {
  std::vector<std::pair<std::string, std::string>> all;
  for (const xmlAttr* attribute = node_->properties; attribute != nullptr; attribute = attribute->next) {
    all.emplace_back(view(attribute->name), textWithin(reinterpret_cast<const xmlNode*>(attribute)));
  }
  return all;
}

XMLDocument::XMLDocument(std::string_view rootName) : document_(xmlNewDoc(bytes("1.0"))) {
  if (document_ == nullptr) throw std::bad_alloc();
  document_->dict = xmlDictCreate();
  document_->encoding = xmlStrdup(bytes("UTF-8"));
  appendElement(document_.get(), reinterpret_cast<xmlNode*>(document_.get()),
                sharedName(document_.get(), rootName));
}

XMLDocument::XMLDocument(XMLDocument&&) noexcept = default;
XMLDocument& XMLDocument::operator=(XMLDocument&&) noexcept = default;
XMLDocument::~XMLDocument() = default;

void XMLDocument::Free::operator()(xmlDoc* document) const {
  xmlFreeDoc(document);
}

Result<XMLDocument> XMLDocument::parse(std::string_view data, Parsing parsing, std::string_view charset) {
  const bool tolerant = parsing == Parsing::Tolerant;
  std::optional<std::string> text = decodedXML(data, charset, tolerant);
  if (!text)
    return cocoaError(kPropertyListReadCorruptError, "The document's bytes do not fit its encoding.");
  ParseState strictly;
  if (hasCrowdedXMLTag(*text)) {
    strictly.error = cocoaError(kPropertyListReadCorruptError, "A tag carries too many attributes.");
  } else if (XMLDocument document(parsed(*text, strictly)); document.document_ != nullptr) {
    // An entity that nobody declared leaves a hole in the text, also where that is well-formed.
    if (!tolerant || !strictly.metUnknownEntity) return document;
  }
  if (!tolerant) return *strictly.error;

  text = repairedXML(*text);
  if (!text) return cocoaError(kPropertyListReadCorruptError, "The document holds no element.");
  ParseState leniently;
  leniently.recovering = true;
  XMLDocument document(parsed(*text, leniently));
  if (document.document_ == nullptr) return *leniently.error;
  return document;
}

XMLElement XMLDocument::rootElement() const {
  return XMLElement(xmlDocGetRootElement(document_.get()));
}

void XMLDocument::addProcessingInstruction(std::string_view target, std::string_view data) {
  std::string content = textFitForXML(data);
  // The instruction would end there.
  for (std::size_t at = 0; (at = content.find("?>", at)) != std::string::npos;) content.insert(at + 1, " ");
  xmlNode* instruction =
      xmlNewDocPI(document_.get(), bytes(std::string(target).c_str()), bytes(content.c_str()));
  if (instruction == nullptr) throw std::bad_alloc();
  xmlAddPrevSibling(xmlDocGetRootElement(document_.get()), instruction);
}

std::string XMLDocument::prettyPrinted() const {
  const StandardIndentation indentation;
  std::string text;
  const auto append = [](void* to, const char* written, int length) -> int {
    static_cast<std::string*>(to)->append(written, static_cast<std::size_t>(length));
    return length;
  };
  xmlSaveCtxt* saving = xmlSaveToIO(append, nullptr, &text, nullptr, XML_SAVE_FORMAT | XML_SAVE_AS_XML);
  if (saving == nullptr) throw std::bad_alloc();
  xmlSaveDoc(saving, document_.get());
  xmlSaveClose(saving);
  return text;
}

}  // namespace clipwave
