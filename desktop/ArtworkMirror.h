// Shows the artwork of what is selected in a list.
#pragma once

#include <QObject>
#include <string>

#include "platform/appkit/SelectedValue.h"
#include "platform/coredata/ManagedObjectContext.h"

namespace clipwave {

class ArtworkWell;

class ArtworkMirror final : public QObject {
  Q_OBJECT

 public:
  // Under `key` the list's records have an address, or an image. Lives with the widget, which the list must
  // outlive.
  ArtworkMirror(ArtworkWell& widget, ArrayController& list, std::string key);

 private:
  void refresh();

  ArtworkWell& widget_;
  SelectedValue selected_;
  Observation changes_;
};

}  // namespace clipwave
