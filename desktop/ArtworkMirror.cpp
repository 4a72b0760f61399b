#include "desktop/ArtworkMirror.h"

#include "desktop/ArtworkWell.h"
#include "desktop/Text.h"
#include "model/LibraryModel.h"

namespace clipwave {

ArtworkMirror::ArtworkMirror(ArtworkWell& widget, ArrayController& list, std::string key)
    : QObject(&widget), widget_(widget), list_(list), selected_(list, std::move(key), [this] { refresh(); }) {
  refresh();
}

void ArtworkMirror::refresh() {
  // The image's own address may be edited while its channel stays selected. The library may be there only
  // after the window.
  ManagedObjectContext* context = list_.managedObjectContext();
  if (context != nullptr && !isObserving_) {
    isObserving_ = true;
    changes_ = context->observeChanges([this](const ContextChange& change) {
      if (change.object->entity().name() == kImageEntity && change.object == selected_.value().recordValue())
        refresh();
    });
  }
  const Value value = selected_.value();
  ManagedObject* record = value.recordValue();
  widget_.setAddress(toQString((record != nullptr ? record->value("url") : value).stringValue()));
}

}  // namespace clipwave
