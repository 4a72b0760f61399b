// Watches what the selected records of a list have in common under one key.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/appkit/ArrayController.h"

namespace clipwave {

// The controller must outlive it.
class SelectedValue {
 public:
  // `changed` is called after other records are selected and after the key changes in one of them; for a
  // change in bulk once, at its end.
  SelectedValue(ArrayController& controller, std::string key, std::function<void()> changed);
  SelectedValue(const SelectedValue&) = delete;
  SelectedValue& operator=(const SelectedValue&) = delete;

  // The value that all selected records share; absent for no selection or different values.
  Value value() const { return controller_.selection().value(key_); }
  bool differs() const { return controller_.selection().state(key_) == Selection::State::MultipleValues; }
  bool hasSelection() const { return !controller_.selectionIndexes().empty(); }
  // A user's edit, as Selection::commitValue.
  Validation commit(const Value& value) { return controller_.selection().commitValue(key_, value); }
  // The program's, as Selection::setValue.
  void set(const Value& value) { controller_.selection().setValue(key_, value); }

 private:
  void selectionChanged();
  void valueChanged();

  ArrayController& controller_;
  std::string key_;
  std::function<void()> changed_;
  bool isStale_ = false;  // something changed that was not told yet
  Observation selectionObservation_;
  Observation bulkChangeObservation_;
  std::vector<Observation> valueObservations_;  // of each selected record
};

}  // namespace clipwave
