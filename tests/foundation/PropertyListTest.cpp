#include "platform/foundation/PropertyList.h"

#include <gmock/gmock.h>

#include <limits>

namespace clipwave {
namespace {
using namespace ::testing;

std::string plist(std::string_view content) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" "
         "\"http://127.0.0.1:1/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">" +
         std::string(content) + "</plist>\n";
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
      {"least", Value(std::numeric_limits<std::int64_t>::min())},
      {"most", Value(std::numeric_limits<std::int64_t>::max())},
      {"large", Value(1e300)},
      {"date", Value(Date::fromSeconds(-86'399))},
      {"text & <more>", Value(" R&D \xC3\xA9\r\n\t\"quoted\" ")},
      {"empty", Value("")},
      {"data", Value::data(std::string("\0\xFF\x10 four", 8))},
      {"list", Value(Array{Value(1), Value(Array{}), Value(Dictionary{{"", Value("no key")}})})},
  });
  const Result<Value> read = propertyListFromData(dataFromPropertyList(all));
  ASSERT_TRUE(read.ok());
  EXPECT_TRUE(*read == all);
}

TEST(PropertyList, AnythingElseIsReportedAsCorruptWithTheReason) {
  std::string deep = "<plist>";
  for (int i = 0; i < 200'000; ++i) deep += "<array>";
  const std::pair<std::string, const char*> corrupt[] = {
      {"bplist00\xD1", "property list cannot be read"},
      {deep, "cannot be read"},
      {"<html><true/></html>", "“html”, not “plist”"},
      {plist("<true/><true/>"), "2 values"},
      {plist("<dict><key>k</key><key>l</key></dict>"), "The key “k” has no value."},
      {plist("<dict><true/></dict>"), "no key"},
      {plist("<array>loose<true/></array>"), "Text stands between"},
      {plist("<array><set/></array>"), "“set” is no kind of value."},
      {plist("<integer>12 apples</integer>"), "“12 apples” is no integer."},
      {plist("<data>A=A=</data>"), "is no data."}};
  for (const auto& [data, complaint] : corrupt) EXPECT_THAT(failureOf(data), HasSubstr(complaint));
}

}  // namespace
}  // namespace clipwave
