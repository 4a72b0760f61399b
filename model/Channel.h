// One podcast: its channel-level metadata, where it is published, and its episodes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/LibraryHost.h"
#include "platform/coredata/ManagedObject.h"

namespace clipwave {

inline constexpr std::string_view kProtocolDidChange = "protocolDidChange";
inline constexpr int kFolderMethod = 1;
inline constexpr int kDotMacMethod = 2;

class Channel final : public ManagedObject {
 public:
  Channel(const EntityDescription& entity, LibraryHost& host) : ManagedObject(entity), host_(host) {}

  // Gives a new channel its defaults; scheduled for the pass after its insertion. Keys that something has set
  // since then keep their value.
  void activateDefaults();
  std::optional<std::string> itunesAuthor();
  bool canEditURLs();
  // The name of the image shown beside the destination: "dotmaclogo" or "folder".
  std::string pathIcon();
  Validation validateVcTitle(Value& proposed);
  void setDotMacDefaultsWithNewTitle(std::string_view title);
  void setDotMacDefaults();

 protected:
  void awakeFromInsert() override;

 private:
  LibraryHost& host_;
};

}  // namespace clipwave
