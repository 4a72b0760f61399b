// The commands that only read the library: channels, show.
#include <iostream>

#include "ctl/Commands.h"
#include "ctl/RecordLookup.h"
#include "ctl/RecordText.h"
#include "platform/foundation/JSON.h"

namespace clipwave {

ExitStatus runChannels(Companion& companion, const CommandArguments&) {
  for (ManagedObject* channel : companion.controller().channelController().arrangedObjects()) {
    std::cout << channel->objectID() << '\t' << (channel->value("vcPublish").boolValue() ? '*' : '-') << '\t'
              << channel->relatedObjects("children").size() << '\t'
              << oneLine(channel->value("vcTitle").stringValue()) << '\t'
              << channel->value("mediaPath").stringValue() << '\n';
  }
  return companion.finishWithoutSaving();
}

namespace {

void showAsText(const std::vector<ManagedObject*>& channels) {
  bool isFirst = true;
  for (ManagedObject* channel : channels) {
    if (!isFirst) std::cout << '\n';
    isFirst = false;
    std::cout << recordText(*channel);
    for (ManagedObject* episode : channel->relatedObjects("children")) {
      std::cout << "\n  episode\n";
      const std::string text = recordText(*episode);
      for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        std::cout << "  " << text.substr(start, end - start + 1);
        start = end + 1;
      }
    }
  }
}

}  // namespace

ExitStatus runShow(Companion& companion, const CommandArguments& arguments) {
  ArrayController& list = companion.controller().channelController();
  std::vector<ManagedObject*> channels = list.arrangedObjects();
  if (!arguments.words().empty()) {
    const auto channel = findChannel(list, arguments.words().front());
    if (!channel) return failure(channel.error());
    channels = {*channel};
  }
  if (!arguments.has("--json")) {
    showAsText(channels);
    return companion.finishWithoutSaving();
  }
  Array dictionaries;
  for (ManagedObject* channel : channels) dictionaries.push_back(recordDictionary(*channel));
  std::cout << JSONFromValue(Dictionary{{"channels", std::move(dictionaries)}}) << '\n';
  return companion.finishWithoutSaving();
}

}  // namespace clipwave
