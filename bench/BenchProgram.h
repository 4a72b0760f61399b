// The real program over the real platform, at home in a folder of the benchmark's own.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "app/ClipwaveProgram.h"
#include "app/RealPlatform.h"
#include "model/LibraryModel.h"

namespace clipwave::bench {

// Says nothing and agrees to everything.
class SilentShell final : public ApplicationShell {
 public:
  Alert::Answer runAlert(Alert&) override { return Alert::Answer::Default; }
  OpenPanelAnswer runOpenPanel(const OpenPanel&) override { return {}; }
  void beginAlertSheet(Alert, Window&, std::function<void(Alert::Answer)>) override {}
  void beginOpenPanelSheet(OpenPanel, Window&, std::function<void(OpenPanelAnswer)>) override {}
  void beep() override {}
  void exitProcess(int status) override { std::_Exit(status); }
};

// A folder that is the user's home while it lives.
class BenchHome {
 public:
  // `parent`: the file system to lie on.
  explicit BenchHome(const std::string& parent = std::filesystem::temp_directory_path().string()) {
    std::string pattern = parent + "/clipwave-bench-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;
    ::setenv("HOME", path_.c_str(), 1);
    ::setenv("XDG_DATA_HOME", (path_ + "/data").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (path_ + "/config").c_str(), 1);
  }
  ~BenchHome() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  BenchHome(const BenchHome&) = delete;
  BenchHome& operator=(const BenchHome&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

class BenchProgram {
 public:
  BenchProgram() : runLoop_(makeRunLoop(clock_)) {
    const auto self = std::filesystem::read_symlink("/proc/self/exe").string();
    platform_ = std::make_unique<RealPlatform>(self, *runLoop_, clock_, shell_, interfaces_, log_);
    program_ = std::make_unique<ClipwaveProgram>(platform_->services());
    program_->controller().awakeWithoutWindow();
  }
  ClipwaveProgram& program() { return *program_; }
  Controller& controller() { return program_->controller(); }
  ManagedObjectContext& context() { return *program_->delegate().managedObjectContext(); }
  RunLoop& runLoop() { return *runLoop_; }
  UserDefaultsController& defaults() { return platform_->defaults(); }

 private:
  SystemClock clock_;
  SilentShell shell_;
  StateOnlyInterfaceLoader interfaces_;
  RecordingLog log_;
  std::unique_ptr<RunLoop> runLoop_;
  std::unique_ptr<RealPlatform> platform_;
  std::unique_ptr<ClipwaveProgram> program_;
};

// An episode as a user leaves it: texts, marks, and every derived value stored.
inline void fillEpisode(ManagedObject& episode, int number) {
  const std::string n = std::to_string(number);
  episode.setPrimitiveValue("vcTitle", "Episode " + n + ": bread, knives & other tools");
  episode.setPrimitiveValue("vcPublishDate", Date::fromSeconds(1'200'000'000 + 3'600LL * number));
  episode.setPrimitiveValue("timezone", "Europe/Berlin");
  episode.setPrimitiveValue("vcAuthor", "Ann Example");
  episode.setPrimitiveValue("vcEmail", "ann@example.org");
  episode.setPrimitiveValue("vcSubtitle", "What we cooked in week " + n);
  episode.setPrimitiveValue(
      "vcSummary", "A longer text about what was cooked, who came, and what was left over, in week " + n);
  episode.setPrimitiveValue("vcDescription", "Flour, water, salt, time. Part " + n);
  episode.setPrimitiveValue("keywords", "bread, knives, kitchen");
  episode.setPrimitiveValue("vcCategory", "Arts");
  episode.setPrimitiveValue("subCategory", "Food");
  episode.setPrimitiveValue("mediaURL", "http://podcasts.clipwave.example/cooking");
  episode.setPrimitiveValue("mediaFilename", "week " + n + ".mov");
  episode.setPrimitiveValue("mediaTimeString", "00:12:31");
  episode.setPrimitiveValue("mediaSizeString", "310.00");
  episode.setPrimitiveValue("mediaSizeUnit", "MB");
  episode.setPrimitiveValue("size", 325'058'560);
}

}  // namespace clipwave::bench
