// Uploads to a member's iDisk, and the real kit with an iDisk on any server.
#pragma once

#include <string>
#include <vector>

#include "platform/dotmac/RealDotMacKit.h"
#include "tests/support/FakeSecretStore.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

// One upload, and how it ended.
class Upload {
 public:
  Upload(RunLoop& loop, DotMacKit& kit, const std::string& localPath, std::string_view toPath) : loop_(loop) {
    const auto account = kit.accountFromPreferencesWithApplicationID("????");
    const auto session = kit.iDiskSessionWithCredentials(account);
    session->setTransactionDelegate(words_);
    transaction = session->putLocalFileAtPath(localPath, toPath);
    words_->isStarted = true;
  }
  // The word about its end; "2 words" and the like unless there is exactly one.
  std::string ending(Seconds timeout = Seconds(60)) {
    turnUntil([this] { return !words_->words.empty(); }, timeout);
    for (int turns = 0; turns < 5; ++turns) loop_.runOnce(Seconds(0));
    return words_->words.size() == 1 ? words_->words[0] : std::to_string(words_->words.size()) + " words";
  }
  // Until so many bytes have gone out.
  void turnUntilSent(std::int64_t bytes) {
    turnUntil([&] { return transaction->bytesTransferred() >= bytes; }, Seconds(60));
  }

  std::shared_ptr<DMTransaction> transaction;

 private:
  struct Words final : DMTransactionDelegate {
    std::vector<std::string> words;
    bool isStarted = false;
    void add(const std::string& word) { words.push_back(isStarted ? word : word + " too early"); }
    void transactionSuccessful(DMTransaction&) override { add("successful"); }
    void transactionHadError(DMTransaction& failed) override { add(std::to_string(failed.errorType())); }
    void transactionAborted(DMTransaction&) override { add("aborted"); }
  };

  template <class Condition>
  void turnUntil(Condition condition, Seconds timeout) {
    const SystemClock clock;
    const Seconds end = clock.uptime() + timeout;
    while (!condition() && clock.uptime() < end) loop_.runOnce(Seconds(0.01));
  }

  RunLoop& loop_;
  std::shared_ptr<Words> words_ = std::make_shared<Words>();
};

// The member "ann" with the password "secret".
class MemberDisk {
 public:
  explicit MemberDisk(std::string address, HTTPClientOptions httpOptions = {}, Seconds cleanUp = Seconds(5)) {
    configure("dotMacMemberName", "ann");
    configure("dotMacAddress", address);
    secrets.passwords[{address, "ann"}] = "secret";
    http = makeHTTPClient(*loop, std::move(httpOptions));
    kit = makeDotMacKit({*loop, *http, *files, defaults, secrets, calendar, log, [](std::string_view) {}},
                        {.answerTimeout = Seconds(20), .cleanUpTimeout = cleanUp});
  }
  void configure(const std::string& key, Value value) {
    settings_[key] = std::move(value);
    defaults.setArgumentValues(settings_);
  }
  std::shared_ptr<DMMemberAccount> account() { return kit->accountFromPreferencesWithApplicationID("????"); }
  std::string upload(const std::string& localPath, std::string_view toPath) {
    return Upload(*loop, *kit, localPath, toPath).ending();
  }

  TemporaryFolder folder;
  SystemClock clock;
  TestClock calendar;  // what the kit takes for today
  std::unique_ptr<RunLoop> loop = makeRunLoop(clock);
  std::unique_ptr<FileManager> files = makeFileManager();
  UserDefaultsController defaults{*files, folder / "defaults.plist"};
  FakeSecretStore secrets;
  RecordingLog log;
  std::unique_ptr<HTTPClient> http;
  std::unique_ptr<DotMacKit> kit;

 private:
  Dictionary settings_;
};

}  // namespace clipwave::testing
