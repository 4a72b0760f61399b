// A movie file that grows by whole fragments, and becomes a plain movie at the end. Internal to this room.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Error.h"
#include "platform/quicktime/MovieInput.h"
#include "platform/quicktime/MovieMuxer.h"

namespace clipwave {

// Used by one thread. The file is a movie that opens as soon as the first fragment has ended, and at every
// moment from then on. The encoders outlive it.
class FragmentedFile {
 public:
  // Empties the existing file. The error's code is one of NSCocoaErrorDomain.
  static Result<std::unique_ptr<FragmentedFile>> open(const std::string& path,
                                                      std::vector<const AVCodecContext*> encoders);
  ~FragmentedFile();

  // Into the fragment under way. The packet's stream index is that of its encoder, its times count in that
  // one's time base.
  Result<void> add(MoviePacket packet);
  // Brings the fragment under way to the disk. When that fails the file is cut back to the fragments before.
  // Fails also where the file is not at its path any more, or somebody else has shortened it.
  Result<void> endFragment();
  // Makes a plain movie of what was written whole, or, where that is impossible, leaves it in fragments.
  // Fails where there is none, and as endFragment() where the file is not what was written.
  Result<void> finish();

 private:
  FragmentedFile(int descriptor, std::string path) : descriptor_(descriptor), path_(std::move(path)) {}
  int lookForFault() const;
  int bringToDisk(std::string& fragment, std::size_t name);
  bool addToIndex(std::string_view fragment);
  bool becomePlain(const std::string& index);
  int write(std::string_view bytes, std::int64_t offset);
  int cutBack();
  Error error(int number) const;

  int descriptor_;
  std::string path_;
  std::vector<const AVCodecContext*> encoders_;
  std::unique_ptr<MovieMuxer> fragments_;
  std::unique_ptr<MovieMuxer> index_;  // null once the movie must stay in fragments
  std::vector<MoviePacket> pending_;   // of the fragment under way
  std::int64_t whole_ = 0;             // where the last whole fragment ends
  std::int64_t head_ = 0;              // where the movie's head stands
};

}  // namespace clipwave
