// One podcast: its channel-level metadata, where it is published, and its episodes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/LibraryHost.h"
#include "platform/coredata/ManagedObject.h"

namespace clipwave {

class ChannelNumbering;

inline constexpr std::string_view kProtocolDidChange = "protocolDidChange";
inline constexpr int kFolderMethod = 1;
inline constexpr int kDotMacMethod = 2;
// The domain and the codes of the errors with which a title is refused.
inline constexpr std::string_view kTitleErrorDomain = "vcTitle";
inline constexpr int kTitleFolderExistsError = -5;
inline constexpr int kTitleNamesNoFolderError = -6;

// "%@/Movies/Clipwave/%@": where the recordings of the channel of that title lie.
std::string channelMovieFolder(std::string_view homeDirectory, std::string_view title);

class Channel final : public ManagedObject {
 public:
  // `host` and `numbering` must outlive the record.
  Channel(const EntityDescription& entity, LibraryHost& host, ChannelNumbering& numbering)
      : ManagedObject(entity), host_(host), numbering_(numbering) {}

  // Gives a new channel its defaults; scheduled for the pass after its insertion. Keys that something has set
  // since then keep their value.
  void activateDefaults();
  // Episodes whose mediaURL follows it announce that too.
  void setVcURL(const Value& url);
  std::optional<std::string> itunesAuthor();
  bool canEditURLs();
  // The name of the image shown beside the destination: "dotmaclogo" or "folder".
  std::string pathIcon();
  // Moves the folder of the channel's recordings along with the title. Refuses a title whose folder exists,
  // and one whose folder would not lie in the folder of all recordings; a failed move is told in an alert.
  // Without an error only for an absent title and after that alert.
  Validation validateVcTitle(Value& proposed);
  // Nothing happens without a configured account.
  void setDotMacDefaultsWithNewTitle(std::string_view title);
  void setDotMacDefaults();

 protected:
  void awakeFromInsert() override;

 private:
  using KeyValue = std::pair<std::string_view, Value>;
  std::vector<KeyValue> newChannelValues();
  ManagedObject* defaultImage();
  Validation moveMovieFolder(std::string_view title, const std::string& target);
  Error titleError(int code, const char* message, std::string_view argument);

  LibraryHost& host_;
  ChannelNumbering& numbering_;
};

}  // namespace clipwave
