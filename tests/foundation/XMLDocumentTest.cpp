#include "platform/foundation/XMLDocument.h"

#include <gmock/gmock.h>

#include <chrono>

namespace clipwave {
namespace {
using namespace ::testing;

using Parsing = XMLDocument::Parsing;

std::string times(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

// What the root of a tolerantly read document holds: "name[attribute=value]{…}" with text as it stands.
std::string outline(const XMLElement& element) {
  std::string text = element.name();
  for (const auto& [name, value] : element.attributes()) text += "[" + name + "=" + value + "]";
  std::string within;
  for (const XMLElement& child : element.elements()) within += outline(child);
  return text + "{" + (within.empty() ? element.stringValue() : within) + "}";
}

std::string repaired(std::string_view text, std::string_view charset = {}) {
  const Result<XMLDocument> document = XMLDocument::parse(text, Parsing::Tolerant, charset);
  return document ? outline(document->rootElement()) : "failed";
}

std::string strictFailure(std::string_view text) {
  const Result<XMLDocument> document = XMLDocument::parse(text, Parsing::Strict);
  return document ? "" : document.error().localizedDescription;
}

// Reads the text tolerantly; fails the test when that takes long.
std::string repairedSoon(const std::string& text) {
  const auto start = std::chrono::steady_clock::now();
  std::string result = repaired(text);
  // What takes milliseconds here took minutes where it grew with the square; the rest is room for busy
  // machines.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  return result;
}

TEST(XMLDocument, CharactersThatXMLCannotCarryNeverReachIt) {
  XMLDocument document("r");
  XMLElement root = document.rootElement();
  const std::string_view text(
      "long enough \0\x01\x1F\x7F\xEF\xBF\xBE\xEF\xBF\xBD|\xFF|\xC0\xAF|\xED\xA0\x80|\xE2\x82", 35);
  const std::string fit =
      "long enough "
      "\x7F\xEF\xBF\xBD|\xEF\xBF\xBD|\xEF\xBF\xBD\xEF\xBF\xBD|\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD|"
      "\xEF\xBF\xBD\xEF\xBF\xBD";
  EXPECT_EQ(root.addChild("c", text).stringValue(), fit);
  root.addAttribute("a", text);
  EXPECT_EQ(root.attribute("a"), fit);
  EXPECT_EQ(strictFailure(document.prettyPrinted()), "");
}

TEST(XMLDocument, StrictParsingSaysWhereTextIsNotWellFormed) {
  EXPECT_THAT(strictFailure("<r>\n<a></b></r>"), StartsWith("Line 2: "));
  for (const char* text : {"", "text", "<r>R&D</r>", "<r a='1' a='2'/>", "<r>\xE9</r>", "<r/><r/>"})
    EXPECT_NE(strictFailure(text), "") << text;
  // What a document type may declare would leave a hole in the text.
  EXPECT_EQ(strictFailure("<!DOCTYPE r [<!ENTITY e 'x'>]>\n<r>&e;</r>"),
            "Line 2: The entity “e” is not known.");
  EXPECT_EQ(strictFailure("<!DOCTYPE r [<!-- " + times(20'000, "x ]>\n'") + " -->]><r/>"),
            "The document type is too long.");
  EXPECT_EQ(strictFailure(times(200, "<a>") + times(200, "</a>")), "");
  EXPECT_EQ(strictFailure("\n" + times(201, "<a>") + times(201, "</a>")),
            "Line 2: The elements are nested too deeply.");
  EXPECT_EQ(strictFailure(std::string_view("<a>x</a>\n\0<junk & <", 19)),
            "Line 2: There is a character that XML cannot carry.");
}

TEST(TolerantParsing, DecodesRareCharsetsAndPassesOverLabelsThatCannotBeTrue) {
  using namespace std::string_literals;
  const std::string cafe = "t{caf\u00e9}";
  EXPECT_EQ(repaired("<?xml version='1.0' encoding='utf-8'?><t>caf\xE9</t>", "\"Latin1\""), cafe);
  EXPECT_EQ(repaired("<?xml version='1.0' encoding='koi8-r'?><t>\xC1</t>"), "t{\u0430}");
  EXPECT_EQ(repaired("\0<\0t\0>\xD8\0\0a\0<\0/\0t\0>"s, "ucs-2be"), "t{\uFFFDa}");
  EXPECT_EQ(repaired("<t>caf\u00e9</t>", "koi8-r\0"s), cafe);
  EXPECT_EQ(repaired("<?xml version='1.0' encoding='bogus'?><t>caf\u00e9</t>", "//../none"), cafe);
}

TEST(TolerantParsing, LosesNeitherTextNorItemsOfBrokenMarkup) {
  using namespace std::string_view_literals;
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"<t>Joe <joe@example.com> <http://a/b> if x <y and z> w",
       "t{Joe <joe@example.com> <http://a/b> if x <y and z> w}"},
      {"<t>&#146;&#60;&#xFFFF;&#x110000;&#99999999999;&#;&#x;&#12</t>", "t{\u2019<&#;&#x;}"},
      {"<!DOCTYPE r [<!ATTLIST b a CDATA 'copied'>]><r><b/></r>", "r{b{}}"},
      {"<r><i><t>A</t></b></i></x><i><t>B</T></i>", "r{i{t{A}}i{t{B}}}"},
      {"<e u=\"http://a/b.mp3 l=\"5\" u='2' n checked/>", "e[u=http://a/b.mp3][l=5]{}"},
      {"<r><e u=\"a/b.mp3/><t>\"A\"</t></r>", "r{e[u=a/b.mp3]{}t{\"A\"}}"},
      {"<e a='1'b=\"<2>\" 9c='3' xmlns:i='u' i:d='4'>&</e>", "e[a=1][b=<2>][xmlns:i=u][i:d=4]{&}"},
      {"<t>a\0b</t>\0<junk & <"sv, "t{ab}"},
      {"<t>a<!-- - -- <b> -->b<?php echo '>' ?>c<![CDATA[d</t>", "t{abcd}"},
      {"<i>note</i><rss><i>A</i><i>cut", "rss{i{A}i{cut}}"},
      {"<r><d>a<br>b<img src=c>d<hr>e</d></r>", "r{d{br{}img[src=c]{}hr{}}}"},
      {"<t>it&#8217s &copy</t>&", "t{it\u2019s &copy}"},
      {"<t>cut <enclosure url='http", "t{cut }"},
      {"<r>& <t><![CDATA[x</t><t><![CDATA[y]]></t></r>", "r{t{x}t{y}}"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(repaired(text), expected) << text;
  for (const char* text : {"", "no markup & none", "<", "<!-- <t/> -->", "</t>"})
    EXPECT_EQ(repaired(text), "failed") << text;
}

TEST(TolerantParsing, DepthBeyondReasonCostsNothingElse) {
  EXPECT_THAT(repairedSoon("<r>" + times(300'000, "<a>") + "x" + times(300'000, "</a>") + "<b>y</b></r>"),
              AllOf(HasSubstr("x}"), EndsWith("b{y}}")));
  EXPECT_EQ(repairedSoon("<r>" + times(200'000, "<a>") + times(200'000, "</b>")).substr(0, 4), "r{a{");
}

TEST(TolerantParsing, FiftyThousandAttributesOnATagAreCutShort) {
  std::string tag = "<r";
  for (int i = 0; i < 50'000; ++i) tag += " a" + std::to_string(i) + "='1'";
  EXPECT_THAT(repairedSoon(tag + "><b>y</b></r>"),
              AllOf(StartsWith("r[a0=1][a1=1]"), EndsWith("[a255=1]{b{y}}")));
  EXPECT_EQ(repairedSoon(tag), "failed");
  EXPECT_THAT(strictFailure(tag + "/>"), HasSubstr("too many attributes"));
}

TEST(TolerantParsing, HostileTextsFailAtTheBoundsOrPassWithinThem) {
  const std::string tooMany = "The document holds too many elements.";
  const std::pair<std::string, std::string> rows[] = {
      {"<r>" + times(2'000'000, "<a/>") + "</r>", tooMany},
      {std::string((std::size_t{128} << 20) + 1, ' '), "The document is too large."},
      {"<r><a" + times(30'000, " c='<a '"), "The document is no XML that could be repaired."},
      {"<r>" + times(2'000, "<a b=\" \" c=\"") + " d=\"\" e='x f=\"y <" + std::string(5'000'000, 'x'),
       "The document is no XML that could be repaired."},
      {"<r>" + times(100'000, "]]>") + "</r>", ""},
      {"<r>" + times(100'000, "&zzz;") + "</r>", ""},
      {"<!DOCTYPE r [<!ATTLIST r" + times(100'000, " a CDATA #IMPLIED") + ">]><r/>", ""},
  };
  for (const auto& [text, outcome] : rows) {
    const auto start = std::chrono::steady_clock::now();
    const Result<XMLDocument> document = XMLDocument::parse(text, Parsing::Tolerant);
    EXPECT_EQ(document ? "" : document.error().localizedDescription, outcome) << text.substr(0, 50);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << text.substr(0, 50);
  }
  EXPECT_EQ(strictFailure(rows[0].first), tooMany);
}

TEST(TolerantParsing, MarksWithoutAnEndTakeTimeInProportionOnly) {
  for (const char* mark :
       {"<", "&", "<![CDATA[", "<!--", "<?a ", "<!DOCTYPE [", "</a x", "<a b=\"", "<a b=' c=\" "})
    EXPECT_THAT(repairedSoon("<r><t>A</t>" + times(200'000, mark)), StartsWith("r{t{A}")) << mark;
}

}  // namespace
}  // namespace clipwave
