// The user's settings with the initial values that stand behind them, kept as a property list on disk.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/foundation/Error.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Observation.h"
#include "platform/foundation/Value.h"

namespace clipwave {

// All reads go through value(): this process's own value, else the user's, else the initial one, else absent.
class UserDefaultsController {
 public:
  // Reads the user's values from the property list at `path`; a file that does not exist is an empty set. A
  // file that cannot be read is told by loadError(): the initial values then serve alone, and nothing is
  // written over the file.
  UserDefaultsController(FileManager& files, std::string path);

  const std::optional<Error>& loadError() const { return loadError_; }
  const std::string& path() const { return path_; }

  // Replaces the whole table of initial values.
  void setInitialValues(Dictionary values);
  const Dictionary& initialValues() const { return initialValues_; }

  // Values given for this process only: they win over the user's own and are never written.
  void setArgumentValues(Dictionary values) { argumentValues_ = std::move(values); }

  Value value(std::string_view key) const;
  std::string string(std::string_view key) const { return std::string(value(key).stringValue()); }
  bool boolean(std::string_view key) const { return value(key).boolValue(); }

  // Sets the user's value, or removes it when absent, and writes the file at once, all or nothing. On failure
  // the value stays as it was, in memory and on disk. What other processes have set in the file meanwhile is
  // kept, and taken over.
  Result<void> setValue(std::string_view key, Value value);
  bool isSetByUser(std::string_view key) const { return userValues_.contains(key); }
  // Every key that has a value, with the value that counts.
  Dictionary allValues() const;

  // Called after the value of `key` changed, by a setValue or by new initial values.
  Observation observe(std::string_view key, std::function<void()> function);

 private:
  // Puts `values` in the place of one of the tables and tells the observers of what counts differently then.
  void replaceAndTell(Dictionary& table, Dictionary values);

  FileManager& files_;
  std::string path_;
  std::optional<Error> loadError_;
  Dictionary argumentValues_;
  Dictionary initialValues_;
  Dictionary userValues_;
  std::map<std::string, Observers<>, std::less<>> observers_;
};

}  // namespace clipwave
