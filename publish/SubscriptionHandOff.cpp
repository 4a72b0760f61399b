#include "publish/SubscriptionHandOff.h"

#include <optional>

#include "platform/foundation/URLEscapes.h"
#include "platform/foundation/XMLDocument.h"
#include "publish/SubscriptionLinks.h"

namespace clipwave {
namespace {

constexpr std::string_view kSubscriptionDTD = "http://www.itunes.com/DTDs/Podcast-1.0.dtd";
constexpr std::string_view kDownloadPage = "https://www.apple.com/itunes/download/";
constexpr std::string_view kPodcastClient = "iTunes";

constexpr std::string_view kExtension = ".pcast";
constexpr std::size_t kLongestFileName = 255;  // bytes, on every file system that "/tmp" may lie on

// A "/" in a title would lead into a folder. The slash of fractions looks like it and is never met in a file
// name, so that two titles keep two files. A title that is too long for a file is cut between two characters.
std::string subscriptionFileName(std::string_view title) {
  std::string name;
  for (const char c : title) c == '/' ? name.append("\u2215") : name.append(1, c);
  if (std::size_t end = kLongestFileName - kExtension.size(); name.size() > end) {
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
    name.resize(end);
  }
  return name.append(kExtension);
}

// The address of the channel's feed as a link in the message; nothing while it has none.
std::optional<std::string> messageLink(ManagedObject& channel) {
  const Value folder = channel.value("vcURL");
  const Value filename = channel.value("filename");
  if (!folder.isString() || !filename.isString()) return std::nullopt;
  const std::string url = std::string(folder.stringValue()) + '/' + std::string(filename.stringValue());
  return stringByAddingPercentEscapes(subscriptionLink(url), "", "");
}

}  // namespace

std::string subscriptionDocument(std::string_view title, std::string_view feedURL) {
  XMLDocument document("pcast");
  document.rootElement().addAttribute("xmlns:itunes", kSubscriptionDTD);
  document.rootElement().addAttribute("version", "2.0");
  XMLElement channel = document.rootElement().addChild("channel");
  XMLElement link = channel.addChild("link");
  link.addAttribute("rel", "feed");
  link.addAttribute("type", "application/rss+xml");
  link.addAttribute("href", feedURL);
  channel.addChild("title", title);
  return document.prettyPrinted();
}

std::string subscriptionMessage(const std::vector<ManagedObject*>& channels) {
  std::string text =
      "Click on the links below to subscribe to my video podcast.  If you don't have iTunes installed, you "
      "can get it from ";
  text.append(kDownloadPage).append("\n\n");
  for (ManagedObject* channel : channels) {
    if (const auto link = messageLink(*channel)) text.append(*link).append("\n");
  }
  return text + "\n\nThis podcast was published with Clipwave.\n";
}

void SubscriptionHandOff::openInItunes() {
  troubles_.clear();
  for (const auto& [title, feedURL] : services_.feedPreparation.urlsToLaunch()) {
    const std::string path = services_.folder + '/' + subscriptionFileName(title);
    if (!removeOldFile(path)) {
      services_.log.write("couldn't delete temp file");
      services_.application.beep();
      troubles_.push_back("The old subscription file " + path + " could not be removed.");
      return;
    }
    const bool isWritten = writeFile(path, subscriptionDocument(title, feedURL));
    if (!isWritten) {
      services_.application.beep();
      services_.log.write("Could not write document out...");
      troubles_.push_back("The subscription file " + path + " could not be written.");
    }
    if (!services_.workspace.openFileWithApplication(path, kPodcastClient) && isWritten) {
      troubles_.push_back("No application could be started for the subscription file " + path + ".");
    }
  }
}

bool SubscriptionHandOff::removeOldFile(const std::string& path) {
  // Also a link that leads nowhere: it is in the way all the same.
  const auto old = services_.files.fileAttributesAtPath(path, false);
  if (!old) return true;
  // A folder was never a subscription file, and what it holds is somebody's.
  return old->type != FileAttributes::Type::Directory && services_.files.removeFileAtPath(path).ok();
}

// Written aside and moved to a path where nothing may be: an atomic write straight to the path would follow a
// link to a file that somebody puts there in the meantime.
bool SubscriptionHandOff::writeFile(const std::string& path, std::string_view bytes) {
  const auto side =
      services_.files.makeTemporaryFile(services_.folder + '/' + std::string(kSideFilePrefix) + "XXXXXX");
  if (!side) return false;
  if (services_.files.writeAtomically(bytes, *side) && services_.files.movePath(*side, path)) return true;
  (void)services_.files.removeFileAtPath(*side);
  return false;
}

void SubscriptionHandOff::sendEmail() {
  ArrayController& list = services_.channelController;
  std::vector<ManagedObject*> channels = list.selectedObjects();
  if (channels.empty()) channels = list.arrangedObjects();
  if (channels.empty()) return;
  services_.generalPasteboard.declareTypes({std::string(NSStringPboardType)});
  services_.generalPasteboard.setPropertyList(subscriptionMessage(channels), NSStringPboardType);
}

}  // namespace clipwave
