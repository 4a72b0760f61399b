// The commands about feeds: feed, import, message.
#include <algorithm>
#include <iostream>

#include "ctl/Commands.h"
#include "ctl/RecordLookup.h"
#include "ctl/RecordText.h"
#include "platform/foundation/ASCII.h"
#include "platform/foundation/URLs.h"
#include "publish/FeedDocument.h"
#include "publish/SubscriptionLinks.h"

namespace clipwave {

ExitStatus runFeed(Companion& companion, const CommandArguments& arguments) {
  const auto channel = findChannel(companion.controller().channelController(), arguments.words().front());
  if (!channel) return failure(channel.error());
  const XMLDocument feed =
      makeFeedDocument(**channel, sortedEpisodes(**channel), companion.controller().feedTables());
  std::cout << feed.prettyPrinted();
  return companion.finishWithoutSaving();
}

namespace {

// A name that a file has here is that file, also where it could be read as a URL. What begins as an address
// is meant as one, also where it is none.
std::string urlFromArgument(Companion& companion, const std::string& argument) {
  const std::string path = absolutePath(argument);
  if (companion.files().fileExistsAtPath(path)) return fileURLWithPath(path);
  const std::string_view url = trimmed(argument);
  if (const auto feedURL = feedURLForAddress(url)) return *feedURL;
  return isURL(url) || schemeOf(url) == "file" ? std::string(url) : fileURLWithPath(path);
}

}  // namespace

ExitStatus runImport(Companion& companion, const CommandArguments& arguments) {
  if (arguments.words().front().empty()) return usageError("import takes one file or URL.");
  const std::string url = urlFromArgument(companion, arguments.words().front());
  FeedImport& import = companion.controller().feedImport();
  Channel* channel = import.importRSSWithURL(url);
  if (channel == nullptr) {
    if (!import.trouble().empty()) printError("clipwavectl", import.trouble());
    return kFailed;
  }
  const ExitStatus status = companion.finish();
  if (status == kDone) std::cout << oneLine(channel->value("vcTitle").stringValue()) << '\n';
  return status;
}

ExitStatus runMessage(Companion& companion, const CommandArguments& arguments) {
  ArrayController& channels = companion.controller().channelController();
  std::vector<ManagedObject*> named;
  for (const std::string& name : arguments.words()) {
    const auto channel = findChannel(channels, name);
    if (!channel) return failure(channel.error());
    if (!channelFeedURL(**channel))
      return failure("The channel \"" + name + "\" has no URL or no file name.");
    named.push_back(*channel);
  }
  // None selected means all of them; those without an address are left out.
  channels.setSelectedObjects(named);
  const auto& all = channels.arrangedObjects();
  const bool hasAddress = std::any_of(all.begin(), all.end(), [](ManagedObject* channel) {
    return channelFeedURL(static_cast<Channel&>(*channel)).has_value();
  });
  if (!hasAddress) return failure("The library has no channels to invite to.");
  companion.controller().subscriptionHandOff().sendEmail();
  std::cout << companion.pasteboard().propertyListForType(NSStringPboardType).stringValue();
  return companion.finishWithoutSaving();
}

}  // namespace clipwave
