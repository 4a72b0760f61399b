// Two lists over a store in memory: channels by title, and the selected channel's episodes, newest first.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/ArrayController.h"
#include "platform/coredata/ManagedObjectContext.h"
#include "platform/foundation/FileManager.h"

namespace clipwave {

struct SmallLibrary {
  SmallLibrary() : loop(makeRunLoop(clock)), files(makeFileManager()) {
    addEntity("Channel", {{.name = "vcTitle", .validator = refuseTitle},
                          {.name = "children",
                           .type = PropertyType::ToMany,
                           .destination = "Vodcast",
                           .inverse = "parent",
                           .deleteRule = DeleteRule::Cascade}});
    addEntity(
        "Vodcast",
        {{.name = "vcTitle"},
         {.name = "vcPublishDate", .type = PropertyType::Date},
         {.name = "parent", .type = PropertyType::ToOne, .destination = "Channel", .inverse = "children"}});
    context = std::make_unique<ManagedObjectContext>(
        std::make_unique<PersistentStoreCoordinator>(model, *files), *loop);
    channels.setManagedObjectContext(context.get());
    episodes.setManagedObjectContext(context.get());
    episodes.bindContentToSelectionOf(channels, "children");
    channels.setSortDescriptors({{"vcTitle", true}});
    episodes.setSortDescriptors({{"vcPublishDate", false}});
  }

  // "silent" is refused without an error, "bad" with one; "  x" becomes "x".
  static Validation refuseTitle(ManagedObject&, Value& proposed) {
    ++validations();
    if (proposed.stringValue() == "silent") return Validation::refused();
    if (proposed.stringValue() == "bad") return Validation::refused(cocoaError(1024, "A bad title."));
    if (proposed.stringValue().starts_with("  ")) proposed = Value(proposed.stringValue().substr(2));
    return Validation::ok();
  }
  static int& validations() {
    static int count = 0;
    return count;
  }

  // Records that stand in no list yet.
  ManagedObject* channel(std::string_view title) {
    ManagedObject* const record = context->insertNewObject("Channel");
    record->setValue("vcTitle", title);
    return record;
  }
  ManagedObject* episode(std::string_view title, int day, ManagedObject* parent = nullptr) {
    ManagedObject* const record = context->insertNewObject("Vodcast");
    record->setValue("vcTitle", title);
    record->setValue("vcPublishDate", Date::fromSeconds(day * 86'400));
    record->setValue("parent", parent);
    return record;
  }
  // Channels A and B with three episodes each: a1, a2, a3 and b1, b2, b3, the third the newest. A is
  // selected.
  void fill() {
    for (const std::string name : {"A", "B"}) {
      ManagedObject* const parent = channel(name);
      for (int day = 1; day <= 3; ++day) {
        const auto letter = static_cast<char>(name[0] + 32);
        episode(letter + std::to_string(day), day, parent);
      }
    }
    channels.fetch();
    endEvent();
    context->undoManager().removeAllActions();
  }
  void endEvent() { loop->runUntilIdle(); }

  static std::string titles(const std::vector<ManagedObject*>& records) {
    std::string text;
    for (ManagedObject* record : records) {
      if (!text.empty()) text += " ";
      const Value title = record->value("vcTitle");
      text += title.isNull() ? "-" : title.stringValue();
    }
    return text;
  }

  void addEntity(std::string name, std::vector<PropertyDescription> properties) {
    const auto make = [](const EntityDescription& entity) { return std::make_shared<ManagedObject>(entity); };
    model.addEntity(std::make_unique<EntityDescription>(std::move(name), make, std::move(properties)));
  }

  TestClock clock;
  std::unique_ptr<RunLoop> loop;
  std::unique_ptr<FileManager> files;
  ManagedObjectModel model;
  std::unique_ptr<ManagedObjectContext> context;
  ArrayController channels{"Channel"};
  ArrayController episodes{"Vodcast"};
};

}  // namespace clipwave
