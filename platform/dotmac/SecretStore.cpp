#include "platform/dotmac/SecretStore.h"

#include <utility>

#include "platform/dotmac/SecretService.h"
#include "platform/foundation/FolderCreation.h"
#include "platform/foundation/PropertyList.h"

namespace clipwave {
namespace {

// Passwords in a property list, by address and member.
class PasswordFile {
 public:
  PasswordFile(FileManager& files, std::string path) : files_(files), path_(std::move(path)) {}

  bool isPossible() const { return !path_.empty(); }

  Result<std::optional<std::string>> password(const SecretAccount& account) {
    const auto kept = read();
    if (!kept) return kept.error();
    const auto found = kept->find(keyOf(account));
    if (found == kept->end()) return std::optional<std::string>();
    return std::optional(std::string(found->second.dataValue()));
  }

  Result<void> setPassword(const SecretAccount& account, std::string_view password) {
    auto kept = read();
    if (!kept) return kept.error();
    if (password.empty() && !kept->contains(keyOf(account))) return {};
    kept->erase(keyOf(account));
    if (!password.empty()) kept->emplace(keyOf(account), Value::data(password));
    if (kept->empty()) return remove(path_);
    auto done = createFolderWithParents(files_, stringByDeletingLastPathComponent(path_), 0700);
    // Written in place, a file that others may read would keep its permissions, and a link would lead the
    // passwords elsewhere. The old ones go when the new ones are there.
    const std::string written = path_ + ".new";
    if (done) done = remove(written);
    if (done) done = files_.writeAtomically(dataFromPropertyList(*kept), written, 0600);
    if (done) done = remove(path_);
    return done ? files_.movePath(written, path_) : done;
  }

 private:
  static std::string keyOf(const SecretAccount& account) { return account.address + " " + account.member; }

  // Of a link, the link.
  Result<void> remove(const std::string& path) {
    return files_.fileAttributesAtPath(path, false) ? files_.removeFileAtPath(path) : Result<void>();
  }

  Result<Dictionary> read() {
    if (!isPossible() || !files_.fileExistsAtPath(path_)) return Dictionary();
    const auto data = files_.contentsAtPath(path_);
    if (!data) return data.error();
    const auto list = propertyListFromData(*data);
    if (!list) return list.error();
    return list->dictionaryValue();
  }

  FileManager& files_;
  std::string path_;
};

class RealSecretStore final : public SecretStore {
 public:
  RealSecretStore(FileManager& files, std::string filePath)
      : service_(makeSecretService()), file_(files, std::move(filePath)) {}

  // What the file holds is newer than what the service holds: it is written when the service fails.
  Result<std::optional<std::string>> password(const SecretAccount& account) override {
    auto filed = file_.password(account);
    if (filed.ok() && filed->has_value()) return filed;
    auto kept = service_->password(account);
    if (kept.ok() && kept->has_value()) return kept;
    if (!filed) return filed;
    return !kept && kept.error().code != kNoSecretService ? kept : filed;
  }

  Result<void> setPassword(const SecretAccount& account, std::string_view password) override {
    const auto kept = service_->setPassword(account, password);
    if (kept.ok() || (password.empty() && kept.error().code == kNoSecretService))
      return file_.setPassword(account, {});
    if (!password.empty() && file_.isPossible()) return file_.setPassword(account, password);
    return kept;
  }

 private:
  std::unique_ptr<SecretStore> service_;
  PasswordFile file_;
};

}  // namespace

std::unique_ptr<SecretStore> makeSecretStore(FileManager& files, std::string filePath) {
  return std::make_unique<RealSecretStore>(files, std::move(filePath));
}

}  // namespace clipwave
