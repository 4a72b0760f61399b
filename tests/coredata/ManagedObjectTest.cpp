#include "platform/coredata/ManagedObject.h"

#include "tests/coredata/TestLibrary.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class ManagedObjectTest : public LibraryTest {
 protected:
  void SetUp() override {
    open();
    channel = &insert("Channel", "A");
    other = &insert("Channel", "B");
    episode = &insertEpisode(*channel, "one");
  }
  ManagedObject* channel = nullptr;
  ManagedObject* other = nullptr;
  ManagedObject* episode = nullptr;
};

TEST_F(ManagedObjectTest, TellsTheObserversOfAKeyAndOfEveryKeyThatDependsOnItOnce) {
  std::vector<std::string> told;
  std::vector<Observation> observations;
  for (const char* key : {"vcPath", "mediaURL", "mediaFullURL", "vcTitle"})
    observations.push_back(episode->observe(key, [&told, key] { told.emplace_back(key); }));
  episode->setPrimitiveValue("vcPath", "/b.mov");
  EXPECT_THAT(told, UnorderedElementsAre("vcPath", "mediaURL", "mediaFullURL"));
  EXPECT_EQ(told.front(), "vcPath");
  told.clear();
  observations.clear();
  episode->setValue("vcTitle", "loud");
  EXPECT_TRUE(told.empty());
}

TEST_F(ManagedObjectTest, KeepsBothSidesOfARelationshipInStepAndTellsBoth) {
  std::vector<std::string> told;
  const auto a = channel->observe("children", [&told] { told.emplace_back("A"); });
  const auto e = episode->observe("parent", [&told] { told.emplace_back("parent"); });
  other->addObject(*episode, "children");
  EXPECT_THAT(told, UnorderedElementsAre("A", "parent"));
  EXPECT_EQ(episode->relatedObject("parent"), other);
  EXPECT_TRUE(channel->relatedObjects("children").empty());
}

TEST_F(ManagedObjectTest, ValidatesTypesAndThenAsksTheKeysOwnRule) {
  const std::pair<const char*, Value> wrongs[] = {
      {"vcTitle", 1}, {"protocolTag", std::int64_t{1} << 31}, {"vcPublish", 1}, {"image", episode}};
  for (const auto& [key, wrong] : wrongs) {
    Value proposed = wrong;
    const Validation result = channel->validateValue(key, proposed);
    EXPECT_FALSE(result.valid) << key;
    EXPECT_EQ(result.error.value().code, kKeyValueValidationError);
    EXPECT_THAT(result.error->localizedDescription, HasSubstr(key));
    proposed = Value();
    EXPECT_TRUE(channel->validateValue(key, proposed).valid) << key;
  }
  EXPECT_FALSE(channel->commitValue("vcTitle", "silent").error.has_value());
  EXPECT_EQ(text(*channel, "vcTitle"), "A");
  EXPECT_TRUE(channel->commitValue("vcTitle", "shout").valid);
  EXPECT_EQ(text(*channel, "vcTitle"), "SHOUT");
}

TEST_F(ManagedObjectTest, AnObserverMayDeleteTheRecordThatItIsToldAbout) {
  context->undoManager().disableUndoRegistration();
  const auto first = episode->observe("vcTitle", [this] { context->deleteObject(*episode); });
  int told = 0;
  const auto second = episode->observe("vcTitle", [&told] { ++told; });
  episode->setValue("vcTitle", "gone");
  EXPECT_EQ(context->countOfEntity("Vodcast"), 0U);
  EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace clipwave
