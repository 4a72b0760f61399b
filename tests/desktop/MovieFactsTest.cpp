#include "ui/MovieFacts.h"

#include <QScrollBar>
#include <filesystem>
#include <semaphore>

#include "tests/desktop/TableWindow.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

constexpr int kTime = 4;
constexpr int kSize = 5;
constexpr int kTrouble = 6;

class MovieFactsTest : public TableWindow {
 protected:
  QString trouble(int row) {
    return episodeTable_.model()->index(row, kTrouble).data(Qt::AccessibleTextRole).toString();
  }
};

TEST_F(MovieFactsTest, RowsAreFilledFromTheirFilesAndTroublesToldOnce) {
  program_.addEpisodes({"remote.mov", "moved.mov", "text.mov", "gone.mov", "good.mov"});
  std::filesystem::rename(program_.folder / "moved.mov", program_.folder / "elsewhere.mov");
  program_.movies.durations[program_.folder / "elsewhere.mov"] = 3'725;
  std::filesystem::remove(program_.folder / "gone.mov");
  program_.movies.durations.erase(program_.folder / "text.mov");
  for (const char* key : {"vcPath", "alias"}) episode(4).setPrimitiveValue(key, {});
  ASSERT_TRUE(waitFor([&] { return text(episodeTable_, 3, kTime) == "1:02:05" && !trouble(2).isEmpty(); }));
  EXPECT_EQ(text(episodeTable_, 0, kTime), "00:05");
  EXPECT_EQ(text(episodeTable_, 0, kSize), "2.0 kB");
  EXPECT_EQ(episode(0).primitiveValue("mediaTimeString"), Value("00:00:05"));
  EXPECT_EQ(episode(0).primitiveValue("size"), Value(2048));
  EXPECT_EQ(episode(3).value("vcPath"), Value(program_.folder / "elsewhere.mov"));
  EXPECT_TRUE(trouble(1).contains("missing"));
  EXPECT_TRUE(trouble(2).contains("cannot be opened"));
  for (const int row : {0, 3, 4}) EXPECT_EQ(trouble(row), "") << row;

  const int openings = program_.movies.openings;
  for (int i = 0; i < 5; ++i) {
    episodeTable_.viewport()->repaint();
    QTest::qWait(10);
    turn();
  }
  EXPECT_EQ(program_.movies.openings, openings) << "what is known is not asked again";
  episode(2).setValue("vcPath", program_.makeMovie("better.mov"));
  EXPECT_TRUE(waitFor([&] { return text(episodeTable_, 2, kTime) == "00:05" && trouble(2).isEmpty(); }));
}

// Opens nothing until it is let.
class GatedMovies final : public MovieOpener {
 public:
  std::shared_ptr<Movie> movieWithPath(std::string_view path) override {
    opened.emplace_back(path);
    begun.release();
    gate.acquire();
    gate.release();
    return nullptr;
  }
  std::binary_semaphore begun{0};
  std::binary_semaphore gate{0};
  std::vector<std::string> opened;  // to be read when nothing is being opened
};

TEST_F(MovieFactsTest, WhatWasScrolledAwayIsNotOpenedAndGoneRecordsAreForgotten) {
  episodeTable_.hide();  // which would look at the files itself
  for (int i = 0; i < 3; ++i) {
    add(std::to_string(i));
    episode(0).setPrimitiveValue("vcPath", program_.makeMovie(std::to_string(i) + ".mov"));
  }
  const std::vector<ManagedObject*> records = program_.episodes().arrangedObjects();
  GatedMovies movies;
  MovieFacts facts(*program_.loop, movies);
  facts.setWanted({records[2], records[1]});
  movies.begun.acquire();
  facts.setWanted({records[0]});
  program_.context().undoManager().disableUndoRegistration();
  program_.context().deleteObject(*records[2]);
  movies.gate.release();
  EXPECT_TRUE(waitFor([&] { return facts.factsOf(*records[0]) != nullptr; }));
  EXPECT_THAT(movies.opened, ElementsAre(program_.folder / "0.mov", program_.folder / "2.mov"));
  EXPECT_EQ(facts.factsOf(*records[1]), nullptr);
  facts.forgetTroubles();
  EXPECT_EQ(facts.factsOf(*records[0]), nullptr);
}

}  // namespace
}  // namespace clipwave
