#include "platform/dotmac/SecretStore.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>

#include "tests/support/FakeFileManager.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using namespace testing;

const SecretAccount kAnn{"https://disk.example/ann", "ann"};
const SecretAccount kBob{"https://disk.example/ann", "bob"};

// A session bus with an unlocked keyring on it, both of the test's own.
class Keyring {
 public:
  explicit Keyring(const TemporaryFolder& folder) {
    const std::string script = "exec 2>/dev/null; cd '" + folder.path() +
                               "'; export HOME=$PWD XDG_DATA_HOME=$PWD/data XDG_RUNTIME_DIR=$PWD;"
                               // The daemon answers by the time its command returns, and ends with the bus.
                               "exec timeout 60 dbus-run-session -- sh -c 'printf \"\\n\" |"
                               "gnome-keyring-daemon --unlock --components=secrets >&2;"
                               "echo $$ $DBUS_SESSION_BUS_ADDRESS; exec sleep 60'";
    output_ = ::popen(script.c_str(), "re");
    char address[256] = "";
    if (std::fscanf(output_, "%d %255s", &process_, address) != 2) std::abort();
    bus_.emplace("DBUS_SESSION_BUS_ADDRESS", address);
  }
  ~Keyring() {
    ::kill(process_, SIGTERM);
    std::fclose(output_);
  }
  Keyring(const Keyring&) = delete;
  Keyring& operator=(const Keyring&) = delete;

 private:
  std::FILE* output_;
  int process_ = 0;
  std::optional<EnvironmentVariable> bus_;
};

class SecretStoreTest : public ::testing::Test {
 protected:
  std::string password(const SecretAccount& account) const {
    const auto kept = makeSecretStore(*files_, path_)->password(account);
    return kept ? kept->value_or("none") : kept.error().localizedDescription;
  }
  bool setPassword(const SecretAccount& account, std::string_view password) const {
    return makeSecretStore(*files_, path_)->setPassword(account, password).ok();
  }
  unsigned mode() const {
    struct stat status {};
    return ::lstat(path_.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
  }
  const TemporaryFolder folder_;
  const std::unique_ptr<FakeFileManager> files_ = std::make_unique<FakeFileManager>();
  const std::string path_ = folder_ / "config/Clipwave/password";
};

TEST_F(SecretStoreTest, WithoutASecretServiceAFileThatOnlyItsOwnerReadsServes) {
  const EnvironmentVariable noBus("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  EXPECT_EQ(password(kAnn), "none");
  EXPECT_TRUE(setPassword(kAnn, ""));
  EXPECT_EQ(mode(), 0U);
  folder_.write("elsewhere", "<plist><dict/></plist>");
  folder_.makeFolder("config/Clipwave");
  ASSERT_EQ(::symlink((folder_ / "elsewhere").c_str(), path_.c_str()), 0);
  const std::string odd = "p\xC3\xA4ss \x01<&>\"' w\xF6rd\n";
  ASSERT_TRUE(setPassword(kAnn, odd));
  EXPECT_EQ(mode(), 0600U);
  EXPECT_EQ(readFile(folder_ / "elsewhere"), "<plist><dict/></plist>");
  ASSERT_EQ(::chmod(path_.c_str(), 0644), 0);
  files_->fail("writeAtomically", "");
  EXPECT_FALSE(setPassword(kBob, "other"));
  files_->failNothing();
  ASSERT_TRUE(setPassword(kBob, "other"));
  EXPECT_EQ(mode(), 0600U);
  EXPECT_EQ(password(kAnn), odd);
  EXPECT_EQ(password(kBob), "other");
  EXPECT_TRUE(setPassword(kAnn, ""));
  EXPECT_EQ(password(kAnn), "none");
  EXPECT_TRUE(setPassword(kBob, ""));
  EXPECT_EQ(mode(), 0U);
  folder_.write("config/Clipwave/password", "no list");
  EXPECT_NE(password(kAnn), "none");
  EXPECT_FALSE(setPassword(kAnn, "lost otherwise"));
  EXPECT_EQ(readFile(path_), "no list");
}

TEST_F(SecretStoreTest, TheSecretServiceKeepsThePasswordAndTheFileGoes) {
  {
    const EnvironmentVariable noBus("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    ASSERT_TRUE(setPassword(kAnn, "from before"));
  }
  const TemporaryFolder session;
  const Keyring keyring(session);
  EXPECT_EQ(password(kAnn), "from before");
  const std::string word = "p\xC3\xA4ss <&>";
  ASSERT_TRUE(setPassword(kAnn, word));
  EXPECT_EQ(mode(), 0U);
  EXPECT_EQ(password(kAnn), word);
  EXPECT_EQ(password(kBob), "none");
  EXPECT_TRUE(setPassword(kAnn, ""));
  EXPECT_EQ(password(kAnn), "none");
}

}  // namespace
}  // namespace clipwave
