// Two lists over a store in memory: channels by title, and the selected channel's episodes, newest first.
#pragma once

#include "platform/appkit/ArrayController.h"
#include "tests/coredata/TestLibrary.h"

namespace clipwave {

class SmallLibrary : public testing::LibraryTest {
 protected:
  SmallLibrary() {
    context = std::make_unique<ManagedObjectContext>(
        std::make_unique<PersistentStoreCoordinator>(model, files), *loop);
    channels.setManagedObjectContext(context.get());
    episodes.setManagedObjectContext(context.get());
    episodes.bindContentToSelectionOf(channels, "children");
    channels.setSortDescriptors({{"vcTitle", true}});
    episodes.setSortDescriptors({{"vcPublishDate", false}});
  }

  // Records that stand in no list yet.
  ManagedObject* channel(std::string_view title) { return &insert("Channel", title); }
  ManagedObject* episode(std::string_view title, int day, ManagedObject* parent = nullptr) {
    ManagedObject& record = insert("Vodcast", title);
    record.setValue("vcPublishDate", Date::fromSeconds(day * 86'400));
    record.setValue("parent", parent);
    return &record;
  }
  // Channels A and B with three episodes each: a1, a2, a3 and b1, b2, b3, the third the newest. A is
  // selected.
  void fill() {
    for (const std::string name : {"A", "B"}) {
      ManagedObject* const parent = channel(name);
      for (int day = 1; day <= 3; ++day)
        episode(static_cast<char>(name[0] + 32) + std::to_string(day), day, parent);
    }
    channels.fetch();
    endPass();
    context->undoManager().removeAllActions();
  }

  static std::string titles(const std::vector<ManagedObject*>& records) {
    std::string text;
    for (ManagedObject* record : records)
      text += (text.empty() ? "" : " ") + record->value("vcTitle").optionalString().value_or("-");
    return text;
  }

  ArrayController channels{"Channel"};
  ArrayController episodes{"Vodcast"};
};

}  // namespace clipwave
