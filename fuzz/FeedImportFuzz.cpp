// Holds against any bytes that a feed's address answers: an import tells why there is none and leaves nothing
// behind, or the channel that it made can be published, imported again with the same items, and undone.
// An input that begins with a digit is served with one of a few charset labels.
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "fuzz/ImportHarness.h"
#include "fuzz/Records.h"
#include "publish/FeedDocument.h"

namespace clipwave::fuzz {
namespace {

// The label that a server would send along with the input, taken off its front.
std::string takeCharset(std::string_view& input) {
  constexpr std::array<std::string_view, 10> kLabels = {
      "",       "UTF-8",    "us-ascii", "iso-8859-1", "windows-1252",
      "UTF-16", "UTF-16LE", "koi8-r",   "Shift_JIS",  "x"};
  if (input.empty() || input.front() < '0' || input.front() > '9') return {};
  const auto label = static_cast<std::size_t>(input.front() - '0');
  input.remove_prefix(1);
  return std::string(kLabels[label]);
}

std::string feedOf(ImportHarness& harness, Channel& channel) {
  return makeFeedDocument(channel, sortedEpisodes(channel), harness.tables()).prettyPrinted();
}

std::vector<XMLElement> itemsOf(const XMLDocument& feed) {
  const XMLElement channel = feed.rootElement().firstElementForName("channel");
  return channel ? channel.elementsForName("item") : std::vector<XMLElement>();
}

// What an item says, but for the address of its channel's feed.
std::string told(const XMLElement& item) {
  std::string text;
  for (const XMLElement& child : item.elements()) {
    if (child.name() == "source") continue;
    text += child.name() + "=" + child.stringValue();
    for (const auto& [name, value] : child.attributes())
      text.append(" ").append(name).append("=").append(value);
    text += '\n';
  }
  return text;
}

// How often each item is told. An item without a date gets that of its import.
std::map<std::string, int> told(const XMLDocument& feed) {
  std::map<std::string, int> items;
  for (const XMLElement& item : itemsOf(feed))
    if (item.firstElementForName("pubDate")) ++items[told(item)];
  return items;
}

// Other readers are stricter than this one; and what was published can be taken back.
void importAgain(const std::string& feed, std::size_t episodes) {
  const Result<XMLDocument> document = XMLDocument::parse(feed, XMLDocument::Parsing::Strict);
  require(document.ok(), "the channel's feed is well-formed", {feed});
  require(itemsOf(*document).size() == episodes, "the feed has an item for each episode", {feed});

  ImportHarness harness;
  Channel* const channel = harness.import(feed, "");
  require(channel != nullptr, "the channel's feed can be imported", {feed});
  require(channel->relatedObjects("children").size() == episodes, "each item becomes an episode", {feed});
  const std::string again = feedOf(harness, *channel);
  const Result<XMLDocument> second = XMLDocument::parse(again, XMLDocument::Parsing::Strict);
  require(second.ok(), "the feed of the channel imported again is well-formed", {again});
  std::map<std::string, int> items = told(*second);
  for (const auto& [item, count] : told(*document))
    require(items[item] >= count, "an item is told again as it was", {item, feed, again});
}

void importPublishUndo(std::string_view input) {
  const std::string charset = takeCharset(input);
  ImportHarness harness;
  Channel* const channel = harness.import(input, charset);
  if (channel == nullptr) {
    require(harness.alerts() == 1, "a feed that cannot be imported is told of once");
    require(allRecords(harness.context()).empty() && !harness.context().hasChanges(),
            "nothing was made of it");
    return;
  }
  require(harness.alerts() == 0, "an import that goes well says nothing");
  const std::size_t episodes = channel->relatedObjects("children").size();
  require(episodes > 0, "a channel has episodes");
  require(harness.context().countOfEntity(kVodcastEntity) == episodes, "every episode is the channel's");
  const std::string feed = feedOf(harness, *channel);
  importAgain(feed, episodes);

  const std::string read = readValues(harness.context());
  UndoManager& undo = harness.context().undoManager();
  while (undo.canUndo()) undo.undo();
  require(allRecords(harness.context()).empty(), "an import can be taken back");
  while (undo.canRedo()) undo.redo();
  requireSame(readValues(harness.context()), read, "and brought back");
  requireSame(harness.reopenedAfterSaving(), read, "and saved");
}

}  // namespace
}  // namespace clipwave::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  clipwave::fuzz::importPublishUndo({reinterpret_cast<const char*>(data), size});
  return 0;
}
