#include "tests/support/FakeDotMac.h"

namespace clipwave::testing {

class FakeDotMac::Transaction final : public DMTransaction, public std::enable_shared_from_this<Transaction> {
 public:
  Transaction(FakeDotMac& kit, std::shared_ptr<DMTransactionDelegate> delegate)
      : kit_(kit), delegate_(std::move(delegate)) {}

  std::int64_t bytesTransferred() const override { return transferred; }
  std::int64_t contentLength() const override { return length; }
  int errorType() const override { return errorType_; }
  Value result() const override { return answer; }
  void abort() override { end(&DMTransactionDelegate::transactionAborted, {}); }

  // Stores the file, or fails.
  void finish() {
    const auto failing = kit_.failingUploads.find(path);
    errorType_ = failing != kit_.failingUploads.end() ? failing->second : source ? 0 : kDMInvalidParameter;
    for (const std::string& component : pathComponents(path))
      if (component == "." || component == "..") errorType_ = kDMInvalidParameter;
    const auto there = kit_.disk.find(path);
    if (errorType_ == 0 && there != kit_.disk.end() && !there->second) errorType_ = kDMResourceExists;
    const auto parent = kit_.disk.find(stringByDeletingLastPathComponent(path));
    if (errorType_ == 0 && (parent == kit_.disk.end() || parent->second)) errorType_ = kDMResourceNotFound;
    if (errorType_ != 0) return end(&DMTransactionDelegate::transactionHadError, {});
    transferred = length;
    end(&DMTransactionDelegate::transactionSuccessful, source);
  }

  std::string path;
  std::optional<std::string> source;
  std::int64_t transferred = 0;
  std::int64_t length = 0;
  Value answer;

 private:
  void end(void (DMTransactionDelegate::*how)(DMTransaction&), std::optional<std::string> stored) {
    if (isOver_) return;
    isOver_ = true;
    if (kit_.upload_.get() == this) kit_.upload_.reset();
    if (stored) kit_.disk[path] = std::move(stored);
    kit_.runLoop_.performLater([self = shared_from_this(), how] {
      const auto delegate = std::exchange(self->delegate_, nullptr);
      if (delegate) ((*delegate).*how)(*self);
    });
  }

  FakeDotMac& kit_;
  std::shared_ptr<DMTransactionDelegate> delegate_;
  int errorType_ = 0;
  bool isOver_ = false;
};

class FakeDotMac::Account final : public DMMemberAccount {
 public:
  Account(FakeDotMac& kit, std::string name) : kit_(kit), name_(std::move(name)) {}
  void setIsSynchronous(bool) override {}
  std::string name() const override { return name_; }
  int validateCredentials() override { return kit_.credentials; }
  std::shared_ptr<DMTransaction> daysLeftUntilExpiration() override {
    auto transaction = std::make_shared<Transaction>(kit_, nullptr);
    transaction->answer = kit_.daysLeft;
    return transaction;
  }
  void upgradeAccount() override { kit_.openedPages.emplace_back("renewal"); }

 private:
  FakeDotMac& kit_;
  std::string name_;
};

class FakeDotMac::Session final : public DMiDiskSession {
 public:
  explicit Session(FakeDotMac& kit) : kit_(kit) {}
  void setTransactionDelegate(std::shared_ptr<DMTransactionDelegate> delegate) override {
    delegate_ = std::move(delegate);
  }
  bool fileExistsAtPath(std::string_view path) override { return kit_.disk.contains(placeOf(path)); }
  bool fileExistsAtPath(std::string_view path, bool& isDirectory) override {
    const auto found = kit_.disk.find(placeOf(path));
    if (found == kit_.disk.end()) return false;
    isDirectory = !found->second;
    return true;
  }
  bool createDirectoryAtPath(std::string_view path) override {
    const std::string place = placeOf(path);
    const auto parent = kit_.disk.find(stringByDeletingLastPathComponent(place));
    if (!kit_.canCreateDirectories || parent == kit_.disk.end() || parent->second) return false;
    return kit_.disk.emplace(place, std::nullopt).second;
  }
  std::shared_ptr<DMTransaction> putLocalFileAtPath(std::string_view localPath,
                                                    std::string_view toPath) override {
    auto transaction = std::make_shared<Transaction>(kit_, delegate_);
    transaction->path = placeOf(toPath);
    if (const auto content = kit_.files_->contentsAtPath(localPath)) transaction->source = *content;
    transaction->length = static_cast<std::int64_t>(transaction->source.value_or("").size());
    if (kit_.uploadsWait) {
      kit_.upload_ = transaction;
    } else {
      kit_.runLoop_.performLater([transaction] { transaction->finish(); });
    }
    return transaction;
  }

 private:
  FakeDotMac& kit_;
  std::shared_ptr<DMTransactionDelegate> delegate_;
};

void FakeDotMac::finishUpload() {
  if (const auto upload = std::exchange(upload_, nullptr)) upload->finish();
}

void FakeDotMac::setProgress(std::int64_t transferred, std::int64_t length) {
  if (!upload_) return;
  upload_->transferred = transferred;
  upload_->length = length;
}

std::shared_ptr<DMMemberAccount> FakeDotMac::accountFromPreferencesWithApplicationID(std::string_view id) {
  applicationID = id;
  return member ? std::make_shared<Account>(*this, *member) : nullptr;
}

std::unique_ptr<DMiDiskSession> FakeDotMac::iDiskSessionWithCredentials(
    const std::shared_ptr<DMMemberAccount>&) {
  return std::make_unique<Session>(*this);
}

}  // namespace clipwave::testing
