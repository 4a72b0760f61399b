#include "desktop/ArtworkMirror.h"

#include "desktop/ArtworkWell.h"
#include "desktop/Text.h"
#include "model/LibraryModel.h"

namespace clipwave {

ArtworkMirror::ArtworkMirror(ArtworkWell& widget, ArrayController& list, std::string key)
    : QObject(&widget),
      widget_(widget),
      selected_(list, std::move(key), [this] { refresh(); }),
      changes_(list.observeStore([this](const ContextChange& change) {
        // The image's own address may be edited while its channel stays selected.
        if (change.object->entity().name() == kImageEntity &&
            change.object == selected_.value().recordValue())
          refresh();
      })) {
  refresh();
}

void ArtworkMirror::refresh() {
  const Value value = selected_.value();
  ManagedObject* record = value.recordValue();
  widget_.setAddress(toQString((record != nullptr ? record->value("url") : value).stringValue()));
}

}  // namespace clipwave
