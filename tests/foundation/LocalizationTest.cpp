// Texts for people, with and without a translation.
#include "platform/foundation/Localization.h"

#include <gtest/gtest.h>

namespace clipwave {
namespace {

std::string shouted(const char* context, const char* text, const char* comment, int count) {
  return std::string(context) + "/" + text + "/" + (comment != nullptr ? comment : "") + "/" +
         std::to_string(count);
}

TEST(Localization, ATextIsEnglishUntilTheProgramBringsATranslation) {
  EXPECT_EQ(localized("Files", "it is a folder"), "it is a folder");
  EXPECT_EQ(localizedCount("Editing", "%n of %n episodes", "%n episode", 1), "1 episode");
  EXPECT_EQ(localizedCount("Editing", "%n of %n episodes", "%n episode", 20), "20 of 20 episodes");

  setTranslation(shouted);
  EXPECT_EQ(localized("Files", "it is a folder"), "Files/it is a folder//-1");
  EXPECT_EQ(localizedCount("Editing", "%n episodes", "%n episode", 1), "Editing/%n episodes/%n episode/1");
  setTranslation(nullptr);
  EXPECT_EQ(localized("Files", "it is a folder"), "it is a folder");
}

TEST(Localization, ArgumentsTakeTheirPlacesAndAreNotReadThemselves) {
  EXPECT_EQ(filledIn("“%2” in %1", {"100%1 fun", "%@"}), "“%@” in 100%1 fun");
  EXPECT_EQ(filledIn("%@ to %@. %", {"a %@", "b"}), "a %@ to b. %");
  EXPECT_EQ(filledIn("100% of %3 %0 %@", {"one"}), "100% of %3 %0 one");
}

}  // namespace
}  // namespace clipwave
