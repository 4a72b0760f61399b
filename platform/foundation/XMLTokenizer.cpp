#include "platform/foundation/XMLTokenizer.h"

#include <algorithm>

#include "platform/foundation/ASCII.h"
#include "platform/foundation/XMLBounds.h"
#include "platform/foundation/XMLTag.h"

namespace clipwave {
namespace {

// A declaration further in than this is somebody's text, not the true beginning behind a server's complaints.
constexpr std::size_t kLongestLeadingJunk = 4096;
// Texts and end tags come on top of the elements.
constexpr std::size_t kMostTokens = 4 * kMostXMLNodes;
constexpr std::size_t kMostVainReadings = 8;
constexpr std::size_t kSmallText = 65'536;

}  // namespace

std::size_t XMLMarkFinder::endOf(std::string_view mark, std::size_t from) {
  Stretch& stretch = stretchOf(mark);
  if (from < stretch.from || from > stretch.found) {
    stretch.from = from;
    stretch.found = text_.find(mark, from);
  }
  return stretch.found == std::string_view::npos ? stretch.found : stretch.found + mark.size();
}

XMLMarkFinder::Stretch& XMLMarkFinder::stretchOf(std::string_view mark) {
  for (Stretch& stretch : known_) {
    if (stretch.mark == mark) return stretch;
  }
  return known_.emplace_back(Stretch{.mark = mark});
}

std::string_view xmlRootNameByEnd(std::string_view text) {
  const std::size_t last = text.rfind("</");
  if (last == std::string_view::npos) return {};
  const std::string_view name = text.substr(last + 2, xmlNameLength(text.substr(last + 2)));
  return name == "html" ? std::string_view() : name;
}

void XMLTokenizer::run() {
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

bool XMLTokenizer::isOverburdened() const {
  return tags_ > kMostXMLNodes || tokens_.size() > kMostTokens || isHopeless();
}

bool XMLTokenizer::isHopeless() const {
  return vainlyRead_ > kMostVainReadings * (text_.size() + kSmallText);
}

std::size_t XMLTokenizer::takeMarkup(std::size_t at) {
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
    add(tag.isEmpty ? XMLToken::Kind::Empty : XMLToken::Kind::Start, at + 1, tag.name.size());
    end = tag.end;
  } else {
    vainlyRead_ += tag.end - at;
  }
  return end == std::string_view::npos ? at : end;
}

bool XMLTokenizer::isCutOff(std::size_t at) {
  const std::string_view behind = text_.substr(at + 1);
  const bool isMarkup =
      !behind.empty() &&
      (std::string_view("/!?").find(behind[0]) != std::string_view::npos || xmlNameLength(behind) > 0);
  return isMarkup && finder_.endOf("<", at + 1) == std::string_view::npos &&
         finder_.endOf(">", at + 1) == std::string_view::npos;
}

std::size_t XMLTokenizer::takeInstruction(std::size_t at) {
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

bool XMLTokenizer::isWithinDocument() const {
  const std::string_view name = xmlRootNameByEnd(text_);
  return !name.empty() && std::any_of(tokens_.begin(), tokens_.end(), [&](const XMLToken& token) {
    return token.kind == XMLToken::Kind::Start && name == text_.substr(token.at, token.length);
  });
}

std::size_t XMLTokenizer::takeCharacterData(std::size_t from) {
  const std::size_t end = finder_.endOf("]]>", from);
  const std::size_t next = finder_.endOf("<![CDATA[", from);
  const std::size_t tag = finder_.endOf("</", from);
  if (end != std::string_view::npos && (end < next || next < tag)) {
    add(XMLToken::Kind::CharacterData, from, end - 3 - from);
    return end;
  }
  const std::size_t behind = tag == std::string_view::npos ? text_.size() : tag - 2;
  add(XMLToken::Kind::CharacterData, from, behind - from);
  return behind;
}

std::size_t XMLTokenizer::takeEndTag(std::size_t at) {
  const std::size_t length = xmlNameLength(text_.substr(at + 2));
  if (length == 0) return at;
  add(XMLToken::Kind::End, at + 2, length);
  const std::size_t behind = std::min(text_.find_first_not_of(kBlanks, at + 2 + length), text_.size());
  const std::size_t bracket = std::min(text_.find_first_of("<>", behind), text_.size());
  return bracket < text_.size() && text_[bracket] == '>' ? bracket + 1 : behind;
}

void XMLTokenizer::addText(std::size_t from, std::size_t to) {
  if (from == to) return;
  if (!tokens_.empty() && tokens_.back().kind == XMLToken::Kind::Text &&
      tokens_.back().at + tokens_.back().length == from) {
    tokens_.back().length += static_cast<std::uint32_t>(to - from);
  } else {
    add(XMLToken::Kind::Text, from, to - from);
  }
}

void XMLTokenizer::add(XMLToken::Kind kind, std::size_t at, std::size_t length) {
  tokens_.push_back({static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(length), kind, false});
  if (tokens_.back().isElement()) ++tags_;
}

}  // namespace clipwave
