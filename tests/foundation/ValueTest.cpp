#include "platform/foundation/Value.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace clipwave {
namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

TEST(Value, NumbersAreReadFromTextAndSaturate) {
  EXPECT_EQ(Value(" 42 files").integerValue(), 42);
  EXPECT_EQ(Value("-3.9").integerValue(), -3);
  EXPECT_EQ(Value("99999999999999999999").integerValue(), kMost);
  EXPECT_EQ(Value("-99999999999999999999").integerValue(), kLeast);
  EXPECT_EQ(Value("none").integerValue(), 0);
  EXPECT_EQ(Value("+-1").integerValue(), 0);
  EXPECT_DOUBLE_EQ(Value("-2.5e1x").doubleValue(), -25);
  EXPECT_EQ(Value("infinity").doubleValue(), 0);
  EXPECT_EQ(Value("1e999").doubleValue(), HUGE_VAL);
  EXPECT_EQ(Value("1e-999").doubleValue(), 0);
  EXPECT_EQ(Value(-3.9).integerValue(), -3);
  EXPECT_EQ(Value(1e19).integerValue(), kMost);
  EXPECT_EQ(Value(0x1p63).integerValue(), kMost);
  EXPECT_EQ(Value(-1e19).integerValue(), kLeast);
  EXPECT_EQ(Value(std::numeric_limits<double>::quiet_NaN()).integerValue(), 0);
}

TEST(Value, TruthIsReadFromNumbersAndAFewWords) {
  for (const char* text : {"YES", "yes", "true", "1", "-2", " 0.5 "})
    EXPECT_TRUE(Value(text).boolValue()) << text;
  for (const char* text : {"", "NO", "no", "0", "0.0", "maybe", "1 file", "YES!"}) {
    EXPECT_FALSE(Value(text).boolValue()) << text;
  }
  EXPECT_TRUE(Value(0.5).boolValue());
  EXPECT_FALSE(Value(0).boolValue());
}

TEST(Value, EqualityIsOfKindAndContent) {
  EXPECT_NE(Value(true), Value(1));
  EXPECT_NE(Value("x"), Value::data("x"));
  EXPECT_NE(Value(""), Value());
  EXPECT_EQ(Value(static_cast<ManagedObject*>(nullptr)), Value());
  EXPECT_EQ(Value(std::shared_ptr<Handle>()), Value());
  EXPECT_EQ(Value(std::optional<std::string>()), Value());
  EXPECT_NE(Value(Array()), Value(Dictionary()));
  EXPECT_EQ(Value(std::string_view("a\0b", 3)), Value(std::string("a\0b", 3)));
  EXPECT_EQ(Value(Dictionary{{"a", Array{1, "two"}}}), Value(Dictionary{{"a", Array{1, "two"}}}));
  const auto handle = std::make_shared<Handle>();
  EXPECT_EQ(Value(handle), Value(handle));
  EXPECT_NE(Value(handle), Value(std::make_shared<Handle>()));
}

TEST(Value, CopiesShareTheirTextAndOutliveEachOther) {
  std::string_view view;
  Value kept;
  {
    const Value original(std::string(1000, 'x'));
    view = original.stringValue();
    kept = original;
    EXPECT_EQ(kept.stringValue().data(), view.data());
  }
  EXPECT_EQ(kept.stringValue(), std::string(1000, 'x'));
  EXPECT_EQ(view.data()[view.size()], '\0');
  const Value moved = std::move(kept);
  EXPECT_TRUE(kept.isNull());  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(moved.stringValue().data(), view.data());
}

TEST(Value, AssigningAPartOfItselfKeepsThePart) {
  Value value(Array{Array{Dictionary{{"key", "inner"}}}});
  value = value.arrayValue()[0];
  value = value.arrayValue()[0];
  value = value.dictionaryValue().at("key");
  EXPECT_EQ(value.stringValue(), "inner");
}

TEST(Value, AHandleLivesAsLongAsTheLastCopy) {
  auto handle = std::make_shared<Handle>();
  const std::weak_ptr<Handle> watching = handle;
  Value value(std::move(handle));
  Value copy = value;
  value = Value();
  EXPECT_FALSE(watching.expired());
  copy = Value(1);
  EXPECT_TRUE(watching.expired());
}

}  // namespace
}  // namespace clipwave
