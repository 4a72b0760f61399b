// One episode of a channel: a movie file and what the channel's feed says of it.
#pragma once

#include <array>
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
  // Bytes; the low 32 bits of the file's size, 0 while there is no file. Setting keeps the low 32 bits.
  std::int64_t size();
  void setSize(const Value& bytes);
  // Unit and text of the size in full, also where `size` cannot hold it.
  std::optional<std::string> mediaSizeUnit();
  void setMediaSizeUnit(const Value& unit);
  std::string mediaSizeString();
  void setMediaSizeString(const Value& text);
  void updateSize();
  // Holds nothing of its own; setting it only tells its observers.
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
  // The opened movie, when it is held already.
  std::shared_ptr<Movie> heldMovie() const;
  // The alias of the file at `path`; nothing, with a log line, when no reference to it can be made.
  std::optional<Value> aliasOfFile(std::string_view path);
  using FileValues = std::array<Value, 7>;
  FileValues fileValues() const;
  void storeFile(const FileValues& values);
  std::int64_t sizeToShow();

  LibraryHost& host_;
};

}  // namespace clipwave
