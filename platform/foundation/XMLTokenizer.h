// Takes XML text that may be broken apart into its tags and what stands between them. Internal to this room.
#pragma once

#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

namespace clipwave {

// Finds marks in the text. It remembers what lies ahead, so that a thousand comments without an end do not
// cost a thousand readings of the rest.
class XMLMarkFinder {
 public:
  explicit XMLMarkFinder(std::string_view text) : text_(text) {}
  // Where the next such mark ends, at or behind `from`; npos when there is none.
  std::size_t endOf(std::string_view mark, std::size_t from);

 private:
  struct Stretch {
    std::string_view mark;
    std::size_t from = std::string_view::npos;
    std::size_t found = 0;
  };
  Stretch& stretchOf(std::string_view mark);

  std::string_view text_;
  std::vector<Stretch> known_;  // of half a dozen marks
};

struct XMLToken {
  enum class Kind : std::uint8_t { Text, CharacterData, Start, Empty, End, StrayEnd };
  std::uint32_t at = 0;
  std::uint32_t length = 0;  // of a text, or of a tag's name
  Kind kind = Kind::Text;
  bool lacksEnd = false;  // a start tag that no end tag answers

  bool isText() const { return kind == Kind::Text || kind == Kind::CharacterData; }
  bool isElement() const { return kind == Kind::Start || kind == Kind::Empty; }
};
// Grows without being copied: of a hostile text there are millions.
using XMLTokens = std::deque<XMLToken>;

// The name in the text's last end tag, which in a whole document is the root's; "" when there is none, and
// when it is that of the page which a web server put around the document.
std::string_view xmlRootNameByEnd(std::string_view text);

// Cuts the text into its tags and what stands between them; comments, instructions and document types fall
// away.
class XMLTokenizer {
 public:
  explicit XMLTokenizer(std::string_view text) : text_(text), finder_(text) {}

  // Stops early when it isOverburdened().
  void run();

  XMLTokens& tokens() { return tokens_; }
  bool isOverburdened() const;
  // Whether the text was read many times over for tags that were none: each of them can hold the next.
  bool isHopeless() const;

 private:
  // Answers where the markup at `at` ends; `at` itself when it is none.
  std::size_t takeMarkup(std::size_t at);
  // Whether the text ends within the markup that begins here.
  bool isCutOff(std::size_t at);
  std::size_t takeInstruction(std::size_t at);
  // Whether what has begun so far is what the text ends with, and not what a web server put before it.
  bool isWithinDocument() const;
  // A section without an end, or whose end is that of another one behind an end tag, ends before that tag.
  std::size_t takeCharacterData(std::size_t from);
  std::size_t takeEndTag(std::size_t at);
  // Pieces of text that touch are one, so that a text full of "<" does not become a token for each.
  void addText(std::size_t from, std::size_t to);
  void add(XMLToken::Kind kind, std::size_t at, std::size_t length);

  std::string_view text_;
  XMLMarkFinder finder_;
  XMLTokens tokens_;
  std::size_t tags_ = 0;
  std::size_t vainlyRead_ = 0;
  bool startsWithDeclaration_ = false;
  bool sawDocumentType_ = false;
};

}  // namespace clipwave
