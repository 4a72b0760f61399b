// From two movie files to a published channel, through the window alone.
#include <unistd.h>

#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QTextCursor>
#include <filesystem>

#include "tests/desktop/RunningDesktop.h"
#include "tests/support/RealMovies.h"

namespace clipwave::testing {
namespace {
using namespace ::testing;

class Walk : public RunningDesktop {};

TEST_F(Walk, TwoClipsArePublishedAndAllIsThereAfterARestart) {
  const std::string bread = makeMovie(home, "bread.mov", 2), soup = makeMovie(home, "soup.mp4");
  const std::string site = home.makeFolder("Site");
  // The subscription file lies in a folder that all processes share.
  const std::string title = "Cooking " + std::to_string(::getpid());
  const std::string subscription = "/tmp/" + title + ".pcast";
  start();
  type("channelTitleTextField", QString::fromStdString(title));
  press(Qt::Key_Return);
  ASSERT_TRUE(dropped("vcastTableView", {bread, soup}));
  clickRow("vcastTableView", 0);
  press(Qt::Key_1, Qt::AltModifier);
  type("titleTextField", "Soup & more");
  type("episodeSubtitleField", "One pot");
  choosePath(site);
  pick("protocolPopUp", "Folder");
  type("vcURLField", "http://example.org/cooking");

  click("publishButton");
  QWidget* report = shown(state().statusWindow);
  ASSERT_TRUE(until([&] { return report->isVisible(); }));
  auto& text = find<QTextBrowser>("statusTextView");
  const std::string link = "itpc://example.org/cooking/podcast01.xml";
  EXPECT_EQ(text.toPlainText().trimmed().toStdString(), link);
  EXPECT_EQ(find<QPushButton>("publishButton").text(), "Publish");
  const std::string feed = readFile(site + "/podcast01.xml");
  EXPECT_THAT(feed, AllOf(HasSubstr("Soup &amp; more"), HasSubstr("One pot"), HasSubstr("00:00:02"),
                          HasSubstr("http://example.org/cooking/soup.mp4")));
  for (const std::string& movie : {bread, soup})
    EXPECT_TRUE(readFile(movie) == readFile(site + movie.substr(movie.rfind('/')))) << movie;

  QTextCursor inLink(text.document());
  inLink.setPosition(10);
  click(*text.viewport(), text.cursorRect(inLink).center());
  EXPECT_TRUE(until([&] { return opened() == link + "\n"; })) << opened();
  click("copyLinksButton");
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), link);
  click("copyInvitationButton");
  EXPECT_THAT(QApplication::clipboard()->text().toStdString(),
              AllOf(StartsWith("Click on the links below"), HasSubstr(link + "\n")));
  click("openInItunesButton");
  EXPECT_TRUE(until([&] { return opened().ends_with("\n" + subscription + "\n"); })) << opened();
  EXPECT_THAT(readFile(subscription), HasSubstr("http://example.org/cooking/podcast01.xml"));
  std::filesystem::remove(subscription);
  click("closeButton");
  EXPECT_FALSE(report->isVisible());

  // Once more: what is there already is asked about, once for all of it.
  clickRow("vcastTableView", 0);
  press(Qt::Key_A, Qt::ControlModifier);
  choose("actionToggleCopyEpisodes");
  reply([](QDialog& dialog) {
    QTest::mouseClick(dialog.findChild<QCheckBox*>(), Qt::LeftButton, {}, QPoint(8, 8));
    clickButton(dialog, "Replace");
  });
  click("publishButton");
  EXPECT_TRUE(until([&] { return report->isVisible() && allReplied(); }));
  EXPECT_THAT(alerts(), ElementsAre(StartsWith("File Exists!|")));
  // Nobody closes a sheet before the desktop has brought it up.
  EXPECT_TRUE(until([&] { return report->isActiveWindow(); }));
  click("closeButton");

  press(Qt::Key_Q, Qt::ControlModifier);
  ASSERT_TRUE(hasQuit());
  end();
  start();
  EXPECT_THAT(titles(channels()), ElementsAre(title));
  EXPECT_THAT(titles(episodes()), UnorderedElementsAre("Soup & more", "bread"));
  EXPECT_EQ(channelValue("mediaPath"), site);
  for (ManagedObject* episode : episodes().arrangedObjects())
    EXPECT_FALSE(episode->value("vcCopy").boolValue());
}

}  // namespace
}  // namespace clipwave::testing
