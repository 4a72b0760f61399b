#include "platform/foundation/XMLRepair.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/XMLBounds.h"
#include "platform/foundation/XMLTag.h"
#include "platform/foundation/XMLText.h"
#include "platform/foundation/XMLTreeBuilder.h"

namespace clipwave {
namespace {

// A declaration further in than this is somebody's text, not the true beginning behind a server's complaints.
constexpr std::size_t kLongestLeadingJunk = 4096;
// Texts and end tags come on top of the elements.
constexpr std::size_t kMostTokens = 4 * kMostXMLNodes;
constexpr std::size_t kMostVainReadings = 8;
constexpr std::size_t kSmallText = 65'536;
// HTML's elements that never have an end tag and that no feed has by these names.
constexpr std::string_view kHTMLVoids[] = {"br", "hr", "img"};

// Finds marks in the text. It remembers what lies ahead, so that a thousand comments without an end do not
// cost a thousand readings of the rest.
class Finder {
 public:
  explicit Finder(std::string_view text) : text_(text) {}
  // Where the next such mark ends, at or behind `from`; npos when there is none.
  std::size_t endOf(std::string_view mark, std::size_t from) {
    Stretch& stretch = stretchOf(mark);
    if (from < stretch.from || from > stretch.found) {
      stretch.from = from;
      stretch.found = text_.find(mark, from);
    }
    return stretch.found == std::string_view::npos ? stretch.found : stretch.found + mark.size();
  }

 private:
  struct Stretch {
    std::string_view mark;
    std::size_t from = std::string_view::npos;
    std::size_t found = 0;
  };
  // There are half a dozen marks.
  Stretch& stretchOf(std::string_view mark) {
    for (Stretch& stretch : known_) {
      if (stretch.mark == mark) return stretch;
    }
    return known_.emplace_back(Stretch{.mark = mark});
  }

  std::string_view text_;
  std::vector<Stretch> known_;
};

struct Token {
  enum class Kind : std::uint8_t { Text, CharacterData, Start, Empty, End, StrayEnd };
  std::uint32_t at = 0;
  std::uint32_t length = 0;  // of a text, or of a tag's name
  Kind kind = Kind::Text;
  bool lacksEnd = false;  // a start tag that no end tag answers

  bool isText() const { return kind == Kind::Text || kind == Kind::CharacterData; }
  bool isElement() const { return kind == Kind::Start || kind == Kind::Empty; }
};
// Grows without being copied: of a hostile text there are millions.
using Tokens = std::deque<Token>;

// The name in the text's last end tag, which in a whole document is the root's; "" when there is none, and
// when it is that of the page which a web server put around the document.
std::string_view rootNameByEnd(std::string_view text) {
  const std::size_t last = text.rfind("</");
  if (last == std::string_view::npos) return {};
  const std::string_view name = text.substr(last + 2, xmlNameLength(text.substr(last + 2)));
  return name == "html" ? std::string_view() : name;
}

// Cuts the text into its tags and what stands between them; comments, instructions and document types fall
// away.
class Tokenizer {
 public:
  explicit Tokenizer(std::string_view text) : text_(text), finder_(text) {}

  // Stops early when it isOverburdened().
  void run() {
    std::size_t at = 0;
    while (at < text_.size() && !isOverburdened()) {
      const std::size_t bracket = std::min(text_.find('<', at), text_.size());
      addText(at, bracket);
      if (bracket == text_.size()) break;
      at = takeMarkup(bracket);
      if (at > bracket) continue;
      if (isCutOff(bracket)) break;
      addText(bracket, bracket + 1);
      at = bracket + 1;
    }
  }

  Tokens& tokens() { return tokens_; }
  bool isOverburdened() const {
    return tags_ > kMostXMLNodes || tokens_.size() > kMostTokens || isHopeless();
  }
  // Whether the text was read many times over for tags that were none: each of them can hold the next.
  bool isHopeless() const { return vainlyRead_ > kMostVainReadings * (text_.size() + kSmallText); }

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
      if (!sawDocumentType_) end = endOfXMLDocumentType(text_, at);
      sawDocumentType_ = true;
      if (end == std::string_view::npos) end = finder_.endOf(">", at);
    } else if (rest.starts_with("<?")) {
      end = takeInstruction(at);
    } else if (rest.starts_with("</")) {
      return takeEndTag(at);
    } else if (const XMLTag tag = scanXMLTag(text_, at); tag.isTag) {
      add(tag.isEmpty ? Token::Kind::Empty : Token::Kind::Start, at + 1, tag.name.size());
      end = tag.end;
    } else {
      vainlyRead_ += tag.end - at;
    }
    return end == std::string_view::npos ? at : end;
  }

  // Whether the text ends within the markup that begins here.
  bool isCutOff(std::size_t at) {
    const std::string_view behind = text_.substr(at + 1);
    const bool isMarkup =
        !behind.empty() &&
        (std::string_view("/!?").find(behind[0]) != std::string_view::npos || xmlNameLength(behind) > 0);
    return isMarkup && finder_.endOf("<", at + 1) == std::string_view::npos &&
           finder_.endOf(">", at + 1) == std::string_view::npos;
  }

  std::size_t takeInstruction(std::size_t at) {
    const std::string_view rest = text_.substr(at);
    if (xmlNameLength(rest.substr(2)) == 0) return std::string_view::npos;
    const bool isDeclaration =
        rest.starts_with("<?xml") && rest.size() > 5 && kBlanks.find(rest[5]) != rest.npos;
    if (isDeclaration && at <= kLongestLeadingJunk && !startsWithDeclaration_ && !isWithinDocument())
      tokens_.clear();
    startsWithDeclaration_ = startsWithDeclaration_ || isDeclaration;
    const std::size_t end = finder_.endOf(isDeclaration ? ">" : "?>", at);
    return end == std::string_view::npos ? finder_.endOf(">", at) : end;
  }

  // Whether what has begun so far is what the text ends with, and not what a web server put before it.
  bool isWithinDocument() const {
    const std::string_view name = rootNameByEnd(text_);
    return !name.empty() && std::any_of(tokens_.begin(), tokens_.end(), [&](const Token& token) {
      return token.kind == Token::Kind::Start && name == text_.substr(token.at, token.length);
    });
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
    if (tokens_.back().isElement()) ++tags_;
  }

  std::string_view text_;
  Finder finder_;
  Tokens tokens_;
  std::size_t tags_ = 0;
  std::size_t vainlyRead_ = 0;
  bool startsWithDeclaration_ = false;
  bool sawDocumentType_ = false;
};

// Finds out which start tags no end tag answers, and which end tags answer none.
void matchTags(std::string_view text, Tokens& tokens) {
  constexpr std::uint32_t kNone = UINT32_MAX;
  struct OpenTag {
    std::uint32_t token;
    std::uint32_t outerNamesake;  // where the next outer open tag of the same name stands in `open`
  };
  std::vector<OpenTag> open;
  std::unordered_map<std::string_view, std::uint32_t> innermost;  // by name, where in `open`
  const auto nameOf = [&](const Token& token) { return text.substr(token.at, token.length); };
  const auto markUnanswered = [&](Token& start) {
    const std::string_view name = nameOf(start);
    start.lacksEnd = true;
    if (std::find(std::begin(kHTMLVoids), std::end(kHTMLVoids), name) != std::end(kHTMLVoids))
      start.kind = Token::Kind::Empty;
  };
  const auto closeLast = [&](bool lacksEnd) {
    Token& start = tokens[open.back().token];
    if (lacksEnd) markUnanswered(start);
    innermost[nameOf(start)] = open.back().outerNamesake;
    open.pop_back();
  };
  for (std::uint32_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].kind == Token::Kind::Start) {
      std::uint32_t& namesake = innermost.try_emplace(nameOf(tokens[i]), kNone).first->second;
      open.push_back({i, namesake});
      namesake = static_cast<std::uint32_t>(open.size() - 1);
    } else if (tokens[i].kind == Token::Kind::End) {
      const auto match = innermost.find(nameOf(tokens[i]));
      if (match == innermost.end() || match->second == kNone) {
        tokens[i].kind = Token::Kind::StrayEnd;
        continue;
      }
      const std::size_t depth = match->second;
      while (open.size() > depth + 1) closeLast(true);
      closeLast(false);
    }
  }
  for (const OpenTag& tag : open) markUnanswered(tokens[tag.token]);
}

// Which token begins the document. An element holds others unless it is a web server's remark, and of those
// that do, it is the one with the last end tag's name, or else the first. Failing that, it is the element of
// that name, or else the first of all. A remark without its end tag may stand around the document.
std::size_t rootOf(std::string_view text, const Tokens& tokens) {
  constexpr std::size_t kNone = std::string_view::npos;
  struct Open {
    std::size_t token;
    bool mayBeRoot;
    bool hasText = false;
  };
  const std::string_view rootName = rootNameByEnd(text);
  std::vector<Open> open;
  std::size_t firstWithOthers = kNone;
  std::size_t firstNamed = kNone;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const Token& token = tokens[i];
    const std::string_view content = text.substr(token.at, token.length);
    if (token.isText()) {
      if (!open.empty() && content.find_first_not_of(kBlanks) != kNone) open.back().hasText = true;
    } else if (token.kind == Token::Kind::End) {
      while (tokens[open.back().token].lacksEnd) open.pop_back();
      open.pop_back();
    } else if (token.isElement()) {
      bool mayBeRoot = open.empty();
      if (mayBeRoot) {
        if (firstNamed == kNone && content == rootName) firstNamed = i;
      } else {
        const Open& parent = open.back();
        const Token& start = tokens[parent.token];
        if (parent.mayBeRoot && text.substr(start.at, start.length) == rootName) return parent.token;
        if (firstWithOthers == kNone) firstWithOthers = open.front().token;
        mayBeRoot = parent.mayBeRoot && start.lacksEnd && parent.hasText;
      }
      if (token.kind == Token::Kind::Start) open.push_back({i, mayBeRoot});
    }
  }
  if (firstWithOthers != kNone) return firstWithOthers;
  return firstNamed == kNone ? 0 : firstNamed;
}

// Makes one element of the tokens.
class Assembly {
 public:
  explicit Assembly(std::string_view text) : text_(text) {}

  Result<std::unique_ptr<XMLTree>> assemble(const Tokens& tokens) {
    for (std::size_t i = rootOf(text_, tokens); i < tokens.size(); ++i) {
      if (builder_.hasRoot() && open_.empty()) break;
      take(tokens[i]);
      if (builder_.isOverfull()) return refusedXML(kTooManyXMLNodes);
    }
    while (!open_.empty()) close();
    if (!builder_.hasRoot()) return refusedXML("The document holds no element.");
    return builder_.takeTree();
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
        token.kind == Token::Kind::Text ? appendResolvedXML(builder_.text(), content, XMLPlace::Content)
                                        : appendLiteralXML(builder_.text(), content, XMLPlace::Content);
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
    if (!open_.empty()) open_.back().hasChild = true;
    open_.push_back({name, token.lacksEnd, open_.size() >= kMostXMLLevels});
    if (!open_.back().isOmitted) {
      builder_.startElement(name);
      addAttributes(token.at - 1);
    }
    if (token.kind == Token::Kind::Empty) close();
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
    if (!open_.back().isOmitted) builder_.endElement();
    open_.pop_back();
  }

  void addAttributes(std::size_t tagAt) {
    std::vector<std::string_view> names;
    std::size_t seen = 0;
    scanXMLTag(text_, tagAt, [&](const XMLTagAttribute& attribute) {
      // Those that are dropped count as well: each is compared with all that are kept.
      const bool goesOn = ++seen < kMostXMLAttributes;
      const bool isName = !attribute.name.empty() && xmlNameLength(attribute.name) == attribute.name.size();
      if (!isName || std::find(names.begin(), names.end(), attribute.name) != names.end()) return goesOn;
      names.push_back(attribute.name);
      value_.clear();
      appendResolvedXML(value_, attribute.value, XMLPlace::Attribute);
      builder_.addAttribute(attribute.name, value_);
      return goesOn;
    });
  }

  std::string_view text_;
  XMLTreeBuilder builder_;
  std::vector<Open> open_;
  std::string value_;
};

}  // namespace

Result<std::unique_ptr<XMLTree>> readBrokenXML(std::string_view text) {
  if (text.size() >= UINT32_MAX) return refusedXML("The document is too large.");
  Tokenizer tokenizer(text);
  tokenizer.run();
  if (tokenizer.isHopeless()) return refusedXML("The document is no XML that could be repaired.");
  if (tokenizer.isOverburdened()) return refusedXML(kTooManyXMLNodes);
  matchTags(text, tokenizer.tokens());
  return Assembly(text).assemble(tokenizer.tokens());
}

}  // namespace clipwave
