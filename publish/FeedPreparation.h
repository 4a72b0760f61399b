// Prepares one channel for its transfer: writes the feed to a temporary file and lists the files to send.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/LanguageDataSource.h"
#include "platform/appkit/Application.h"
#include "platform/appkit/ArrayController.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"
#include "publish/FeedDocument.h"
#include "transfer/CopyBackEnd.h"

namespace clipwave {

class FeedPreparation {
 public:
  struct Services {
    Application& application;
    FileManager& files;
    Log& log;
    ArrayController& channelController;
    FeedTables tables;
    // Where feed files are made; a test's own folder in tests.
    std::string temporaryFileTemplate = "/tmp/xmlFile.XXXXXX";
  };
  explicit FeedPreparation(Services services) : services_(std::move(services)) {}

  // `index`: of a channel in the content of the channel list (store order). The list returned is the one that
  // filesToCopy() then holds: the movies marked for copying, newest first, then the feed file, which stays
  // where it was written. Movies that are not to be found are left out, with a log line. When the feed cannot
  // be written the process ends with status 1 after a beep and a log line.
  const std::vector<CopyEntry>& prepareFilesForIndex(std::int32_t index);

  // Movies that were left out since forgetTroubles, one sentence each, for a companion that reports what a
  // window passes over in silence.
  const std::vector<std::string>& troubles() const { return troubles_; }
  void forgetTroubles() { troubles_.clear(); }

  const std::vector<CopyEntry>& filesToCopy() const { return filesToCopy_; }
  void setFilesToCopy(std::vector<CopyEntry> files) { filesToCopy_ = std::move(files); }
  // Feed URLs of the channels of this run, in run order; and by channel title. Channels without a feed URL
  // are in neither.
  const std::vector<std::string>& pubURLs() const { return pubURLs_; }
  void setPubURLs(std::vector<std::string> urls) { pubURLs_ = std::move(urls); }
  const std::map<std::string, std::string>& urlsToLaunch() const { return urlsToLaunch_; }
  void setUrlsToLaunch(std::map<std::string, std::string> urls) { urlsToLaunch_ = std::move(urls); }

 private:
  // The movies to send with the feed.
  std::vector<CopyEntry> moviesToCopy(const std::vector<Vodcast*>& episodes);
  // The path of a new file with these bytes; nothing when it could not be written.
  std::optional<std::string> writeTemporaryFile(std::string_view bytes);

  Services services_;
  std::vector<CopyEntry> filesToCopy_;
  std::vector<std::string> pubURLs_;
  std::map<std::string, std::string> urlsToLaunch_;
  std::vector<std::string> troubles_;
};

}  // namespace clipwave
