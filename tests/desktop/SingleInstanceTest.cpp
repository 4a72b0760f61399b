#include "desktop/SingleInstance.h"

#include <gmock/gmock.h>
#include <signal.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include "desktop/InstanceMessage.h"
#include "desktop/QtRunLoop.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {
namespace {
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Role = SingleInstance::Role;

class SingleInstanceTest : public ::testing::Test {
 protected:
  // Another start of the program, in a process of its own.
  std::unique_ptr<QProcess> start(const QStringList& paths) {
    auto process = std::make_unique<QProcess>();
    process->setWorkingDirectory(QString::fromStdString(folder.path()));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("CLIPWAVE_TEST_MEETING", QString::fromStdString(folder.path()));
    environment.insert("CLIPWAVE_TEST_PATHS", paths.join('\n'));
    environment.insert("XDG_ACTIVATION_TOKEN", "token 7");
    process->setProcessEnvironment(environment);
    process->start(QCoreApplication::applicationFilePath(),
                   {"--gtest_also_run_disabled_tests", "--gtest_filter=*DISABLED_AnotherStart"});
    return process;
  }
  static std::string roleOf(QProcess& process) {
    QByteArray output;
    const bool told = QTest::qWaitFor(
        [&] { return (output += process.readAllStandardOutput()).contains("ROLE "); }, 10'000);
    return told ? output.mid(output.indexOf("ROLE ") + 5, 1).toStdString() : output.toStdString();
  }
  QString socket() const {
    const QStringList found =
        QDir(QString::fromStdString(folder.path())).entryList({"*.socket"}, QDir::System);
    return found.size() == 1 ? QString::fromStdString(folder / found.front().toStdString()) : QString();
  }
  void receive(SingleInstance& instance) {
    instance.setOnItems([this](const std::vector<std::string>& paths, const QByteArray& token) {
      received.push_back(token.toStdString());
      received.insert(received.end(), paths.begin(), paths.end());
    });
  }

  TemporaryFolder folder;
  EnvironmentVariable runtime{"XDG_RUNTIME_DIR", folder.path().c_str()};
  SystemClock clock;
  std::unique_ptr<RunLoop> loop = makeQtRunLoop(clock);
  std::vector<std::string> received;
};

// Not a case of its own: what the other process does.
TEST(SingleInstance, DISABLED_AnotherStart) {
  const EnvironmentVariable runtime("XDG_RUNTIME_DIR", qgetenv("CLIPWAVE_TEST_MEETING").constData());
  SystemClock clock;
  const auto loop = makeQtRunLoop(clock);
  SingleInstance instance(*loop, "/library");
  std::vector<std::string> paths;
  for (const QByteArray& path : qgetenv("CLIPWAVE_TEST_PATHS").split('\n'))
    paths.push_back(path.toStdString());
  const Role role = instance.claim(paths, Seconds(2));
  std::printf("ROLE %d\n", static_cast<int>(role));
  std::fflush(stdout);
  for (int turns = 0; role == Role::First && turns < 20; ++turns) loop->runOnce(Seconds(1));
}

TEST_F(SingleInstanceTest, ASecondStartHandsItsFilesToTheFirstWhichGetsThemAfterAModalRun) {
  SingleInstance first(*loop, "/library");
  ASSERT_EQ(first.claim({}), Role::First);
  EXPECT_EQ(QFileInfo(socket()).permissions() & (QFile::ReadGroup | QFile::WriteGroup | QFile::WriteOther),
            0);
  const auto second = start({"a b.mov", "/ü 100% #.mov", "itpc://h/f"});
  std::string role;
  QTimer::singleShot(0, [&] {
    role = roleOf(*second);
    EXPECT_THAT(received, IsEmpty());
    receive(first);
    QTest::qWait(20);
    EXPECT_THAT(received, IsEmpty());
    loop->stopModal();
  });
  loop->runModal();
  EXPECT_EQ(role, "1");
  loop->runUntilIdle();
  EXPECT_THAT(received, ElementsAre("token 7", folder / "a b.mov", "/ü 100% #.mov", "itpc://h/f"));
}

TEST_F(SingleInstanceTest, TheProgramHandsOverTheFilesThatThereAreAndTellsOfTheOthers) {
  const EnvironmentVariable data("XDG_DATA_HOME", folder.makeFolder("data").c_str());
  SingleInstance first(*loop, folder / "data");
  ASSERT_EQ(first.claim({}), Role::First);
  receive(first);
  folder.write("-odd 1.mov", "x");
  const QString url = QString::fromStdString("file://" + folder / "-odd%201.mov");
  const std::tuple<QStringList, int, const char*> starts[] = {
      {{"--nonsense", "-odd 1.mov"}, 2, "clipwave: There is no option --nonsense. See man clipwave.\n"},
      {{"--", "-x", "data"}, 1, "clipwave: There is no file -x.\nclipwave: There is no file data.\n"},
      {{"-odd 1.mov", "itpc://h/f", "file:///no", url}, 0, "clipwave: There is no file file:///no.\n"},
      {{"--"}, 0, ""}};
  for (const auto& [arguments, status, told] : starts) {
    QProcess process;
    process.setWorkingDirectory(QString::fromStdString(folder.path()));
    process.start(CLIPWAVE, arguments);
    EXPECT_TRUE(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 20'000));
    EXPECT_EQ(process.exitCode(), status) << told;
    EXPECT_EQ(process.readAllStandardError().toStdString(), told);
  }
  loop->runUntilIdle();
  const std::string odd = folder / "-odd 1.mov";
  EXPECT_THAT(received, ElementsAre("", odd, "itpc://h/f", odd, ""));
}

TEST_F(SingleInstanceTest, WhatACrashedProcessLeftIsTakenOverAndAHangingOneIsGivenUp) {
  const auto crashed = start({"/x"});
  ASSERT_EQ(roleOf(*crashed), "0");
  ::kill(static_cast<pid_t>(crashed->processId()), SIGSTOP);
  SingleInstance instance(*loop, "/library");
  EXPECT_EQ(instance.claim({"/x"}, Seconds(0.3)), Role::Unreachable);
  crashed->kill();
  crashed->waitForFinished(5000);
  ASSERT_FALSE(socket().isEmpty());
  EXPECT_EQ(instance.claim({}, Seconds(2)), Role::First);
  receive(instance);
  const auto next = start({"/y"});
  EXPECT_EQ(roleOf(*next), "1");
  next->waitForFinished(5000);
  loop->runUntilIdle();
  EXPECT_THAT(received, ElementsAre("token 7", "/y"));
}

TEST_F(SingleInstanceTest, OfManyStartsAtOnceOneIsFirst) {
  std::vector<std::unique_ptr<QProcess>> processes;
  for (int i = 0; i < 4; ++i) processes.push_back(start({"/x"}));
  std::string roles;
  for (const auto& process : processes) roles += roleOf(*process);
  std::ranges::sort(roles);
  EXPECT_EQ(roles, "0111");
  for (const auto& process : processes) process->kill(), process->waitForFinished(5000);
}

TEST_F(SingleInstanceTest, BrokenPeersAreDismissedWithoutAnswer) {
  SingleInstance first(*loop, "/library");
  ASSERT_EQ(first.claim({}), Role::First);
  receive(first);
  const QByteArray good = frameOf({{"/a"}, "t"});
  QByteArray huge = good, unfinished = good;
  huge[4] = '\x7f';
  unfinished[6] = '\x7f';
  for (const QByteArray& bytes : {QByteArray("GET / HTTP/1.1"), huge, good + "more", frameOf({{"a"}, ""}),
                                  good.chopped(1) + "x", QByteArray("CWI1\0\0\0\0", 8)}) {
    QLocalSocket peer;
    peer.connectToServer(socket());
    peer.write(bytes);
    EXPECT_TRUE(QTest::qWaitFor([&] { return peer.state() == QLocalSocket::UnconnectedState; }, 2000));
    EXPECT_EQ(peer.bytesAvailable(), 0) << bytes.toStdString();
  }
  // One who keeps silent, and many of them, keep nobody else from coming.
  std::vector<std::unique_ptr<QLocalSocket>> silent;
  for (int i = 0; i < 20; ++i) {
    silent.push_back(std::make_unique<QLocalSocket>());
    silent.back()->connectToServer(socket());
    silent.back()->write(unfinished);
  }
  QTest::qWait(50);
  EXPECT_THAT(received, IsEmpty());
  QLocalSocket peer;
  peer.connectToServer(socket());
  peer.write(good);
  EXPECT_TRUE(QTest::qWaitFor([&] { return peer.bytesAvailable() == 1; }, 2000));
  loop->runUntilIdle();
  EXPECT_THAT(received, ElementsAre("t", "/a"));
}

}  // namespace
}  // namespace clipwave::testing
