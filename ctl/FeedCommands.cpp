// The commands about feeds: feed, import, message.
#include <iostream>

#include "ctl/Commands.h"
#include "ctl/RecordLookup.h"
#include "publish/FeedDocument.h"

namespace clipwave {

ExitStatus runFeed(Companion& companion, const CommandLine& arguments) {
  if (arguments.size() != 1) return usageError("feed takes one channel.");
  const auto channel = findChannel(companion.controller().channelController(), arguments.front());
  if (!channel) return failure(channel.error());
  const XMLDocument feed =
      makeFeedDocument(**channel, sortedEpisodes(**channel), companion.controller().feedTables());
  std::cout << feed.prettyPrinted();
  return companion.finishWithoutSaving();
}

namespace {

// A name that a file has here is that file, also where it could be read as a URL.
std::string urlFromArgument(Companion& companion, const std::string& argument) {
  const std::string path = absolutePath(argument);
  const bool isFile = companion.files().fileExistsAtPath(path);
  return isFile || !isURL(argument) ? fileURLWithPath(path) : argument;
}

}  // namespace

ExitStatus runImport(Companion& companion, const CommandLine& arguments) {
  if (arguments.size() != 1) return usageError("import takes one file or URL.");
  Channel* channel =
      companion.controller().feedImport().importRSSWithURL(urlFromArgument(companion, arguments.front()));
  if (channel == nullptr) return kFailed;
  const ExitStatus status = companion.finish();
  if (status == kDone) std::cout << channel->value("vcTitle").stringValue() << '\n';
  return status;
}

ExitStatus runMessage(Companion& companion, const CommandLine& arguments) {
  ArrayController& channels = companion.controller().channelController();
  std::vector<ManagedObject*> chosen;
  for (const std::string& name : arguments) {
    const auto channel = findChannel(channels, name);
    if (!channel) return failure(channel.error());
    chosen.push_back(*channel);
  }
  channels.setSelectedObjects(chosen);
  companion.controller().subscriptionHandOff().sendEmail();
  const Value message = companion.pasteboard().propertyListForType(NSStringPboardType);
  if (!message.isString()) {
    printError("clipwavectl", "The library has no channels to invite to.");
    return kFailed;
  }
  std::cout << message.stringValue();
  return companion.finishWithoutSaving();
}

}  // namespace clipwave
