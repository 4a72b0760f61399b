#include <gmock/gmock.h>

#include <QBuffer>
#include <QHelpEvent>
#include <QLabel>
#include <QTest>
#include <QToolTip>

#include "desktop/ArtworkWell.h"
#include "desktop/ElidedLabel.h"
#include "desktop/Spinner.h"
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
  SplitView view;
  for (int i = 0; i < 3; ++i) view.addWidget(new QWidget);
  view.setChildrenCollapsible(false);
  view.resize(1000, 200);
  view.setSizes({200, 500, 300});
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  const auto drag = [&view](int divider, int by) {
    QWidget* const handle = view.handle(divider + 1);
    const QPoint start = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, start);
    QTest::mouseMove(handle, start + QPoint(by, 0));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, start + QPoint(by, 0));
    return handle->x();
  };
  std::vector<float> proposals;
  const int before = view.handle(1)->x();
  EXPECT_EQ(drag(0, 30), before + 30) << "no limits yet";
  view.setConstraints([](float, int) { return 120.0F; },
                      [&proposals](float proposed, int) {
                        proposals.push_back(proposed);
                        return proposed * 0.75F;
                      });
  EXPECT_EQ(drag(0, -500), 120);
  const int right = view.handle(2)->x();
  EXPECT_NEAR(drag(0, 900), (right - view.handleWidth()) * 0.75, 1);
  EXPECT_EQ(view.handle(2)->x(), right) << "its neighbour stays";
  EXPECT_NEAR(drag(1, 900), (1000 - view.handleWidth()) * 0.75, 1);
  EXPECT_THAT(proposals, ::testing::Contains(1000 - view.handleWidth()));
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
  for (const QString& address :
       {QString::fromStdString(path), QUrl::fromLocalFile(path.c_str()).toString(QUrl::FullyEncoded)}) {
    well_.setAddress(address);
    EXPECT_TRUE(well_.image().isNull()) << "not while the caller waits";
    ASSERT_TRUE(settles());
    EXPECT_EQ(well_.image().size(), QSize(1024, 512)) << well_.toolTip().toStdString();
    well_.setAddress({});
    EXPECT_TRUE(well_.image().isNull());
  }
}

TEST_F(ArtworkWellTest, WhatIsNoPictureSaysWhyInItsTooltip) {
  const std::pair<std::string, std::string> kAddresses[] = {
      {folder_.write("text.png", "not a picture"), "The picture cannot be read"},
      {folder_ / "none.png", "There is no file"},
      {folder_.path(), "There is no file"},
      {"cover.png", "“cover.png” is not the address of a picture."},
      {"www.clipwave.example/cover.png", "is not the address of a picture."},
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

TEST(SpinnerTest, OnlyAWheelThatTurnsIsSeen) {
  Spinner spinner;
  spinner.show();
  const QImage still = spinner.grab().toImage();
  spinner.setSpinning(true);
  const QImage turning = spinner.grab().toImage();
  EXPECT_NE(turning, still);
  EXPECT_TRUE(QTest::qWaitFor([&] { return spinner.grab().toImage() != turning; }));
  spinner.setSpinning(false);
  EXPECT_EQ(spinner.grab().toImage(), still);
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
    palette.setColor(QPalette::HighlightedText, Qt::yellow);
    QApplication::setPalette(palette);
    EXPECT_EQ(colour(cross, QIcon::Normal), text);
    EXPECT_EQ(colour(cross, QIcon::Disabled), QColor(Qt::gray));
    EXPECT_EQ(colour(cross, QIcon::Selected), QColor(Qt::yellow));
  }
  QApplication::setPalette(before);
  EXPECT_EQ(cross.pixmap(QSize(20, 20), 2).size(), QSize(40, 40)) << "as crisp as the screen";
  EXPECT_TRUE(imageNamed("none").isNull());
}

}  // namespace
}  // namespace clipwave
