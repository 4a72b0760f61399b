// A recorder over a kit that writes down every call, in the sheet of a window.
#pragma once

#include <gmock/gmock.h>
#include <unistd.h>

#include "record/Recorder.h"
#include "tests/support/FakeApplicationShell.h"
#include "tests/support/FakeCaptureKit.h"
#include "tests/support/FakeFileManager.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

class RecorderTest : public ::testing::Test {
 protected:
  RecorderTest() {
    for (const auto name : {kRecordingStarted, kMovieCreated, kRecordingBrokenOff})
      observations_.push_back(notifications_.observe(name, [this](const Notification& posted) {
        EXPECT_EQ(posted.object.handleValue().get(), &recorder_);
        const Value& path = posted.userInfo.at("path");
        events_.push_back(posted.name + " " +
                          (path.isNull() ? "nowhere" : lastPathComponent(path.stringValue())));
      }));
    recorder_.setFilename(folder_ / "Movie1.mov");
  }
  // The recorder as it is with the sheet open.
  void setUpRecorder() {
    recorder_.setup();
    application_.beginSheet(window_, mainWindow_, [this](int) { events_.emplace_back("sheet ended"); });
    capture().taken();
  }
  CaptureScript& capture() { return kit_.script; }
  void tick(int times = 1) {
    for (int i = 0; i < times; ++i) loop_->runOnce(Seconds(1.0 / 60));
  }
  // Calls the function from within the next modal run, which lets no timer through.
  void duringModalRun(std::function<void()> function) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[1]);
    modalWatch_ = loop_->watch(
        ends[0], RunLoop::Readiness::Readable,
        [this, end = ends[0], function = std::move(function)] {
          const auto called = function;
          modalWatch_.reset();
          ::close(end);
          called();
        },
        RunLoop::Delivery::DefaultAndModal);
  }
  std::string face() const {
    return recorder_.recordButton.image() + (recorder_.closeButton.isEnabled() ? "" : ", no Close");
  }

  TemporaryFolder folder_;
  TestClock clock_;
  std::unique_ptr<RunLoop> loop_ = makeRunLoop(clock_);
  FakeApplicationShell shell_;
  Application application_{*loop_, shell_};
  FakeFileManager files_;
  NotificationCenter notifications_;
  FakeWorkspace workspace_;
  RecordingLog log_;
  FakeCaptureKit kit_{files_};
  Window mainWindow_;
  Window window_;
  Recorder recorder_{{application_, *loop_, files_, notifications_, workspace_, log_, kit_}, window_};
  std::vector<std::string> events_;
  std::vector<Observation> observations_;
  std::unique_ptr<DescriptorWatch> modalWatch_;
};

inline const std::vector<std::string> kNothing;

}  // namespace clipwave::testing
