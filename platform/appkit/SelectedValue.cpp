#include "platform/appkit/SelectedValue.h"

#include <utility>

namespace clipwave {

SelectedValue::SelectedValue(ArrayController& controller, std::string key, std::function<void()> changed)
    : controller_(controller),
      key_(std::move(key)),
      changed_(std::move(changed)),
      selectionObservation_(controller.observeSelectedObjects([this] {
        selectionChanged();
        changed_();
      })),
      bulkChangeObservation_(controller.observeEndOfBulkChange([this] {
        if (isStale_) valueChanged();
      })) {
  selectionChanged();
}

void SelectedValue::selectionChanged() {
  valueObservations_.clear();
  for (ManagedObject* record : controller_.selectedObjects()) {
    valueObservations_.push_back(record->observe(key_, [this] { valueChanged(); }));
  }
}

void SelectedValue::valueChanged() {
  // What many records have in common is found once, not at each one's change.
  isStale_ = controller_.isInBulkChange();
  if (!isStale_) changed_();
}

}  // namespace clipwave
