// How long the turns of the event loop take while the lists work: a channel of ten thousand episodes
// selected, scrolled, sorted and filled, and movies that are opened beside the scrolling.
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <thread>

#include "bench/BenchProgram.h"
#include "bench/Measure.h"
#include "desktop/LibraryTables.h"

namespace clipwave::bench {
namespace {

constexpr int kEpisodes = 10'000;
constexpr int kUnopened = 1'000;
constexpr int kRounds = 20;

// A movie that takes as long to open as one on a slow disk, and is never the file that is there.
class SlowMovies final : public MovieOpener {
 public:
  std::shared_ptr<Movie> movieWithPath(std::string_view path) override {
    struct Opened final : Movie {
      explicit Opened(std::string_view openedPath) : place(openedPath) {}
      std::string_view path() const override { return place; }
      double duration() const override { return 751; }
      std::string place;
    };
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
    return std::make_shared<Opened>(path);
  }
};

// What a turn took on the clock, and what of it this thread worked: the rest went to whoever else was
// running.
struct Turn {
  double passed = 0;
  double worked = 0;
};
using Turns = std::vector<Turn>;

double secondsWorked() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// The window's two lists over the real program.
class Lists {
 public:
  Lists() {
    channels_.attach(interface().channelTableView, channelColumns());
    channels_.setSecondLineKey("vcSubtitle");
    episodes_.attach(interface().vcastTableView, episodeColumns(), &facts_);
    channels_.resize(240, 600);
    episodes_.resize(700, 600);
    channels_.show();
    episodes_.show();
    bench.context().undoManager().disableUndoRegistration();
  }
  BenchProgram bench;
  SlowMovies movies;

  MainInterface& interface() { return bench.program().interface(); }
  RecordTable& episodes() { return episodes_; }

  // One turn: what is done, then what the two loops have for it.
  Turn turn(const std::function<void()>& function = {}) {
    const double before = secondsWorked();
    const double passed = secondsOf([&] {
      if (function) function();
      bench.runLoop().runOnce(Seconds(0));
      QCoreApplication::processEvents();
    });
    return {passed, secondsWorked() - before};
  }
  // The turn of an action and those that follow from it.
  void act(Turns& turns, const std::function<void()>& function) {
    turns.push_back(turn(function));
    for (int i = 0; i < 3; ++i) turns.push_back(turn());
  }

 private:
  MovieFacts facts_{bench.runLoop(), movies};
  RecordTable channels_;
  RecordTable episodes_;
};

void fill(Lists& lists, const char* title, int count, bool withMovies, const std::string& folder) {
  ManagedObject* channel = lists.bench.context().insertNewObject(kChannelEntity);
  lists.bench.runLoop().runUntilIdle();
  channel->setPrimitiveValue("vcTitle", title);
  for (int i = 0; i < count; ++i) {
    ManagedObject* episode = lists.bench.context().insertNewObject(kVodcastEntity);
    if (withMovies) {
      const std::string path = folder + "/clip" + std::to_string(i) + ".mov";
      std::ofstream(path) << i;
      episode->setPrimitiveValue("vcTitle", "Clip " + std::to_string(i));
      episode->setPrimitiveValue("vcPath", path);
    } else {
      fillEpisode(*episode, i * 7919 % count);
    }
    episode->setValue("parent", channel);
  }
}

void reportTurns(const char* what, const Turns& turns) {
  std::vector<double> passed;
  std::vector<double> worked;
  for (const Turn& turn : turns) {
    passed.push_back(turn.passed * 1e3);
    worked.push_back(turn.worked * 1e3);
  }
  std::printf(
      "%-58s %6zu turns   99th percentile %6.2f ms, of it worked %6.2f ms   maximum %6.2f ms, %6.2f ms   "
      "(aim <= 16)\n",
      what, turns.size(), percentile(passed, 0.99), percentile(worked, 0.99),
      *std::ranges::max_element(passed), *std::ranges::max_element(worked));
  std::fflush(stdout);
}

void selecting(Lists& lists, std::size_t longList, std::size_t other) {
  Turns turns;
  for (int round = 0; round < kRounds; ++round) {
    lists.act(turns, [&] { lists.interface().channelTableView.selectRowIndexes({other}); });
    lists.act(turns, [&] { lists.interface().channelTableView.selectRowIndexes({longList}); });
  }
  reportTurns("selecting a channel of 10,000 episodes", turns);
}

void scrolling(Lists& lists, const char* what) {
  Turns turns;
  QScrollBar& bar = *lists.episodes().verticalScrollBar();
  bar.setValue(0);
  while (bar.value() < bar.maximum()) {
    turns.push_back(lists.turn([&] { bar.setValue(bar.value() + bar.pageStep()); }));
    // As long as a page is looked at, at the least.
    for (int i = 0; i < 4; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(4));
      turns.push_back(lists.turn());
    }
  }
  reportTurns(what, turns);
}

void sorting(Lists& lists) {
  const std::vector<Column> columns = episodeColumns();
  for (std::size_t section = 0; section < columns.size(); ++section) {
    const Column& column = columns[section];
    if (!column.sortable) continue;
    Turns turns;
    for (int round = 0; round < kRounds; ++round) {
      lists.act(turns, [&] { emit lists.episodes().header()->sectionClicked(static_cast<int>(section)); });
    }
    reportTurns(("sorting it by " + column.key).c_str(), turns);
  }
}

void inserting(Lists& lists) {
  Turns turns;
  ArrayController& list = lists.interface().vodcastController;
  for (int i = 0; i < kEpisodes; ++i) turns.push_back(lists.turn([&] { list.add(); }));
  reportTurns("10,000 episodes more, one in each turn", turns);
}

std::size_t rowOf(Lists& lists, std::string_view title) {
  const auto& rows = lists.interface().channelController.arrangedObjects();
  const auto found = std::ranges::find_if(
      rows, [&](ManagedObject* channel) { return channel->primitiveValue("vcTitle") == Value(title); });
  return static_cast<std::size_t>(found - rows.begin());
}

void run() {
  const BenchHome home;
  Lists lists;
  fill(lists, "Long", kEpisodes, false, home.path());
  fill(lists, "Short", 10, false, home.path());
  fill(lists, "Unopened", kUnopened, true, home.path());
  lists.interface().channelController.fetch();
  const std::size_t longList = rowOf(lists, "Long");
  selecting(lists, longList, rowOf(lists, "Short"));
  scrolling(lists, "scrolling it page by page");
  sorting(lists);
  inserting(lists);
  lists.interface().channelTableView.selectRowIndexes({rowOf(lists, "Unopened")});
  lists.turn();
  scrolling(lists, "scrolling 1,000 episodes whose movies are not opened yet");
}

}  // namespace
}  // namespace clipwave::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  clipwave::bench::run();
  return 0;
}
