#include "platform/coredata/XMLStore.h"

#include <limits>

#include "tests/coredata/TestLibrary.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

class XMLStoreTest : public LibraryTest {
 protected:
  // Opens a library with this content; the file must be left as it is when that fails.
  Result<void> openText(const std::string& content) {
    folder.write("Clipwave.xml", content);
    const Result<void> opened = tryToOpen();
    EXPECT_TRUE(opened || readFile(path) == content);
    return opened;
  }
  Result<void> openRecords(const std::string& records) {
    return openText("<library version=\"1.0\" next=\"100\">" + records + "</library>");
  }
};

TEST_F(XMLStoreTest, EveryTextAndValueComesBackAsItWas) {
  open();
  std::vector<std::string> texts = {"", " ", "\n \t", " lead and trail ", "a\r\nb\rc", "Grüße 🎬 日本", "-->"};
  for (const char* hard : {"<&>\"' ]]> &amp; &#13;", "bell\x07", "bad \xC3( \xFF\xED\xA0\x80", "\xEF\xBF\xBE",
                           "<![CDATA[x]]>", "\x7F"})
    texts.emplace_back(hard);
  texts.emplace_back("nul\0nul", 7);
  using Limits = std::numeric_limits<std::int64_t>;
  const std::int64_t dates[] = {
      0, 1, -1, 1'236'045'909'000'000, -62'167'219'200'000'001, Limits::max(), Limits::min()};
  ManagedObject& channel = insert("Channel");
  for (const std::string& each : texts) {
    ManagedObject& episode = insertEpisode(channel, "");
    episode.setValue("vcTitle", each);
    episode.setValue("alias", Value::data(each));
    episode.setValue("size", static_cast<int>(each.size()) - 5);
  }
  for (const std::int64_t date : dates) insert("Vodcast").setValue("vcPublishDate", Date{date});
  saveAndReopen();
  const auto read = fetch({.entityName = "Vodcast"});
  ASSERT_EQ(read.size(), texts.size() + std::size(dates));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(read[i]->value("vcTitle"), Value(texts[i])) << i;
    EXPECT_EQ(read[i]->value("alias"), Value::data(texts[i])) << i;
    EXPECT_EQ(read[i]->value("size"), Value(static_cast<int>(texts[i].size()) - 5));
  }
  for (std::size_t i = 0; i < std::size(dates); ++i)
    EXPECT_EQ(read[texts.size() + i]->value("vcPublishDate"), Value(Date{dates[i]})) << dates[i];
}

TEST_F(XMLStoreTest, WritesTheDocumentedText) {
  open();
  ManagedObject& channel = insert("Channel", "R & D");
  channel.setValue("protocolTag", -2);
  channel.setValue("lastBuildDate", Date{1'236'045'909'000'500});
  ManagedObject& image = insert("Image", "\x01");
  channel.setValue("image", &image);
  channel.addObject(image, "pictures");
  channel.addObject(insert("Image"), "pictures");
  insertEpisode(channel, "").setValue("alias", Value::data("any"));
  ASSERT_TRUE(context->save().ok());
  EXPECT_EQ(readFile(path), R"(<?xml version="1.0" encoding="UTF-8"?>
<library version="1.0" next="5">
<Channel id="1"><vcTitle>R &amp; D</vcTitle><protocolTag>-2</protocolTag><vcPublish>1</vcPublish>)"
                            R"(<lastBuildDate>2009-03-03T02:05:09.000500Z</lastBuildDate>)"
                            R"(<image>2</image><pictures>2 3</pictures></Channel>
<Vodcast id="4"><alias>YW55</alias><vcPublishDate>1970-01-01T00:16:40Z</vcPublishDate><parent>1</parent></Vodcast>
<Image id="2"><title encoding="base64">AQ==</title></Image>
<Image id="3"></Image>
</library>)");
}

TEST_F(XMLStoreTest, EveryPrefixOfAStoreIsRefused) {
  open();
  insertEpisode(insert("Channel", "A \r ü"), "\x02").setValue("vcPath", "/a.mov");
  ASSERT_TRUE(context->save().ok());
  const std::string whole = readFile(path);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const auto read = XMLStore::read(whole.substr(0, length), model);
    ASSERT_FALSE(read.ok()) << length;
    EXPECT_EQ(read.error().code, kPersistentStoreOpenError);
  }
  EXPECT_TRUE(XMLStore::read(whole, model).ok());
}

TEST_F(XMLStoreTest, DamageIsReportedAndTheFileLeftAlone) {
  std::vector<std::string> bad = {"<Channel/>",
                                  "<Channel id=\"100\"/>",
                                  "<Channel id=\"1\"/><Image id=\"1\"/>",
                                  "<Channel id=\"1\"><image>2</image></Channel><Vodcast id=\"2\"/>",
                                  "<Channel id=\"1\"/>stray<Channel id=\"2\"/>",
                                  "<Image id=\"1\"><twin>2</twin></Image><Image id=\"2\"/>",
                                  "<Vodcast id=\"1\"><alias>YW5</alias></Vodcast>"};
  for (const char* values :
       {"<image>two</image>", "<protocolTag>2147483648</protocolTag>", "<protocolTag/>",
        "<vcPublish>YES</vcPublish>", "<vcTitle>a</vcTitle><vcTitle>b</vcTitle>",
        "<vcTitle encoding=\"rot13\">a</vcTitle>", "<vcTitle>&nbsp;</vcTitle>", "<vcTitle>\xC3(</vcTitle>",
        "<lastBuildDate>2009-02-29T00:00:00Z</lastBuildDate>", "<lastBuildDate>2009-03-04</lastBuildDate>",
        "<lastBuildDate>300000-01-01T00:00:00Z</lastBuildDate>"})
    bad.push_back(std::string("<Channel id=\"1\">") + values + "</Channel>");
  for (const std::string& records : bad) {
    const Result<void> opened = openRecords(records);
    ASSERT_FALSE(opened.ok()) << records;
    EXPECT_EQ(opened.error().code, kPersistentStoreOpenError);
  }
  const std::string good = "<library version=\"1.0\" next=\"9\"></library>";
  for (const std::string& content :
       {good + good, good + std::string(1, '\0'), std::string("<library version=\"1\" next=\"9\"/>")})
    EXPECT_FALSE(openText(content).ok()) << content;
  EXPECT_TRUE(openText(good).ok());
}

TEST_F(XMLStoreTest, SaysWhatIsWrongInWords) {
  EXPECT_EQ(
      openRecords("<Vodcast id=\"7\"><parent>5</parent></Vodcast>").error().localizedDescription,
      "The library at " + path +
          " cannot be opened. It is damaged: the Vodcast 7 names 5 as its “parent”, and there is no such "
          "Channel.");
  const auto newer = openText("<library version=\"2.0\" something=\"&new;\"><x/></library>");
  EXPECT_EQ(newer.error().code, kPersistentStoreIncompatibleVersionHashError);
  EXPECT_THAT(newer.error().localizedDescription,
              HasSubstr("newer version of this application (format 2.0)"));
}

TEST_F(XMLStoreTest, WhatANewerMinorVersionAddedSurvives) {
  std::string deep;
  for (int i = 0; i < 100'000; ++i) deep += "<d>";
  for (int i = 0; i < 100'000; ++i) deep += "</d>";
  const std::string kept[] = {"<library version=\"1.7\" next=\"100\" mood=\"fine\">",
                              "<Channel id=\"2\" colour=\"&lt;red&gt; &quot;&#10;\">",
                              "<vcTitle lang=\"de\">A</vcTitle>",
                              "<rating scale=\"5\">4 &amp; a &lt;half&gt;&#13;</rating>",
                              "<Playlist id=\"9\"><item of=\"2\">x<b>y</b> <b>z</b></item></Playlist>"};
  ASSERT_TRUE(openText(kept[0] + kept[1] + kept[2] + kept[3] + "</Channel>" + kept[4] + "<Folder id=\"8\">" +
                       deep + "</Folder></library>")
                  .ok());
  fetch({.entityName = "Channel"})[0]->setValue("vcURL", "http://a/");
  for (int i = 0; i < 2; ++i) saveAndReopen();
  const std::string content = readFile(path);
  for (const std::string& each : kept) EXPECT_THAT(content.find(each), Ne(std::string::npos)) << each;
  EXPECT_THAT(content.find("<d/></d></d>"), Ne(std::string::npos));
}

}  // namespace
}  // namespace clipwave
