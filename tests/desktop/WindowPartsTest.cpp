#include <gmock/gmock.h>

#include <QBuffer>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

#include "desktop/ArtworkWell.h"
#include "desktop/ElidedLabel.h"
#include "desktop/SplitView.h"
#include "desktop/SymbolicIcon.h"
#include "tests/support/FakeURLLoading.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {

QByteArray picture(int width) {
  QImage image(width, width / 2, QImage::Format_RGB32);
  image.fill(Qt::red);
  QBuffer buffer;
  image.save(&buffer, "PNG");
  return buffer.data();
}

TEST(SplitViewTest, TheMouseTakesADividerOnlyAsFarAsTheLimitsLetIt) {
  for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    SplitView view;
    for (int i = 0; i < 3; ++i) view.addWidget(new QWidget);
    view.setChildrenCollapsible(false);
    view.setLayoutDirection(direction);
    view.resize(1000, 200);
    view.setSizes({200, 500, 300});
    view.show();
    const auto place = [&](int divider) {
      const int x = view.handle(divider + 1)->x();
      return view.isMirrored() ? 1000 - view.handleWidth() - x : x;
    };
    const auto drag = [&](int divider, int by) {
      QWidget* const handle = view.handle(divider + 1);
      const QPoint start = handle->rect().center(), end = start + QPoint(view.isMirrored() ? -by : by, 0);
      QTest::mousePress(handle, Qt::LeftButton, {}, start);
      QTest::mouseMove(handle, end);
      QTest::mouseRelease(handle, Qt::LeftButton, {}, end);
      return place(divider);
    };
    const int before = place(0), right = place(1);
    EXPECT_EQ(drag(0, 30), before + 30) << "no limits yet";
    view.setConstraints([](float, int) { return 120.0F; },
                        [](float proposed, int) { return proposed * 0.75F; });
    EXPECT_EQ(drag(0, -500), 120);
    EXPECT_NEAR(drag(0, 900), (right - view.handleWidth()) * 0.75, 1);
    EXPECT_EQ(place(1), right) << "its neighbour stays";
    EXPECT_NEAR(drag(1, 900), (1000 - view.handleWidth()) * 0.75, 1);
  }
}

class ArtworkWellTest : public ::testing::Test {
 protected:
  bool settles() {
    return QTest::qWaitFor([this] { return !well_.image().isNull() || well_.hasFailed(); });
  }
  testing::TemporaryFolder folder_;
  testing::FakeURLLoading urls_;
  ArtworkWell well_;
};

TEST_F(ArtworkWellTest, APictureInAFileIsShownAtASizeForTheScreen) {
  const std::string path = folder_.write("large 100%.png", picture(2000).toStdString());
  const QString url = QUrl::fromLocalFile(path.c_str()).toString(QUrl::FullyEncoded);
  for (const QString& address : {QString::fromStdString(path), url}) {
    well_.setAddress(address);
    EXPECT_TRUE(well_.image().isNull()) << "not while the caller waits";
    ASSERT_TRUE(settles());
    EXPECT_EQ(well_.image().size(), QSize(1024, 512)) << well_.toolTip().toStdString();
  }
}

TEST_F(ArtworkWellTest, WhatIsNoPictureSaysWhyInItsTooltip) {
  const std::pair<std::string, std::string> kAddresses[] = {
      {folder_.write("text.png", "not a picture"), "The picture cannot be read"},
      {folder_ / "none.png", "There is no file"},
      {"cover.png", "“cover.png” is not the address of a picture."},
  };
  for (const auto& [address, message] : kAddresses) {
    well_.setAddress(QString::fromStdString(address));
    ASSERT_TRUE(settles()) << address;
    EXPECT_THAT(well_.toolTip().toStdString(), ::testing::HasSubstr(message));
  }
}

TEST_F(ArtworkWellTest, APictureOfTheWebComesLaterAndOnlyTheLastOneAskedFor) {
  well_.setAddress("http://clipwave.example/a.png");
  well_.attach(urls_);
  urls_.data = picture(20).toStdString();
  urls_.finishData();
  ASSERT_TRUE(settles());
  EXPECT_EQ(well_.image().size(), QSize(20, 10));
  urls_.error = Error{"", 0, "No network.", {}};
  well_.setAddress("https://clipwave.example/b.png");
  EXPECT_TRUE(well_.image().isNull());
  urls_.finishData();
  EXPECT_EQ(well_.toolTip(), "No network.");
  well_.setAddress("http://clipwave.example/c.png");
  well_.setAddress({});
  urls_.finishData();
  EXPECT_FALSE(well_.hasFailed()) << "that of an address given up is dropped";
}

TEST(ElidedLabelTest, TheTooltipShowsTheWholeTextWhereItIsShortened) {
  ElidedLabel label;
  label.setElideMode(Qt::ElideMiddle);
  label.resize(120, 20);
  label.show();
  const auto tooltip = [&label] {
    QToolTip::hideText();
    QHelpEvent event(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&label, &event);
    return QToolTip::text();
  };
  label.setText("short");
  EXPECT_EQ(label.shownText(), "short");
  EXPECT_EQ(tooltip(), "");
  const QString path = "/home/someone/Movies/A <b> & C/an episode of great length.mov";
  label.setText(path);
  EXPECT_TRUE(label.shownText().startsWith("/home") && label.shownText().endsWith(".mov"));
  EXPECT_TRUE(tooltip().endsWith(path.toHtmlEscaped()));
}

TEST(SymbolicIconTest, SymbolsTakeTheTextColoursOfThePaletteAsItIsNow) {
  const auto colour = [](const QIcon& icon, QIcon::Mode mode) {
    return icon.pixmap(QSize(40, 40), 1, mode).toImage().pixelColor(20, 20);
  };
  const QIcon cross = imageNamed("add");
  const QPalette before = QApplication::palette();
  for (const QColor text : {QColor(10, 20, 30), QColor(240, 230, 220)}) {
    QPalette palette = before;
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, Qt::gray);
    QApplication::setPalette(palette);
    EXPECT_EQ(colour(cross, QIcon::Normal), text);
    EXPECT_EQ(colour(cross, QIcon::Disabled), QColor(Qt::gray));
  }
  QApplication::setPalette(before);
  EXPECT_EQ(cross.pixmap(QSize(20, 20), 2).size(), QSize(40, 40)) << "as crisp as the screen";
}

}  // namespace
}  // namespace clipwave
