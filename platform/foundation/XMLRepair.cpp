#include "platform/foundation/XMLRepair.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/XMLBounds.h"
#include "platform/foundation/XMLTag.h"
#include "platform/foundation/XMLText.h"
#include "platform/foundation/XMLTokenizer.h"
#include "platform/foundation/XMLTreeBuilder.h"

namespace clipwave {
namespace {

// HTML's elements that never have an end tag and that no feed has by these names.
constexpr std::string_view kHTMLVoids[] = {"br", "hr", "img"};

// Finds out which start tags no end tag answers, and which end tags answer none.
void matchTags(std::string_view text, XMLTokens& tokens) {
  constexpr std::uint32_t kNone = UINT32_MAX;
  struct OpenTag {
    std::uint32_t token;
    std::uint32_t outerNamesake;  // where the next outer open tag of the same name stands in `open`
  };
  std::vector<OpenTag> open;
  std::unordered_map<std::string_view, std::uint32_t> innermost;  // by name, where in `open`
  const auto nameOf = [&](const XMLToken& token) { return text.substr(token.at, token.length); };
  const auto markUnanswered = [&](XMLToken& start) {
    const std::string_view name = nameOf(start);
    start.lacksEnd = true;
    if (std::find(std::begin(kHTMLVoids), std::end(kHTMLVoids), name) != std::end(kHTMLVoids))
      start.kind = XMLToken::Kind::Empty;
  };
  const auto closeLast = [&](bool lacksEnd) {
    XMLToken& start = tokens[open.back().token];
    if (lacksEnd) markUnanswered(start);
    innermost[nameOf(start)] = open.back().outerNamesake;
    open.pop_back();
  };
  for (std::uint32_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].kind == XMLToken::Kind::Start) {
      std::uint32_t& namesake = innermost.try_emplace(nameOf(tokens[i]), kNone).first->second;
      open.push_back({i, namesake});
      namesake = static_cast<std::uint32_t>(open.size() - 1);
    } else if (tokens[i].kind == XMLToken::Kind::End) {
      const auto match = innermost.find(nameOf(tokens[i]));
      if (match == innermost.end() || match->second == kNone) {
        tokens[i].kind = XMLToken::Kind::StrayEnd;
        continue;
      }
      const std::size_t depth = match->second;
      while (open.size() > depth + 1) closeLast(true);
      closeLast(false);
    }
  }
  for (const OpenTag& tag : open) markUnanswered(tokens[tag.token]);
}

// Finds the element that is the document: the longest of those that stand outermost and hold others. Remarks
// and advertisements of web servers stand before and behind it, and a remark that lacks its end tag around
// it. Failing that, the document is the element with the last end tag's name, or else the first of all.
class RootSearch {
 public:
  RootSearch(std::string_view text, const XMLTokens& tokens)
      : text_(text), tokens_(tokens), rootName_(xmlRootNameByEnd(text)) {}

  std::size_t run() {
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
      const XMLToken& token = tokens_[i];
      if (token.isText()) {
        const std::string_view content = text_.substr(token.at, token.length);
        if (!open_.empty() && content.find_first_not_of(kBlanks) != kNone) open_.back().hasText = true;
      } else if (token.kind == XMLToken::Kind::End) {
        while (tokens_[open_.back().token].lacksEnd) close(token.at);
        close(token.at);
      } else if (token.isElement()) {
        begin(i);
      }
    }
    while (!open_.empty()) close(text_.size());
    if (longest_ != kNone) return longest_;
    return firstNamed_ == kNone ? 0 : firstNamed_;
  }

 private:
  static constexpr std::size_t kNone = std::string_view::npos;
  struct Open {
    std::size_t token;
    bool isOutermost;  // but for remarks around it
    bool hasText = false;
    bool holdsOthers = false;
    std::size_t foreign = 0;  // how much of it belongs to outermost elements within
  };

  void begin(std::size_t index) {
    const XMLToken& token = tokens_[index];
    bool isOutermost = open_.empty();
    if (isOutermost) {
      if (firstNamed_ == kNone && text_.substr(token.at, token.length) == rootName_) firstNamed_ = index;
    } else {
      Open& parent = open_.back();
      parent.holdsOthers = true;
      isOutermost = parent.isOutermost && tokens_[parent.token].lacksEnd && parent.hasText && !token.lacksEnd;
    }
    if (token.kind == XMLToken::Kind::Start) open_.push_back({index, isOutermost});
  }

  void close(std::size_t at) {
    const Open closed = open_.back();
    open_.pop_back();
    const std::size_t length = at - tokens_[closed.token].at;
    if (closed.isOutermost && closed.holdsOthers && length - closed.foreign > longestLength_) {
      longest_ = closed.token;
      longestLength_ = length - closed.foreign;
    }
    if (!open_.empty()) open_.back().foreign += closed.isOutermost ? length : closed.foreign;
  }

  std::string_view text_;
  const XMLTokens& tokens_;
  std::string_view rootName_;
  std::vector<Open> open_;
  std::size_t longest_ = kNone;
  std::size_t longestLength_ = 0;
  std::size_t firstNamed_ = kNone;
};

// Makes one element of the tokens.
class Assembly {
 public:
  explicit Assembly(std::string_view text) : text_(text) {}

  Result<std::unique_ptr<XMLTree>> assemble(const XMLTokens& tokens) {
    for (std::size_t i = RootSearch(text_, tokens).run(); i < tokens.size(); ++i) {
      if (builder_.hasRoot() && open_.empty()) break;
      take(tokens[i]);
      if (builder_.isOverfull())
        return refusedXML(localized("Documents", "The document holds too many elements."));
    }
    while (!open_.empty()) close();
    if (!builder_.hasRoot()) return refusedXML(localized("Documents", "The document holds no element."));
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

  void take(const XMLToken& token) {
    const std::string_view content = text_.substr(token.at, token.length);
    switch (token.kind) {
      case XMLToken::Kind::Text:
      case XMLToken::Kind::CharacterData:
        if (open_.empty()) break;  // junk around the document
        if (content.find_first_not_of(kBlanks) != std::string_view::npos) open_.back().hasText = true;
        token.kind == XMLToken::Kind::Text ? appendResolvedXML(builder_.text(), content, XMLPlace::Content)
                                           : appendLiteralXML(builder_.text(), content, XMLPlace::Content);
        break;
      case XMLToken::Kind::Start:
      case XMLToken::Kind::Empty:
        open(token, content);
        break;
      case XMLToken::Kind::End:
        while (open_.back().lacksEnd) close();
        close();
        break;
      case XMLToken::Kind::StrayEnd:
        break;
    }
  }

  void open(const XMLToken& token, std::string_view name) {
    closeBefore(name);
    if (!open_.empty()) open_.back().hasChild = true;
    open_.push_back({name, token.lacksEnd, open_.size() >= kMostXMLLevels});
    if (!open_.back().isOmitted) {
      builder_.startElement(name);
      addAttributes(token.at - 1);
    }
    if (token.kind == XMLToken::Kind::Empty) close();
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
  if (text.size() >= UINT32_MAX) return refusedXML(localized("Documents", "The document is too large."));
  XMLTokenizer tokenizer(text);
  tokenizer.run();
  if (tokenizer.isHopeless())
    return refusedXML(localized("Documents", "The document is no XML that could be repaired."));
  if (tokenizer.isOverburdened())
    return refusedXML(localized("Documents", "The document holds too many elements."));
  matchTags(text, tokenizer.tokens());
  return Assembly(text).assemble(tokenizer.tokens());
}

}  // namespace clipwave
