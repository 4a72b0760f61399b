#include "platform/foundation/UserDefaultsController.h"

#include <utility>
#include <vector>

#include "platform/foundation/FolderCreation.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/PropertyList.h"

namespace clipwave {
namespace {

Value lookUp(const Dictionary& values, std::string_view key) {
  const auto found = values.find(key);
  return found != values.end() ? found->second : Value();
}

Result<Dictionary> readDictionary(FileManager& files, const std::string& path) {
  auto data = files.contentsAtPath(path);
  if (!data) {
    if (data.error().code == kFileReadNoSuchFileError) return Dictionary();
    return data.error();
  }
  auto list = propertyListFromData(*data);
  if (list && list->kind() == Value::Kind::Dictionary) return list->dictionaryValue();
  const std::string reason =
      list ? localized("Files", "it holds no dictionary.") : list.error().localizedDescription;
  return cocoaError(
      kPropertyListReadCorruptError,
      filledIn(localized("Files", "The settings in “%1” could not be read: %2"), {path, reason}));
}

}  // namespace

UserDefaultsController::UserDefaultsController(FileManager& files, std::string path)
    : files_(files), path_(std::move(path)) {
  auto read = readDictionary(files_, path_);
  if (read) {
    userValues_ = std::move(*read);
  } else {
    loadError_ = read.error();
  }
}

void UserDefaultsController::setInitialValues(Dictionary values) {
  replaceAndTell(initialValues_, std::move(values));
}

void UserDefaultsController::replaceAndTell(Dictionary& table, Dictionary values) {
  std::vector<std::pair<std::string, Value>> before;
  for (const auto& [key, observers] : observers_) before.emplace_back(key, value(key));
  table = std::move(values);
  // By the copied keys: an observer may begin new observations.
  for (const auto& [key, old] : before) {
    if (value(key) != old) observers_[key].call();
  }
}

Value UserDefaultsController::value(std::string_view key) const {
  if (const auto argument = argumentValues_.find(key); argument != argumentValues_.end())
    return argument->second;
  const auto found = userValues_.find(key);
  return found != userValues_.end() ? found->second : lookUp(initialValues_, key);
}

Result<void> UserDefaultsController::setValue(std::string_view key, Value newValue) {
  if (loadError_) return *loadError_;
  // Read anew: another process may have set its own keys since.
  auto changed = readDictionary(files_, path_);
  if (!changed) return changed.error();
  if (newValue.isNull()) {
    changed->erase(std::string(key));
  } else {
    changed->insert_or_assign(std::string(key), std::move(newValue));
  }
  auto folder = createFolderWithParents(files_, stringByDeletingLastPathComponent(path_), 0700);
  if (!folder) return folder;
  auto written = files_.writeAtomically(dataFromPropertyList(*changed), path_);
  if (!written) return written;
  replaceAndTell(userValues_, std::move(*changed));
  return {};
}

Dictionary UserDefaultsController::allValues() const {
  Dictionary all = argumentValues_;
  all.insert(userValues_.begin(), userValues_.end());
  all.insert(initialValues_.begin(), initialValues_.end());
  return all;
}

Observation UserDefaultsController::observe(std::string_view key, std::function<void()> function) {
  return observers_.try_emplace(std::string(key)).first->second.add(std::move(function));
}

}  // namespace clipwave
