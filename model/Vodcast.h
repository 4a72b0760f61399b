// One episode of a channel: a movie file and what the channel's feed says of it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/LibraryHost.h"
#include "platform/coredata/ManagedObject.h"
#include "platform/quicktime/Movie.h"

namespace clipwave {

class Channel;

// Everything is also read and written by key; these are the keys with behaviour of their own. Readers of
// values that are costly to compute store what they computed, without an undo step.
class Vodcast final : public ManagedObject {
 public:
  Vodcast(const EntityDescription& entity, LibraryHost& host) : ManagedObject(entity), host_(host) {}

  // Where the movie file is now: follows the file through its alias; "" when the alias leads nowhere; absent
  // when no file was ever attached.
  Value vcPath();
  void setVcPath(const Value& path);
  // The opened movie, opening it when needed; none when there is no movie file.
  std::shared_ptr<Movie> movie();
  // Of the held movie: "01:02:05"; "" when none is held.
  std::string vcDuration();
  std::optional<std::string> mediaTimeString();
  // Bytes; the low 32 bits of the file's size.
  std::int64_t size();
  std::optional<std::string> mediaSizeUnit();
  void setMediaSizeUnit(const Value& unit);
  std::string mediaSizeString();
  void setMediaSizeString(const Value& text);
  void updateSize();
  std::string movieInfo();
  std::optional<std::string> timezone();
  std::optional<std::string> mediaURL();
  std::optional<std::string> mediaFilename();
  std::optional<std::string> mediaFullURL();
  Channel* parent() const;

  // The size of the file at vcPath in full, for showing; nothing when there is no file.
  std::optional<std::int64_t> trueFileSize();

 protected:
  void awakeFromInsert() override;

 private:
  LibraryHost& host_;
};

}  // namespace clipwave
