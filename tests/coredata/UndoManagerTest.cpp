#include "platform/coredata/UndoManager.h"

#include <random>

#include "tests/coredata/TestLibrary.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class UndoManagerTest : public LibraryTest {
 protected:
  void SetUp() override { open(); }
  UndoManager& undo() { return context->undoManager(); }
  // Every record with all that it holds, lists in their order.
  std::string state() {
    std::string text;
    for (const auto& entity : model.entities()) {
      for (ManagedObject* object : fetch({.entityName = entity->name()})) {
        text += "\n" + entity->name() + std::to_string(object->objectID());
        for (const auto& property : entity->properties()) {
          const Value& value = object->primitiveValue(property.name);
          text += " " + std::string(value.stringValue()) + std::to_string(value.integerValue());
          if (value.recordValue() != nullptr) text += "=" + std::to_string(value.recordValue()->objectID());
          for (const ManagedObject* other : object->relatedObjects(property.name))
            text += "," + std::to_string(other->objectID());
        }
      }
    }
    return text;
  }
};

TEST_F(UndoManagerTest, RandomEditsAreTakenBackAndRepeatedExactly) {
  std::mt19937 random(11);
  const auto any = [&](const char* entity) -> ManagedObject* {
    const auto all = fetch({.entityName = entity});
    return all.empty() ? nullptr : all[random() % all.size()];
  };
  const std::function<void()> edits[] = {
      [&] { insert("Channel", "new"); },
      [&] { insert("Image"); },
      [&] { insertEpisode(*any("Channel"), std::to_string(random() % 100)); },
      [&] { any("Vodcast")->setValue("parent", random() % 4 == 0 ? nullptr : any("Channel")); },
      [&] { any("Channel")->addObject(*any("Vodcast"), "children"); },
      [&] { any("Channel")->setValue("vcTitle", std::to_string(random() % 3)); },
      [&] { any("Channel")->setValue("image", any("Image")); },
      [&] { any("Channel")->addObject(*any("Image"), "pictures"); },
      [&] { any("Channel")->removeObject(*any("Image"), "pictures"); },
      [&] { any("Image")->setValue("twin", any("Image")); },
      [&] { context->deleteObject(*any(random() % 3 == 0 ? "Channel" : "Vodcast")); },
      [&] { context->deleteObject(*any("Image")); },
  };
  std::vector<std::string> states{state()};
  for (int pass = 0; pass < 400; ++pass) {
    undo().beginUndoGrouping();
    for (std::size_t edit = random() % 4; edit > 0; --edit) {
      for (const char* needed : {"Channel", "Image", "Vodcast"})
        if (any(needed) == nullptr) insert(needed);
      edits[random() % std::size(edits)]();
    }
    undo().endUndoGrouping();
    states.push_back(state());
  }
  for (std::size_t i = states.size() - 1; i-- > 0;) {
    undo().undo();
    ASSERT_EQ(state(), states[i]) << i;
  }
  EXPECT_FALSE(undo().canUndo());
  for (std::size_t i = 1; i < states.size(); ++i) {
    undo().redo();
    ASSERT_EQ(state(), states[i]) << i;
  }
}

TEST_F(UndoManagerTest, UndoingClosesTheOpenGroupAndALateClosingSparesTheNext) {
  ManagedObject& channel = insert("Channel", "A");
  endPass();
  channel.setValue("vcTitle", "B");  // its closing is waiting in the run loop
  context->undo();
  channel.setValue("vcTitle", "C");
  EXPECT_FALSE(undo().canRedo());
  undo().beginUndoGrouping();
  endPass();
  channel.setValue("vcURL", "http://c/");
  undo().endUndoGrouping();
  context->undo();
  EXPECT_TRUE(channel.value("vcURL").isNull());
  EXPECT_EQ(text(channel, "vcTitle"), "C");
}

}  // namespace
}  // namespace clipwave
