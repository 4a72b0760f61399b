#include "desktop/MoviePreview.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <cmath>
#include <filesystem>

#include "desktop/PictureArea.h"
#include "tests/support/FakeMovies.h"
#include "tests/support/RealMovies.h"

namespace clipwave {
namespace {
using namespace testing;

class MoviePreviewTest : public ::testing::Test {
 protected:
  MoviePreviewTest() {
    preview.attach(view, *loop);
    preview.resize(320, 280);
    preview.show();
  }
  void open(const std::string& path) { view.setMovie(std::make_shared<FakeMovie>(path, 3)); }
  bool until(const std::function<bool()>& isDone, double seconds = 10) {
    const Seconds limit = clock.uptime() + Seconds(seconds);
    while (!isDone() && clock.uptime() < limit) {
      loop->runOnce(Seconds(0.005));
      QApplication::processEvents();
    }
    return isDone();
  }
  bool untilOpen() {
    return until([this] { return play->isEnabled() && !picture->picture().isNull(); });
  }
  void click(QWidget* widget, QPoint where = {}) { QTest::mouseClick(widget, Qt::LeftButton, {}, where); }
  // The colour shown at a place given in parts of the picture area.
  QColor shownAt(double x, double y) {
    const QImage image = picture->grab().toImage();
    return image.pixelColor(std::lround(x * (image.width() - 1)), std::lround(y * (image.height() - 1)));
  }

  const TemporaryFolder folder;
  const EnvironmentVariable driver{"SDL_AUDIODRIVER", "dummy"};
  SystemClock clock;
  std::unique_ptr<RunLoop> loop = makeRunLoop(clock);
  MovieView view;
  MoviePreview preview;
  PictureArea* picture = preview.findChild<PictureArea*>();
  QSlider* slider = preview.findChild<QSlider*>();
  QLabel* time = preview.findChild<QLabel*>();
  QToolButton* play = preview.findChildren<QToolButton*>()[0];
  QToolButton* mute = preview.findChildren<QToolButton*>()[1];
};

TEST_F(MoviePreviewTest, ShowsTheFirstPictureOfTheMovieAndSaysWhatThereIsInsteadOfOne) {
  EXPECT_EQ(picture->message(), "No movie");
  preview.setMessage("No episode selected");
  EXPECT_EQ(picture->message(), "No episode selected");
  EXPECT_FALSE(play->isEnabled() || slider->isEnabled() || mute->isEnabled());
  const std::string white = folder / "white.mov";
  runFFmpeg({"-f", "lavfi", "-i", "color=white:s=640x160:r=10:d=2", "-c:v", "mpeg4", white});
  open(white);
  ASSERT_TRUE(untilOpen());
  EXPECT_EQ(picture->message(), "");
  EXPECT_EQ(time->text(), "00:00 / 00:02");
  EXPECT_EQ(slider->maximum(), 2000);
  EXPECT_FALSE(view.isPlaying() || mute->isEnabled());
  EXPECT_GT(shownAt(0.02, 0.5).lightness(), 240);
  EXPECT_LT(shownAt(0.5, 0.1).lightness(), 60);  // letterboxed
  preview.resize(640, 280);
  EXPECT_TRUE(until([&] { return picture->picture().width() > 500; }));

  open(makeMovie(folder, "a.mp3", 1));
  EXPECT_TRUE(until([&] { return picture->message() == "Sound only"; }));
  EXPECT_TRUE(play->isEnabled() && mute->isEnabled());
  std::filesystem::remove(white);
  const std::pair<std::string, const char*> wrong[] = {
      {white, "Movie file is missing"}, {folder.write("text.mov", "text"), "This movie cannot be played"}};
  for (const auto& [path, message] : wrong) {
    open(path);
    EXPECT_TRUE(until([&, text = message] { return picture->message() == text; })) << path;
    EXPECT_TRUE(picture->picture().isNull());
    EXPECT_FALSE(play->isEnabled() || slider->isEnabled());
    view.play();
    EXPECT_TRUE(until([&] { return !view.isPlaying(); }));
  }
  view.setMovie(nullptr);
  EXPECT_EQ(picture->message(), "No episode selected");
  view.play();
  EXPECT_FALSE(view.isPlaying());
}

TEST_F(MoviePreviewTest, PlaysAndPausesWithTheProgramsStateBothWays) {
  open(makeMovie(folder, "a.mov", 1.2));
  ASSERT_TRUE(untilOpen());
  click(play);
  EXPECT_TRUE(view.isPlaying());
  EXPECT_EQ(play->accessibleName(), "Pause");
  EXPECT_TRUE(until([&] { return slider->value() > 300; }));
  view.pause();
  EXPECT_EQ(play->accessibleName(), "Play");
  until([] { return false; }, 0.15);
  const int paused = slider->value();
  until([] { return false; }, 0.15);
  EXPECT_EQ(slider->value(), paused);
  QTest::keyClick(picture, Qt::Key_Space);
  EXPECT_TRUE(view.isPlaying());
  EXPECT_TRUE(until([&] { return !view.isPlaying(); }));  // its end
  EXPECT_EQ(slider->value(), slider->maximum());
  EXPECT_EQ(time->text(), "00:01 / 00:01");
  QTest::keyClick(slider, Qt::Key_Space);
  EXPECT_TRUE(view.isPlaying());
  EXPECT_TRUE(until([&] { return slider->value() > 100 && slider->value() < 900; }));
  view.pause();

  // A movie that is to be played is not waited for.
  open(makeMovie(folder, "b.mov", 1));
  view.play();
  EXPECT_TRUE(until([&] { return slider->value() > 100; }));
  click(mute);
  EXPECT_TRUE(mute->isChecked());
  open(makeMovie(folder, "c.mov", 1));
  EXPECT_TRUE(mute->isChecked());
  EXPECT_TRUE(until([&] { return !view.isPlaying(); }));
}

TEST_F(MoviePreviewTest, ScrubsToWhereItIsClickedAndByKeys) {
  const std::string path = folder / "grey.mov";
  runFFmpeg({"-f", "lavfi", "-i", "color=black:s=64x48:r=10:d=25,geq=lum=16+N*0.85:cb=128:cr=128", "-c:v",
             "libx264", "-preset", "veryfast", "-qp", "4", path});
  open(path);
  ASSERT_TRUE(untilOpen());
  const auto expectAt = [&](double seconds, double tolerance, const char* how) {
    EXPECT_NEAR(slider->value() / 1000.0, seconds, tolerance) << how;
    const double grey = std::floor(slider->value() / 100.0) * 0.85 * 1.164;
    EXPECT_TRUE(until([&] { return std::abs(shownAt(0.5, 0.5).lightness() - grey) < 3; }, 3)) << how;
  };
  click(slider, {slider->width() / 2, slider->height() / 2});
  expectAt(12.5, 0.3, "clicked");
  slider->setFocus();
  slider->setValue(10'000);
  struct {
    Qt::Key key;
    double seconds;
  } const keys[] = {{Qt::Key_Right, 11},    {Qt::Key_Left, 10}, {Qt::Key_PageUp, 20},
                    {Qt::Key_PageDown, 10}, {Qt::Key_Home, 0},  {Qt::Key_End, 25}};
  for (QWidget* widget : {static_cast<QWidget*>(slider), static_cast<QWidget*>(picture)}) {
    slider->setValue(10'000);
    for (const auto& [key, seconds] : keys) {
      QTest::keyClick(widget, key);
      if (seconds < 25) expectAt(seconds, 0, widget->metaObject()->className());
    }
    EXPECT_EQ(time->text(), "00:25 / 00:25");
  }
  // While the slider is held the movie stands still, and then goes on from there.
  view.play();
  QTest::mousePress(slider, Qt::LeftButton, {}, {slider->width() / 4, slider->height() / 2});
  const int held = slider->value();
  until([] { return false; }, 0.2);
  EXPECT_EQ(slider->value(), held);
  EXPECT_TRUE(view.isPlaying());
  QTest::mouseRelease(slider, Qt::LeftButton, {}, {slider->width() / 4, slider->height() / 2});
  EXPECT_TRUE(until([&] { return slider->value() > held + 200; }));
  EXPECT_LT(slider->value(), held + 1500);
}

TEST_F(MoviePreviewTest, SaysThatAMovieBreaksOff) {
  const std::string whole = folder / "whole.mov";
  runFFmpeg({"-i", makeMovie(folder, "a.mov", 4), "-c", "copy", "-movflags", "faststart", whole});
  const std::string content = readFile(whole);
  open(folder.write("half.mov", content.substr(0, content.size() / 2)));
  view.play();
  ASSERT_TRUE(until([&] { return !view.isPlaying(); }));
  EXPECT_EQ(picture->notice(), "The movie is damaged and breaks off here.");
  EXPECT_FALSE(picture->picture().isNull());
  QTest::keyClick(picture, Qt::Key_Left);
  EXPECT_EQ(picture->notice(), "");
}

TEST(PlayingTimeText, ShowsHoursWhereThereAreAny) {
  EXPECT_EQ(playingTimeText(4, false), "00:04");
  EXPECT_EQ(playingTimeText(12 * 60 + 30.9999, false), "12:31");
  EXPECT_EQ(playingTimeText(-1, true), "0:00:00");
  EXPECT_EQ(playingTimeText(3725.5, true), "1:02:05");
}

}  // namespace
}  // namespace clipwave
