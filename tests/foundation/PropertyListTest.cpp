#include "platform/foundation/PropertyList.h"

#include <gmock/gmock.h>

#include <limits>

namespace clipwave {
namespace {

using ::testing::HasSubstr;

std::string plist(std::string_view content) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" "
         "\"http://127.0.0.1:1/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">" +
         std::string(content) + "</plist>\n";
}

Value readBack(const Value& value) {
  const Result<Value> read = propertyListFromData(dataFromPropertyList(value));
  EXPECT_TRUE(read.ok());
  return read ? *read : Value();
}

std::string failureOf(std::string_view data) {
  const Result<Value> read = propertyListFromData(data);
  if (read) return "";
  EXPECT_EQ(read.error().code, kPropertyListReadCorruptError);
  return read.error().localizedDescription;
}

TEST(PropertyList, EveryKindOfValueSurvivesBeingWrittenAndRead) {
  const Value all(Dictionary{
      {"yes", Value(true)},
      {"no", Value(false)},
      {"one", Value(1)},
      {"least", Value(std::numeric_limits<std::int64_t>::min())},
      {"most", Value(std::numeric_limits<std::int64_t>::max())},
      {"real", Value(0.1)},
      {"large", Value(1e300)},
      {"date", Value(Date::fromSeconds(-86'399))},
      {"text & <more>", Value(" R&D \xC3\xA9\r\n\t\"quoted\" ")},
      {"empty", Value("")},
      {"data", Value::data(std::string("\0\xFF\x10 four", 8))},
      {"list", Value(Array{Value(1), Value(Array{}), Value(Dictionary{{"", Value("no key")}})})},
  });
  EXPECT_TRUE(readBack(all) == all);
  for (std::size_t size = 0; size < 5; ++size) {
    EXPECT_EQ(readBack(Value::data(std::string(size, '\xFB'))).dataValue(), std::string(size, '\xFB'));
  }
}

TEST(PropertyList, WhatNoPropertyListHoldsIsLeftOutWithItsKey) {
  const Value read = readBack(Value(Dictionary{{"absent", Value()}, {"control", Value("a\x01z")}}));
  EXPECT_TRUE(read == Value(Dictionary{{"control", Value("az")}}));
}

TEST(PropertyList, IsWrittenWithOneElementPerLineAndSortedKeys) {
  EXPECT_EQ(dataFromPropertyList(Value(Dictionary{{"b", Value(Array{Value("x")})}, {"a", Value(true)}})),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<plist version=\"1.0\">\n"
            "  <dict>\n"
            "    <key>a</key>\n"
            "    <true/>\n"
            "    <key>b</key>\n"
            "    <array>\n"
            "      <string>x</string>\n"
            "    </array>\n"
            "  </dict>\n"
            "</plist>\n");
}

TEST(PropertyList, ReadsTheFormsThatOtherProgramsWrite) {
  const Result<Value> read = propertyListFromData(
      plist("<!-- made elsewhere --><array><integer> +0x1F </integer><integer>99999999999999999999</integer>"
            "<integer>-99999999999999999999</integer><real>+2.5e1</real><data>\n\tAA\n\tEC\n</data>"
            "<string><![CDATA[<b>]]>&#233;</string><date>2009-03-04T02:05:09Z</date></array>"));
  ASSERT_TRUE(read.ok());
  EXPECT_TRUE(*read == Value(Array{Value(31), Value(std::numeric_limits<std::int64_t>::max()),
                                   Value(std::numeric_limits<std::int64_t>::min()), Value(25.0),
                                   Value::data(std::string("\0\1\2", 3)), Value("<b>\xC3\xA9"),
                                   Value(Date::fromSeconds(1'236'132'309))}));
}

TEST(PropertyList, AnythingElseIsReportedAsCorruptWithTheReason) {
  EXPECT_THAT(failureOf(""), HasSubstr("property list cannot be read"));
  EXPECT_THAT(failureOf("bplist00\xD1"), HasSubstr("cannot be read"));
  EXPECT_THAT(failureOf(plist("<dict>").substr(0, 170)), HasSubstr("Line "));
  EXPECT_THAT(failureOf("<html><true/></html>"), HasSubstr("\"html\", not \"plist\""));
  EXPECT_THAT(failureOf(plist("")), HasSubstr("0 values"));
  EXPECT_THAT(failureOf(plist("<true/><true/>")), HasSubstr("2 values"));
  EXPECT_THAT(failureOf(plist("<dict><key>k</key></dict>")), HasSubstr("The key \"k\" has no value."));
  EXPECT_THAT(failureOf(plist("<dict><key>k</key><key>l</key></dict>")),
              HasSubstr("The key \"k\" has no value."));
  EXPECT_THAT(failureOf(plist("<dict><true/></dict>")), HasSubstr("no key"));
  EXPECT_THAT(failureOf(plist("<array>loose<true/></array>")), HasSubstr("Text stands between"));
  EXPECT_THAT(failureOf(plist("<array><set/></array>")), HasSubstr("\"set\" is no kind of value."));
  EXPECT_THAT(failureOf(plist("<integer>12 apples</integer>")), HasSubstr("\"12 apples\" is no integer."));
  EXPECT_THAT(failureOf(plist("<real></real>")), HasSubstr("is no number."));
  EXPECT_THAT(failureOf(plist("<date>yesterday</date>")), HasSubstr("\"yesterday\" is no date."));
  EXPECT_THAT(failureOf(plist("<data>A=A=</data>")), HasSubstr("is no data."));
}

TEST(PropertyList, DepthBeyondReasonIsRefusedAndNotFollowed) {
  std::string deep;
  for (int i = 0; i < 200'000; ++i) deep += "<array>";
  EXPECT_THAT(failureOf("<plist>" + deep), HasSubstr("cannot be read"));
}

}  // namespace
}  // namespace clipwave
