#include "platform/foundation/XMLReader.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <algorithm>
#include <climits>
#include <exception>
#include <memory>
#include <new>
#include <optional>

#include "platform/foundation/Localization.h"
#include "platform/foundation/XMLBounds.h"
#include "platform/foundation/XMLTag.h"
#include "platform/foundation/XMLTreeBuilder.h"

namespace clipwave {
namespace {

std::string_view view(const xmlChar* text) {
  return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}
std::string_view view(const xmlChar* text, int length) {
  return {reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)};
}

Error refusedAt(std::ptrdiff_t line, std::string_view reason) {
  return refusedXML(filledIn(localized("Documents", "Line %1: %2"), {std::to_string(line), reason}));
}

std::ptrdiff_t lineOf(std::string_view text, std::size_t at) {
  return 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n');
}

// Where the tag at `at` ends whose attributes are quoted; npos when the text is not well-formed there.
struct TagExtent {
  std::size_t end = std::string_view::npos;
  std::size_t attributes = 0;
};
TagExtent extentOfTag(std::string_view text, std::size_t at) {
  TagExtent extent;
  for (++at; at < text.size() && text[at] != '<'; ++at) {
    if (text[at] == '>') {
      extent.end = at + 1;
      break;
    }
    if (text[at] != '"' && text[at] != '\'') continue;
    ++extent.attributes;
    at = text.find(text[at], at + 1);
    if (at == std::string_view::npos || extent.attributes > kMostXMLAttributes) break;
  }
  return extent;
}

// Something that the parser would spend unreasonable time or memory on: it compares each attribute of a tag
// with all the others, and buffers what has no end. Looked for up to the first tag that is not well-formed,
// as the parser gets no further either.
std::optional<Error> overburdening(std::string_view text) {
  std::size_t at = 0;
  while ((at = text.find('<', at)) != std::string_view::npos) {
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("</")) {
      at += 2;
      continue;
    }
    if (!rest.starts_with("<!") && !rest.starts_with("<?")) {
      const TagExtent tag = extentOfTag(text, at);
      if (tag.attributes > kMostXMLAttributes)
        return refusedXML(localized("Documents", "A tag carries too many attributes."));
      if (tag.end == std::string_view::npos) break;
      at = tag.end;
      continue;
    }
    std::size_t end = 0;
    if (rest.starts_with("<!--")) {
      end = text.find("-->", at + 4);
    } else if (rest.starts_with("<![CDATA[")) {
      end = text.find("]]>", at + 9);
    } else if (rest.starts_with("<?")) {
      end = text.find("?>", at + 2);
    } else {
      end = endOfXMLDocumentType(text, at);
      if (end - at > kLongestXMLDocumentType && end <= text.size())
        return refusedXML(localized("Documents", "The document type is too long."));
    }
    if (end == std::string_view::npos)
      return refusedAt(lineOf(text, at), localized("Documents", "What begins here has no end."));
    at = end;
  }
  return std::nullopt;
}

struct ParserRelease {
  void operator()(xmlParserCtxt* parser) const {
    xmlFreeDoc(parser->myDoc);
    parser->myDoc = nullptr;
    xmlFreeParserCtxt(parser);
  }
};

// What goes on during one parse, beside the parser's own state.
struct Parse {
  std::unique_ptr<xmlParserCtxt, ParserRelease> parser{xmlNewParserCtxt()};
  bool refusesControls = false;
  XMLTreeBuilder builder;
  std::string value;  // of an attribute, with its references resolved
  std::optional<Error> error;
  std::exception_ptr exception;  // that must not run through the parser's frames

  // Ends the parse. xmlStopParser() would take the text away from under a parser that reports an error in
  // the midst of it; this only has its loops end.
  void stop() {
    parser->instate = XML_PARSER_EOF;
    parser->disableSAX = 1;
  }
  bool hasStopped() const { return error.has_value() || exception != nullptr; }

  void fail(Error reason) {
    if (!error) error = std::move(reason);
    stop();
  }
  void failHere(std::string_view reason) { fail(refusedAt(parser->input->line, reason)); }

  // Of the control characters from U+0080 on.
  void checkControls(std::string_view text) {
    if (!refusesControls) return;
    for (std::size_t at = 0; (at = text.find('\xC2', at)) != std::string_view::npos; ++at) {
      if (at + 1 < text.size() && static_cast<unsigned char>(text[at + 1]) < 0xA0)
        return failHere(localized("Documents", "There is a control character."));
    }
  }
};

// Every report of the parser comes through here. Once the parse has stopped, the parser may still have some
// to make, which no longer fit what has been built; where it went on to another state, it is stopped again.
template <typename Step>
void guarded(void* context, Step step) noexcept {
  Parse& parse = *static_cast<Parse*>(context);
  if (parse.hasStopped()) return parse.stop();
  try {
    step(parse);
  } catch (...) {
    parse.exception = std::current_exception();
    parse.stop();
  }
}

// Without a document of its own, the parser makes one to keep declared entities in.
void startDocument(void* context) {
  guarded(context, [](Parse& parse) {
    parse.parser->sax2 = 0;  // names are reported as they stand, and no prefixes looked up
    parse.parser->myDoc = xmlNewDoc(nullptr);
    if (parse.parser->myDoc == nullptr) throw std::bad_alloc();
  });
}

// The attribute's value with the one kind of reference resolved that the parser leaves in it.
std::string_view resolved(std::string_view value, std::string& buffer) {
  constexpr std::string_view kAmpersand = "&#38;";
  if (value.find('&') == std::string_view::npos) return value;
  buffer.clear();
  for (std::size_t at; (at = value.find(kAmpersand)) != std::string_view::npos;) {
    buffer.append(value, 0, at + 1);
    value.remove_prefix(at + kAmpersand.size());
  }
  return buffer.append(value);
}

void startElement(void* context, const xmlChar* name, const xmlChar** attributes) {
  guarded(context, [=](Parse& parse) {
    parse.builder.startElement(view(name));
    for (const xmlChar** each = attributes; each != nullptr && *each != nullptr; each += 2) {
      const std::string_view value = resolved(view(each[1]), parse.value);
      parse.checkControls(value);
      parse.builder.addAttribute(view(each[0]), value);
    }
    if (parse.builder.isOverfull())
      parse.fail(refusedXML(localized("Documents", "The document holds too many elements.")));
    if (parse.builder.openElements() > kMostXMLLevels)
      parse.failHere(localized("Documents", "The elements are nested too deeply."));
    if (xmlDictSize(parse.parser->dict) > kMostXMLNames)
      parse.fail(refusedXML(localized("Documents", "The document holds too many different names.")));
  });
}

void endElement(void* context, const xmlChar*) {
  guarded(context, [](Parse& parse) { parse.builder.endElement(); });
}

void appendText(void* context, const xmlChar* text, int length) {
  guarded(context, [=](Parse& parse) {
    if (parse.builder.openElements() == 0) return;
    // A reference comes alone.
    if (length == 2) parse.checkControls(view(text, length));
    parse.builder.text().append(view(text, length));
  });
}

void addInstruction(void* context, const xmlChar* target, const xmlChar* data) {
  guarded(context, [=](Parse& parse) {
    parse.builder.addInstruction(view(target), view(data));
    if (parse.builder.isOverfull())
      parse.fail(refusedXML(localized("Documents", "The document holds too many elements.")));
  });
}

// Asked for all but the predefined ones. No declared entity is ever expanded, and where one were left out,
// there would be a hole in the text.
xmlEntity* findEntity(void* context, const xmlChar* name) {
  guarded(context, [=](Parse& parse) {
    const bool isDeclaration = parse.parser->inSubset != 0;
    if (!isDeclaration)
      parse.failHere(filledIn(localized("Documents", "The entity “%1” is not known."), {view(name)}));
  });
  return nullptr;
}

// Declared attribute values would be copied into every element, so that a small document grows beyond bounds.
void declareAttribute(void* context, const xmlChar*, const xmlChar*, int, int, const xmlChar* defaultValue,
                      xmlEnumeration* tree) {
  xmlFreeEnumeration(tree);
  if (defaultValue == nullptr) return;
  guarded(context, [](Parse& parse) {
    parse.fail(refusedXML(localized("Documents", "The document type declares attribute values.")));
  });
}

void noteError(void* context, xmlErrorPtr problem) {
  if (problem->level != XML_ERR_FATAL) return;
  guarded(context, [=](Parse& parse) {
    if (problem->code == XML_ERR_NO_MEMORY) throw std::bad_alloc();
    std::string message(problem->message == nullptr ? "" : problem->message);
    while (!message.empty() && message.back() == '\n') message.pop_back();
    parse.fail(refusedAt(problem->line, message));
  });
}

xmlSAXHandler handlers() {
  xmlSAXHandler handlers{};
  handlers.initialized = XML_SAX2_MAGIC;
  handlers.startDocument = startDocument;
  handlers.startElement = startElement;
  handlers.endElement = endElement;
  handlers.characters = appendText;
  handlers.ignorableWhitespace = appendText;
  handlers.cdataBlock = appendText;
  handlers.processingInstruction = addInstruction;
  handlers.getEntity = findEntity;
  handlers.attributeDecl = declareAttribute;
  handlers.serror = noteError;
  return handlers;
}

// Parses the text where it lies. Throws std::bad_alloc.
void run(Parse& parse, const std::string& text) {
  if (parse.parser == nullptr) throw std::bad_alloc();
  xmlParserCtxt& parser = *parse.parser;
  *parser.sax = handlers();
  parser.userData = &parse;
  xmlCtxtUseOptions(&parser, XML_PARSE_NONET | XML_PARSE_IGNORE_ENC);
  xmlParserInput* input = xmlNewStringInputStream(&parser, reinterpret_cast<const xmlChar*>(text.c_str()));
  if (input == nullptr || inputPush(&parser, input) < 0) throw std::bad_alloc();
  // Otherwise the parser would guess at the encoding by the first bytes.
  parser.encoding = xmlStrdup(reinterpret_cast<const xmlChar*>("UTF-8"));
  xmlParseDocument(&parser);
  if (parse.exception) std::rethrow_exception(parse.exception);
}

}  // namespace

Result<std::unique_ptr<XMLTree>> readXML(const std::string& text, bool fromAnyone) {
  if (text.size() > INT_MAX) return refusedXML(localized("Documents", "The document is too large."));
  // The parser would take it for the end of the text.
  if (const std::size_t nul = text.find('\0'); nul != std::string::npos)
    return refusedAt(lineOf(text, nul),
                     localized("Documents", "There is a character that XML cannot carry."));
  if (std::optional<Error> error = overburdening(text)) return *std::move(error);
  Parse parse;
  parse.refusesControls = fromAnyone;
  run(parse, text);
  if (parse.error) return *std::move(parse.error);
  if (parse.parser->wellFormed == 0) return refusedXML(localized("Documents", "The document is not XML."));
  if (!parse.builder.hasRoot()) return refusedXML(localized("Documents", "The document holds no element."));
  return parse.builder.takeTree();
}

}  // namespace clipwave
