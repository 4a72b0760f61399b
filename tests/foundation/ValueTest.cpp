#include "platform/foundation/Value.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace clipwave {
namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

TEST(Value, NumbersAreReadFromTextAndSaturate) {
  const std::pair<Value, std::int64_t> integers[] = {
      {" 42 files", 42}, {"+7", 7},       {"-3.9", -3},    {"99999999999999999999", kMost},
      {"none", 0},       {"+-1", 0},      {-3.9, -3},      {"-99999999999999999999", kLeast},
      {1e19, kMost},     {-1e19, kLeast}, {0x1p63, kMost}, {std::nan(""), 0}};
  for (const auto& [value, integer] : integers) EXPECT_EQ(value.integerValue(), integer);
  const std::pair<Value, double> numbers[] = {
      {"-2.5e1x", -25}, {".5", 0.5}, {"infinity", 0}, {"1e999", HUGE_VAL}, {"1e-999", 0}};
  for (const auto& [value, number] : numbers) EXPECT_EQ(value.doubleValue(), number);
}

TEST(Value, TruthIsReadFromNumbersAndAFewWords) {
  for (const char* text : {"YES", "yes", "true", "1", "-2", " 0.5 "})
    EXPECT_TRUE(Value(text).boolValue()) << text;
  for (const char* text : {"", "NO", "no", "0", "0.0", "maybe", "1 file", "YES!"})
    EXPECT_FALSE(Value(text).boolValue()) << text;
}

TEST(Value, AssigningAPartOfItselfKeepsThePart) {
  Value value(Array{Array{Dictionary{{"key", "inner"}}}});
  value = value.arrayValue()[0];
  value = value.arrayValue()[0];
  value = value.dictionaryValue().at("key");
  EXPECT_EQ(value.stringValue(), "inner");
}

}  // namespace
}  // namespace clipwave
