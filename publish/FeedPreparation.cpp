#include "publish/FeedPreparation.h"

#include <optional>
#include <string_view>

namespace clipwave {
namespace {

// The name under which a feed is sent. A channel whose file name is none at all must not make the transfer
// replace the destination folder or the one above it: its feed goes under the name that the file has here.
std::string feedFilename(Channel& channel, std::string_view temporaryPath) {
  const Value filename = channel.value("filename");
  const std::string_view name = filename.stringValue();
  if (name.empty() || name == "." || name == "..") return lastPathComponent(temporaryPath);
  return std::string(name);
}

}  // namespace

// An episode whose movie is not to be found reads an empty path: there is nothing to send, and an entry
// without a file name would name the destination folder itself.
std::vector<CopyEntry> FeedPreparation::moviesToCopy(const std::vector<Vodcast*>& episodes) {
  std::vector<CopyEntry> movies;
  for (Vodcast* episode : episodes) {
    if (!episode->value("vcPublish").boolValue() || !episode->value("vcCopy").boolValue()) continue;
    const Value path = episode->vcPath();
    if (path.isNull()) continue;
    std::string filename = lastPathComponent(path.stringValue());
    if (filename.empty()) {
      const std::string title(episode->value("vcTitle").stringValue());
      services_.log.write("no movie file found for episode " + title);
      troubles_.push_back("The movie of the episode \"" + title + "\" was not found.");
      continue;
    }
    movies.push_back({std::string(path.stringValue()), std::move(filename), episode->weak_from_this()});
  }
  return movies;
}

std::optional<std::string> FeedPreparation::writeTemporaryFile(std::string_view bytes) {
  Result<std::string> path = services_.files.makeTemporaryFile(services_.temporaryFileTemplate);
  if (!path) return std::nullopt;
  if (services_.files.writeAtomically(bytes, *path)) return *path;
  (void)services_.files.removeFileAtPath(*path);
  return std::nullopt;
}

const std::vector<CopyEntry>& FeedPreparation::prepareFilesForIndex(std::int32_t index) {
  setFilesToCopy({});
  auto& channel =
      static_cast<Channel&>(*services_.channelController.content()[static_cast<std::size_t>(index)]);
  // A channel without a URL or without a file name has no address that could be reported or subscribed to.
  if (const std::optional<std::string> url = channelFeedURL(channel)) {
    pubURLs_.push_back(*url);
    urlsToLaunch_[std::string(channel.value("vcTitle").stringValue())] = *url;
  }
  const std::vector<Vodcast*> episodes = sortedEpisodes(channel);
  const std::string bytes = makeFeedDocument(channel, episodes, services_.tables).prettyPrinted();
  setFilesToCopy(moviesToCopy(episodes));

  const std::optional<std::string> path = writeTemporaryFile(bytes);
  if (!path) {
    services_.application.beep();
    services_.log.write("Could not write document out...");
    services_.application.exitProcess(1);
    return filesToCopy_;
  }
  filesToCopy_.push_back({*path, feedFilename(channel, *path)});
  return filesToCopy_;
}

}  // namespace clipwave
