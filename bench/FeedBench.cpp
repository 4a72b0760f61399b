// The feed of a channel with 10,000 episodes, from its records to bytes.
#include <libxml/parser.h>
#include <libxml/tree.h>

#include "bench/BenchProgram.h"
#include "bench/Measure.h"
#include "publish/FeedDocument.h"

namespace clipwave::bench {
namespace {

constexpr int kRounds = 9;

Channel& makeChannel(BenchProgram& bench, int episodes) {
  ManagedObjectContext& context = bench.context();
  auto* channel = static_cast<Channel*>(context.insertNewObject(kChannelEntity));
  bench.runLoop().runUntilIdle();
  for (int e = 0; e < episodes; ++e) {
    ManagedObject* episode = context.insertNewObject(kVodcastEntity);
    fillEpisode(*episode, e);
    episode->setValue("parent", channel);
  }
  return *channel;
}

std::string ourFeed(BenchProgram& bench, Channel& channel) {
  return makeFeedDocument(channel, sortedEpisodes(channel), bench.controller().feedTables()).prettyPrinted();
}

// Builds, with libxml2 alone, a tree equal to `node`'s below `parent`.
void rebuild(xmlDocPtr document, xmlNodePtr parent, xmlNodePtr node) {
  for (xmlNodePtr child = node->children; child != nullptr; child = child->next) {
    if (child->type == XML_TEXT_NODE) {
      if (node->children == child && child->next == nullptr) xmlNodeAddContent(parent, child->content);
      continue;
    }
    if (child->type != XML_ELEMENT_NODE) continue;
    xmlNodePtr copy = xmlNewNode(child->ns, child->name);
    xmlAddChild(parent, copy);
    for (xmlAttrPtr attribute = child->properties; attribute != nullptr; attribute = attribute->next) {
      xmlNewProp(copy, attribute->name,
                 attribute->children != nullptr ? attribute->children->content : nullptr);
    }
    rebuild(document, copy, child);
  }
}

void referenceFeed(xmlDocPtr model) {
  xmlDocPtr document = xmlNewDoc(BAD_CAST "1.0");
  xmlNodePtr root = xmlNewNode(nullptr, BAD_CAST "rss");
  xmlDocSetRootElement(document, root);
  rebuild(document, root, xmlDocGetRootElement(model));
  xmlChar* text = nullptr;
  int length = 0;
  xmlDocDumpFormatMemoryEnc(document, &text, &length, "UTF-8", 1);
  xmlFree(text);
  xmlFreeDoc(document);
}

int run() {
  BenchHome home;
  BenchProgram bench;
  bench.context().undoManager().disableUndoRegistration();
  Channel& large = makeChannel(bench, 10'000);
  Channel& small = makeChannel(bench, 1'000);

  const std::string text = ourFeed(bench, large);
  std::printf("Feed: 10000 episodes, %.1f MB\n", static_cast<double>(text.size()) / 1e6);
  xmlDocPtr model =
      xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, XML_PARSE_NOBLANKS);
  report("feed of 10,000 episodes", "libxml2 building an equal tree",
         compare(
             kRounds, [&] { (void)ourFeed(bench, large); }, [&] { referenceFeed(model); }),
         "<= 1.5");
  xmlFreeDoc(model);

  Comparison perEpisode = compare(
      kRounds, [&] { (void)ourFeed(bench, large); },
      [&] {
        for (int i = 0; i < 10; ++i) (void)ourFeed(bench, small);
      });
  report("10,000 episodes in one feed", "10,000 episodes in ten feeds", perEpisode, "<= 1.2");
  return 0;
}

}  // namespace
}  // namespace clipwave::bench

int main() {
  return clipwave::bench::run();
}
