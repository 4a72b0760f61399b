// XML documents: built element by element and written pretty-printed, or read from text that may be broken.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Error.h"

namespace clipwave {

class XMLTree;
struct XMLNode;

// A handle to one element of a document; as cheap to copy as two pointers. It is valid as long as its
// document. Names may carry a prefix ("itunes:author"); they are written and compared as they stand.
class XMLElement {
 public:
  XMLElement() = default;
  explicit operator bool() const { return node_ != nullptr; }

  // Appends an element with the given text, and answers it. Characters that XML cannot carry are left out of
  // every text and attribute value; the rest is escaped when the document is written. The text is UTF-8;
  // bytes that are not are replaced by U+FFFD.
  XMLElement addChild(std::string_view name);
  XMLElement addChild(std::string_view name, std::string_view text);
  // Attributes are written in the order in which they were added. Also used for namespace declarations
  // ("xmlns:itunes").
  void addAttribute(std::string_view name, std::string_view value);

  std::string name() const;  // with its prefix
  // All text within, entities and CDATA sections resolved, white space as it stands.
  std::string stringValue() const;
  // The text that stands directly in the element, without that of its child elements.
  std::string ownText() const;
  std::vector<XMLElement> elements() const;  // child elements, in order
  std::vector<XMLElement> elementsForName(std::string_view name) const;
  XMLElement firstElementForName(std::string_view name) const;  // false when there is none
  std::optional<std::string> attribute(std::string_view name) const;
  std::vector<std::pair<std::string, std::string>> attributes() const;

 private:
  friend class XMLDocument;
  XMLElement(XMLTree* tree, XMLNode* node) : tree_(tree), node_(node) {}
  std::vector<XMLElement> children(const std::string_view* name) const;

  XMLTree* tree_ = nullptr;
  XMLNode* node_ = nullptr;
};

class XMLDocument {
 public:
  // An empty document, version 1.0, UTF-8, with this root element.
  explicit XMLDocument(std::string_view rootName);
  XMLDocument(XMLDocument&&) noexcept;
  XMLDocument& operator=(XMLDocument&&) noexcept;
  ~XMLDocument();

  enum class Parsing { Strict, Tolerant };
  // Reads a document. No entity is fetched, no document type is loaded, no entity is expanded but the
  // predefined and numeric ones (Tolerant: HTML's named ones too), nothing touches the network. Tolerant
  // reads strictly first and repairs what fails, keeping its text: bare "&" and "<", undeclared entities,
  // missing end tags, white space before the declaration; a repair drops the instructions ahead of the root.
  // It decodes leniently too, so that it may differ from Strict on well-formed text where the text's label,
  // or its references to U+0080 to U+009F, are not what their author meant. Fails when no element is left,
  // with kPropertyListReadCorruptError and the reason; that of a strict parse says the line where one is
  // known. `charset` names the encoding when something outside the text decided it ("" to look at mark and
  // declaration).
  //
  // Whatever the text holds, it takes time in proportion to it (seconds for 64 MiB) and, with the text
  // itself, less than 768 MiB of memory for 64 MiB of it. Tolerant cuts off attributes beyond 256 on a tag
  // and tags below 200 levels. Strict refuses both, and a document type of more than 64 KiB, more than 65,536
  // different names, a name of more than 50,000 bytes, and an attribute value, a CDATA section or an
  // instruction of more than 10,000,000. Either fails for more than 128 MiB in UTF-8, and for more than
  // 2,000,000 elements and attributes.
  static Result<XMLDocument> parse(std::string_view data, Parsing parsing, std::string_view charset = {});

  XMLElement rootElement() const;
  // Puts a processing instruction ahead of the root element, behind those that were put there before.
  void addProcessingInstruction(std::string_view target, std::string_view data);
  // The whole document with its declaration, one element per line, indented by two spaces a level; an element
  // without content is a single empty-element tag. In a document that was read, white space between elements
  // stands; comments, the document type, and instructions behind the root element's start are not kept.
  std::string prettyPrinted() const;

 private:
  explicit XMLDocument(std::unique_ptr<XMLTree> tree);
  std::unique_ptr<XMLTree> tree_;
};

}  // namespace clipwave
