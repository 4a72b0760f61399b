#include "platform/foundation/XMLRepair.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/foundation/XMLEncoding.h"
#include "platform/foundation/XMLTag.h"
#include "platform/foundation/XMLText.h"

namespace clipwave {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
// A declaration further in than this is somebody's text, not the true beginning behind a server's complaints.
constexpr std::size_t kLongestLeadingJunk = 4096;

// Finds marks in the text. It remembers what lies ahead, so that a thousand comments without an end do not
// cost a thousand readings of the rest.
class Finder {
 public:
  explicit Finder(std::string_view text) : text_(text) {}
  // Where the next such mark ends, at or behind `from`; npos when there is none.
  std::size_t endOf(std::string_view mark, std::size_t from) {
    const auto [known, isNew] = known_.try_emplace(mark);
    Stretch& stretch = known->second;
    if (isNew || from < stretch.from || from > stretch.found) stretch = {from, text_.find(mark, from)};
    return stretch.found == std::string_view::npos ? stretch.found : stretch.found + mark.size();
  }

 private:
  struct Stretch {
    std::size_t from;
    std::size_t found;
  };
  std::string_view text_;
  std::unordered_map<std::string_view, Stretch> known_;
};

// Where the document type at `at` ends, with what it declares between brackets; npos when it does not.
std::size_t endOfDocumentType(std::string_view text, std::size_t at) {
  const auto endOf = [text](std::string_view mark, std::size_t from) {
    const std::size_t found = text.find(mark, from);
    return found == std::string_view::npos ? text.size() : found + mark.size();
  };
  bool inBrackets = false;
  while (at < text.size()) {
    const std::string_view rest = text.substr(at);
    if (rest[0] == '>' && !inBrackets) return at + 1;
    if (rest[0] == '[' || rest[0] == ']') inBrackets = rest[0] == '[';
    if (rest[0] == '"' || rest[0] == '\'') {
      at = endOf(rest.substr(0, 1), at + 1);
    } else if (rest.starts_with("<!--")) {
      at = endOf("-->", at + 4);
    } else if (rest.starts_with("<?")) {
      at = endOf("?>", at + 2);
    } else {
      ++at;
    }
  }
  return std::string_view::npos;
}

struct Token {
  enum class Kind : std::uint8_t { Text, CharacterData, Start, Empty, End, StrayEnd };
  std::uint32_t at = 0;
  std::uint32_t length = 0;  // of a text, or of a tag's name
  Kind kind = Kind::Text;
  bool lacksEnd = false;  // a start tag that no end tag answers
};

// Cuts the text into its tags and what stands between them; comments, instructions and document types fall
// away.
class Tokenizer {
 public:
  explicit Tokenizer(std::string_view text) : text_(text), finder_(text) {}

  std::vector<Token> tokens() {
    std::size_t at = 0;
    while (at < text_.size()) {
      const std::size_t bracket = std::min(text_.find('<', at), text_.size());
      addText(at, bracket);
      if (bracket == text_.size()) break;
      at = takeMarkup(bracket);
      if (at > bracket) continue;
      addText(bracket, bracket + 1);
      at = bracket + 1;
    }
    return std::move(tokens_);
  }

 private:
  // Answers where the markup at `at` ends; `at` itself when it is none.
  std::size_t takeMarkup(std::size_t at) {
    const std::string_view rest = text_.substr(at);
    std::size_t end = std::string_view::npos;
    if (rest.starts_with("<!--")) {
      end = finder_.endOf("-->", at + 4);
    } else if (rest.starts_with("<![CDATA[")) {
      return takeCharacterData(at + 9);
    } else if (rest.starts_with("<!DOCTYPE") || rest.starts_with("<!doctype")) {
      if (!sawDocumentType_) end = endOfDocumentType(text_, at + 9);
      sawDocumentType_ = true;
      if (end == std::string_view::npos) end = finder_.endOf(">", at);
    } else if (rest.starts_with("<?")) {
      end = takeInstruction(at);
    } else if (rest.starts_with("</")) {
      return takeEndTag(at);
    } else if (const std::optional<XMLTag> tag = scanXMLTag(text_, at)) {
      add(tag->isEmpty ? Token::Kind::Empty : Token::Kind::Start, at + 1, tag->name.size());
      end = tag->end;
    }
    return end == std::string_view::npos ? at : end;
  }

  std::size_t takeInstruction(std::size_t at) {
    const std::string_view rest = text_.substr(at);
    if (xmlNameLength(rest.substr(2)) == 0) return std::string_view::npos;
    const bool isDeclaration =
        rest.starts_with("<?xml") && rest.size() > 5 && kBlanks.find(rest[5]) != rest.npos;
    if (isDeclaration && at <= kLongestLeadingJunk && !startsWithDeclaration_) tokens_.clear();
    startsWithDeclaration_ = startsWithDeclaration_ || isDeclaration;
    const std::size_t end = finder_.endOf(isDeclaration ? ">" : "?>", at);
    return end == std::string_view::npos ? finder_.endOf(">", at) : end;
  }

  // A section without an end, or with another one's, ends before the next end tag.
  std::size_t takeCharacterData(std::size_t from) {
    std::size_t end = finder_.endOf("]]>", from);
    const std::size_t next = finder_.endOf("<![CDATA[", from);
    if (end != std::string_view::npos && end < next) {
      add(Token::Kind::CharacterData, from, end - 3 - from);
      return end;
    }
    end = finder_.endOf("</", from);
    end = end == std::string_view::npos ? text_.size() : end - 2;
    add(Token::Kind::CharacterData, from, end - from);
    return end;
  }

  std::size_t takeEndTag(std::size_t at) {
    const std::size_t length = xmlNameLength(text_.substr(at + 2));
    if (length == 0) return at;
    add(Token::Kind::End, at + 2, length);
    const std::size_t behind = std::min(text_.find_first_not_of(kBlanks, at + 2 + length), text_.size());
    const std::size_t bracket = std::min(text_.find_first_of("<>", behind), text_.size());
    return bracket < text_.size() && text_[bracket] == '>' ? bracket + 1 : behind;
  }

  // Pieces of text that touch are one, so that a text full of "<" does not become a token for each.
  void addText(std::size_t from, std::size_t to) {
    if (from == to) return;
    if (!tokens_.empty() && tokens_.back().kind == Token::Kind::Text &&
        tokens_.back().at + tokens_.back().length == from) {
      tokens_.back().length += static_cast<std::uint32_t>(to - from);
    } else {
      add(Token::Kind::Text, from, to - from);
    }
  }

  void add(Token::Kind kind, std::size_t at, std::size_t length) {
    tokens_.push_back({static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(length), kind, false});
  }

  std::string_view text_;
  Finder finder_;
  std::vector<Token> tokens_;
  bool startsWithDeclaration_ = false;
  bool sawDocumentType_ = false;
};

// Finds out which start tags no end tag answers, and which end tags answer none.
void matchTags(std::string_view text, std::vector<Token>& tokens) {
  std::vector<std::size_t> open;
  // For each name where its open tags stand in `open`.
  std::unordered_map<std::string_view, std::vector<std::size_t>> openByName;
  const auto nameOf = [&](const Token& token) { return text.substr(token.at, token.length); };
  const auto closeLast = [&](bool lacksEnd) {
    Token& start = tokens[open.back()];
    start.lacksEnd = lacksEnd;
    openByName[nameOf(start)].pop_back();
    open.pop_back();
  };
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].kind == Token::Kind::Start) {
      openByName[nameOf(tokens[i])].push_back(open.size());
      open.push_back(i);
    } else if (tokens[i].kind == Token::Kind::End) {
      const auto same = openByName.find(nameOf(tokens[i]));
      if (same == openByName.end() || same->second.empty()) {
        tokens[i].kind = Token::Kind::StrayEnd;
        continue;
      }
      const std::size_t match = same->second.back();
      while (open.size() > match + 1) closeLast(true);
      closeLast(false);
    }
  }
  while (!open.empty()) closeLast(true);
}

// Writes the tokens as one well-formed element.
class Writer {
 public:
  explicit Writer(std::string_view text) : text_(text) { out_.reserve(text.size() + text.size() / 8); }

  std::optional<std::string> write(const std::vector<Token>& tokens) {
    for (const Token& token : tokens) {
      if (wroteRoot_ && open_.empty()) break;
      take(token);
    }
    while (!open_.empty()) close();
    if (!wroteRoot_) return std::nullopt;
    return std::move(out_);
  }

 private:
  struct Open {
    std::string_view name;
    bool lacksEnd;
    bool isOmitted;
    bool hasText = false;
    bool hasChild = false;
  };

  void take(const Token& token) {
    const std::string_view content = text_.substr(token.at, token.length);
    switch (token.kind) {
      case Token::Kind::Text:
      case Token::Kind::CharacterData:
        if (open_.empty()) break;  // junk around the document
        if (content.find_first_not_of(kBlanks) != std::string_view::npos) open_.back().hasText = true;
        token.kind == Token::Kind::Text ? appendRepairedXML(out_, content)
                                        : appendEscapedXML(out_, content, XMLPlace::Source);
        break;
      case Token::Kind::Start:
      case Token::Kind::Empty:
        open(token, content);
        break;
      case Token::Kind::End:
        while (open_.back().lacksEnd) close();
        close();
        break;
      case Token::Kind::StrayEnd:
        break;
    }
  }

  void open(const Token& token, std::string_view name) {
    closeBefore(name);
    const bool isOmitted = open_.size() >= kMostXMLLevels;
    const bool isEmpty = token.kind == Token::Kind::Empty;
    wroteRoot_ = true;
    if (!open_.empty()) open_.back().hasChild = true;
    if (!isOmitted) {
      out_ += '<';
      out_ += name;
      writeAttributes(token.at - 1);
      out_ += isEmpty ? "/>" : ">";
    }
    if (!isEmpty) open_.push_back({name, token.lacksEnd, isOmitted});
  }

  // Ends the elements that lack their end tag and cannot hold the one that begins now.
  void closeBefore(std::string_view name) {
    if (open_.size() > 1 && open_.back().lacksEnd && open_.back().hasText && !open_.back().hasChild) close();
    const std::size_t outermost = open_.size() > kMostXMLLevels ? open_.size() - kMostXMLLevels : 1;
    for (std::size_t i = open_.size(); i-- > outermost && open_[i].lacksEnd;) {
      if (open_[i].name != name) continue;
      while (open_.size() > i) close();
      return;
    }
  }

  void close() {
    if (!open_.back().isOmitted) {
      out_ += "</";
      out_ += open_.back().name;
      out_ += '>';
    }
    open_.pop_back();
  }

  void writeAttributes(std::size_t tagAt) {
    std::vector<std::string_view> written;
    scanXMLTag(text_, tagAt, [&](const XMLAttribute& attribute) {
      const bool isName = !attribute.name.empty() && xmlNameLength(attribute.name) == attribute.name.size();
      if (!isName || std::find(written.begin(), written.end(), attribute.name) != written.end()) return true;
      written.push_back(attribute.name);
      out_ += ' ';
      out_ += attribute.name;
      out_ += "=\"";
      appendRepairedXML(out_, attribute.value);
      out_ += '"';
      return written.size() < kMostXMLAttributes;
    });
  }

  std::string_view text_;
  std::string out_;
  std::vector<Open> open_;
  bool wroteRoot_ = false;
};

}  // namespace

bool hasCrowdedXMLTag(std::string_view text) {
  std::size_t at = 0;
  while ((at = text.find('<', at)) != std::string_view::npos) {
    const std::string_view rest = text.substr(at);
    std::size_t end = std::string_view::npos;
    if (rest.starts_with("<!--")) {
      end = text.find("-->", at + 4);
    } else if (rest.starts_with("<![CDATA[")) {
      end = text.find("]]>", at + 9);
    } else if (rest.starts_with("<?")) {
      end = text.find("?>", at + 2);
    } else if (rest.starts_with("<!DOCTYPE")) {
      end = endOfDocumentType(text, at + 9);
    } else if (rest.starts_with("</")) {
      end = at + 2;
    } else {
      std::size_t count = 0;
      const auto tag =
          scanXMLTag(text, at, [&count](const XMLAttribute&) { return ++count <= kMostXMLAttributes; });
      if (count > kMostXMLAttributes) return true;
      if (tag) end = tag->end;
    }
    // Not well-formed: the parser gets no further either.
    if (end == std::string_view::npos) return false;
    at = end;
  }
  return false;
}

std::optional<std::string> repairedXML(std::string_view text) {
  std::string fit;
  if (firstUnfitByte(text) != std::string_view::npos) {
    fit = textFitForXML(text);
    text = fit;
  }
  if (text.size() >= UINT32_MAX) return std::nullopt;
  std::vector<Token> tokens = Tokenizer(text).tokens();
  matchTags(text, tokens);
  return Writer(text).write(tokens);
}

}  // namespace clipwave
