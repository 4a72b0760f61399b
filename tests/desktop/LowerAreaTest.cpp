#include "desktop/LowerArea.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLineEdit>
#include <QTest>

namespace clipwave {
namespace {

class LowerAreaTest : public ::testing::Test {
 protected:
  LowerAreaTest() {
    for (QWidget* part : {&band_, &view_, &strip_}) part->setParent(&area_);
    band_.setObjectName("band");
    view_.setObjectName("lowerView");
    strip_.setObjectName("publishStrip");
    area_.attach(state_);
    area_.resize(800, 400);
    area_.show();
  }
  // As the program switches between its layouts.
  void grow(double height) {
    Rect frame = state_.frame();
    frame.size.height += height;
    state_.setFrame(frame);
  }

  View state_;
  LowerArea area_;
  QWidget band_, view_, strip_;
  QLineEdit destination_{&band_};
};

TEST_F(LowerAreaTest, TheStateFollowsTheHeightOfTheAreaInBothLayouts) {
  for (const double covered : {0, 42}) {
    grow(covered);
    for (const int height : {400, 500, 300, 20, 350}) {
      area_.resize(700, height);
      const double free = std::max(0, height - 74 - 42);
      EXPECT_EQ(state_.frame(), (Rect{{0, 74}, {700, free + covered}})) << height;
      EXPECT_EQ(area_.coversBand(), covered > 0) << height;
    }
    EXPECT_EQ(strip_.geometry(), QRect(0, 276, 700, 74));
    EXPECT_EQ(band_.geometry(), QRect(0, 0, 700, 42));
    EXPECT_EQ(view_.geometry(), covered > 0 ? QRect(0, 0, 700, 276) : QRect(0, 42, 700, 234));
  }
}

TEST_F(LowerAreaTest, ACoveredBandIsOutOfReachAndComesBackWithTheAdvancedLayout) {
  EXPECT_TRUE(destination_.isVisible());
  grow(42);
  EXPECT_FALSE(destination_.isVisible());
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(&band_)->state().invisible);
  grow(-42);
  EXPECT_TRUE(destination_.isVisible());
}

}  // namespace
}  // namespace clipwave
