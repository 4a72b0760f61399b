#include "publish/PublishRun.h"

#include "tests/publish/PublishFixture.h"
#include "tests/support/FakeDotMac.h"
#include "transfer/CopyFiles.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

// Records what it is asked; the test sends the callbacks.
class FakeBackEnd final : public CopyBackEnd {
 public:
  explicit FakeBackEnd(std::vector<std::string>& events) : events_(events) {}
  bool copyFiles(const std::vector<CopyEntry>& files, const std::optional<std::string>& toDirectory,
                 CopyDelegate& sender) override {
    std::string names;
    for (const CopyEntry& entry : files) names += entry.filename + " ";
    events_.push_back(names + "to " + lastPathComponent(toDirectory.value_or("nowhere")));
    if (failure) sender.connectionError(*this, 101, *failure);
    return accepts && !failure;
  }
  void abort() override { events_.push_back("abort"); }

  bool accepts = true;
  std::optional<std::string> failure;

 private:
  std::vector<std::string>& events_;
};

class PublishRunTest : public PublishTest {
 protected:
  PublishRunTest() {
    run.setOnEnd([this](PublishOutcome outcome, const auto&) { outcomes.push_back(outcome); });
  }
  void expectControls(bool copying) {
    EXPECT_EQ(run.isCopying(), copying);
    EXPECT_EQ(spinner.isAnimating(), copying);
    EXPECT_EQ(statusLine.isHidden(), !copying);
    EXPECT_EQ(button.title(), copying ? "Cancel" : "Publish");
    EXPECT_TRUE(button.isEnabled());
  }

  std::vector<std::string> events;
  std::vector<PublishOutcome> outcomes;
  std::vector<std::shared_ptr<FakeBackEnd>> made;
  std::function<void(FakeBackEnd&)> prepareBackEnd = [](FakeBackEnd&) {};
  PublishRun::BackEndFactory factory = [this](int tag) -> std::shared_ptr<CopyBackEnd> {
    events.push_back("method " + std::to_string(tag));
    made.push_back(std::make_shared<FakeBackEnd>(events));
    prepareBackEnd(*made.back());
    return made.back();
  };
  Window mainWindow, report;
  Button button;
  ProgressIndicator spinner;
  TextField statusLine;
  TextView text;
  PublishRun::Services services{application, log, channels, [this] { return host.context.get(); },
                                [this](int tag) { return factory(tag); }};
  PublishElements elements{mainWindow, button, spinner, statusLine, report, text};
  PublishRun run{services, preparation, elements};
};

TEST_F(PublishRunTest, MarkedChannelsGoOutInStoreOrderAndAreReported) {
  addChannel("C").setValue("vcURL", "https://host/C");
  addChannel("B").setValue("vcPublish", false);
  Channel& last = addChannel("A");
  last.setValue("protocolTag", 2);
  last.setValue("mediaPath", Value());
  Vodcast& episode = addEpisode(last, "/movies/a.mov");

  run.save();
  EXPECT_EQ(statusLine.stringValue(), "Publishing...");
  run.copyCompleted(*made.back());
  expectControls(true);
  run.updateCopyStatusForFile("a.mov", 42);
  EXPECT_EQ(statusLine.stringValue(), "a.mov completed 42");
  run.fileCopied(preparation.filesToCopy().front());
  EXPECT_FALSE(episode.value("vcCopy").boolValue());
  run.copyCompleted(*made.back());

  expectControls(false);
  EXPECT_THAT(events, ElementsAre("method 1", "C.xml to C", "method 2", "a.mov A.xml to nowhere"));
  EXPECT_EQ(text.string(), "https://host/C/C.xml\nitpc://host/A/A.xml\n");
  const auto& runs = text.textStorage().runs();
  ASSERT_EQ(runs.size(), 1U);
  EXPECT_EQ(runs[0].range, (TextRange{21, 19}));
  EXPECT_EQ(runs[0].attributes,
            (Dictionary{{"NSLink", "itpc://host/A/A.xml"}, {"NSUnderline", 1}, {"NSColor", "blue"}}));
  EXPECT_EQ(mainWindow.attachedSheet(), &report);
  EXPECT_THAT(outcomes, ElementsAre(PublishOutcome::Done));
  run.closeStatusSheet();
  EXPECT_FALSE(report.isVisible());
}

TEST_F(PublishRunTest, ACancelledRunIsOverOnceItsBackEndHasAnswered) {
  addChannel("A");
  addChannel("B");
  run.save();
  run.save();
  EXPECT_EQ(events.back(), "abort");
  EXPECT_EQ(run.cf(), nullptr);
  expectControls(true);
  run.copyCompleted(*made.back());  // the last file arrived before the abort did
  expectControls(false);

  run.save();
  run.copyAborted(*made.front());
  run.copyCompleted(*made.front());
  run.connectionError(*made.front(), 100, "late");
  expectControls(true);
  EXPECT_EQ(made.size(), 2U);
  run.copyAborted(*made.back());
  expectControls(false);
  EXPECT_THAT(outcomes, ElementsAre(PublishOutcome::Aborted, PublishOutcome::Aborted));
  EXPECT_EQ(mainWindow.attachedSheet(), nullptr);
}

TEST_F(PublishRunTest, ARefusalOrAFailureEndsTheRunOnceAndIdlesTheControls) {
  addChannel("A");
  addChannel("B");
  run.save();
  prepareBackEnd = [](FakeBackEnd& next) { next.accepts = false; };
  run.copyCompleted(*made.back());
  expectControls(false);
  prepareBackEnd = [](FakeBackEnd& next) { next.failure = "100%@ wrong\n%s"; };
  run.save();
  expectControls(false);
  prepareBackEnd = [](FakeBackEnd&) {};
  run.save();
  run.connectionError(*made.back(), 103, "gone");
  run.copyAborted(*made.back());
  expectControls(false);
  EXPECT_EQ(preparation.pubURLs().size(), 1U) << "each run starts afresh";
  EXPECT_THAT(shell.alerts, ElementsAre(".Mac Error!|100%@ wrong\n%s|OK", ".Mac Error!|gone|OK"));
  EXPECT_THAT(outcomes, ElementsAre(PublishOutcome::Refused, PublishOutcome::ConnectionError,
                                    PublishOutcome::ConnectionError));
}

TEST_F(PublishRunTest, AnUploadEndsItsRunFromTheLoop) {
  FakeDotMac dotMac(host.runLoop());
  ASSERT_TRUE(host.defaults().setValue("noConfirm", true));
  dotMac.uploadsWait = true;
  factory = [&](int) {
    return std::make_shared<CopyFiles>(
        DotMacCopyServices{application, host.runLoop(), host.defaults(), log, dotMac});
  };
  addChannel("A").setValue("mediaPath", "/A");
  Channel& last = addChannel("B");
  run.save();
  for (int press = 0; press < 2; ++press) {
    run.save();
    expectControls(true);
  }
  host.turn();
  expectControls(false);
  EXPECT_FALSE(dotMac.isUploading());

  last.setValue("mediaPath", Value());
  dotMac.failingUploads = {{"/B.xml", kDMServiceBusy}};
  run.save();
  for (int channel = 0; channel < 2; ++channel) {
    dotMac.finishUpload();
    host.turn();
  }
  expectControls(false);
  EXPECT_THAT(shell.alerts, ElementsAre(".Mac Error!|.Mac is busy.  Wait a bit and try again later.|OK"));
  EXPECT_THAT(outcomes, ElementsAre(PublishOutcome::Aborted, PublishOutcome::ConnectionError));

  for (const bool cancelled : {false, true}) {
    auto going = std::make_unique<PublishRun>(services, preparation, elements);
    going->save();
    if (cancelled) going->save();
    going = nullptr;
    EXPECT_FALSE(dotMac.isUploading());
    host.turn();
  }
}

TEST_F(PublishRunTest, ABackEndThatIsGoneWithoutAWordEndsTheCancelledRun) {
  factory = [this](int) { return std::make_shared<FakeBackEnd>(events); };
  addChannel("A");
  run.save();
  run.save();
  expectControls(false);
  EXPECT_THAT(outcomes, ElementsAre(PublishOutcome::Aborted));
}

TEST_F(PublishRunTest, ARunThatCannotSaveFirstStopsWithoutAWord) {
  addChannel("A");
  TextField field;
  field.setValidator([](const TextField&, std::string_view) { return false; });
  mainWindow.makeFirstResponder(&field);
  field.edit("half");
  run.save();
  field.discardEditing();
  folder.makeFolder("Clipwave.xml");  // where the store is to be written
  run.save();
  EXPECT_THAT(outcomes, ElementsAre(PublishOutcome::NotCommitted, PublishOutcome::NotSaved));
  EXPECT_TRUE(shell.alerts.empty() && events.empty());
}

}  // namespace
}  // namespace clipwave
