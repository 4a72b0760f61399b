// The model's pure rules: texts of sizes and durations, escaping, titles from file names, languages; and the
// tables shipped.
#include <gmock/gmock.h>

#include <algorithm>
#include <limits>

#include "model/Formatter.h"
#include "model/LanguageDataSource.h"
#include "model/MediaText.h"
#include "tests/support/FakeLibraryHost.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

TEST(MediaTextTest, DurationsAreCutToWholeSeconds) {
  EXPECT_EQ(durationText(3725.9), "01:02:05");
  EXPECT_EQ(durationText(59.99), "00:00:59");
  EXPECT_EQ(durationText(100 * 3600 + 61), "100:01:01");
  for (const double absurd : {-1.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(durationText(absurd), "00:00:00") << absurd;
}

TEST(MediaTextTest, UnitsChangeJustAboveAPowerOfTwo) {
  const auto shown = [](std::int64_t bytes) { return sizeText(bytes) + " " + std::string(sizeUnit(bytes)); };
  EXPECT_EQ(shown(0), "0.00 Bytes");
  EXPECT_EQ(shown(1'024), "1024.00 Bytes");
  EXPECT_EQ(shown(1'025), "1.00 KB");
  EXPECT_EQ(shown(1'610'612'736), "1.50 GB");
  EXPECT_EQ(shown(1'073'741'825), "1024.00 GB") << "single precision cannot tell it from the threshold";
}

TEST(MediaTextTest, ATypedSizeIsANumberInAUnit) {
  EXPECT_EQ(bytesFromText("2.5", "MB"), 2'621'440);
  EXPECT_EQ(bytesFromText(" 2.5 or so", ""), 2);
  EXPECT_EQ(bytesFromText("-.5", "KB"), -512);
  EXPECT_EQ(bytesFromText("3", "GB"), -1'073'741'824) << "what 32 bits give";
  for (const char* none : {"", "much", "-", ".", "1e99"}) EXPECT_EQ(bytesFromText(none, "MB"), 0);
}

TEST(FormatterTest, AURLFieldTakesNothingOrAnHTTPAddress) {
  TextField field;
  field.setValidator(Formatter::isValidObject);
  std::vector<std::string> taken;
  for (const char* text : {"http://h/x", "http://", "", "https://h", "HTTP://h", "ftp://h", " http://h"}) {
    field.edit(text);
    if (field.commitEditing()) taken.emplace_back(text);
  }
  EXPECT_THAT(taken, ElementsAre("http://h/x", "http://", ""));
}

// The resources as they are shipped.
TEST(ResourcesTest, TheTablesFitTheModel) {
  FakeLibraryHost host;
  const Bundle bundle(
      host.fileManager,
      findResourceFolder(host.fileManager, std::filesystem::read_symlink("/proc/self/exe").string()));
  const Dictionary defaults = bundle.dictionaryForResource("defaults");
  for (const char* key :
       {"defaultAuthor", "defaultLanguage", "defaultFilename", "defaultImageProperty", "defaultPodcastPrefix",
        "shouldCheckForUpdate", "updateURL", "minsplitview", "maxsplitfactor", "noConfirm"})
    EXPECT_TRUE(defaults.contains(key)) << key;
  const LanguageDataSource languages(bundle);
  EXPECT_TRUE(languages.codeForName(defaults.at("defaultLanguage").stringValue()));
  EXPECT_EQ(languages.nameForCode("en-us"), "English (United States)");
  EXPECT_TRUE(std::ranges::is_sorted(languages.display()));

  const auto mapsToText = [&](const char* table, std::string_view entityName) {
    const Dictionary mappings = bundle.dictionaryForResource(table);
    EXPECT_FALSE(mappings.empty()) << table;
    for (const auto& [element, key] : mappings) {
      const PropertyDescription* property = host.model->entity(entityName)->property(key.stringValue());
      ASSERT_NE(property, nullptr) << element;
      EXPECT_EQ(property->type, PropertyType::String) << element;
      EXPECT_EQ(property->storage, Storage::Stored) << element;
    }
  };
  mapsToText("vcmappings", kVodcastEntity);
  mapsToText("channelmappings", kChannelEntity);
  EXPECT_GT(bundle.infoDictionary().at("CFBundleVersion").doubleValue(), 0);
}

}  // namespace
}  // namespace clipwave
