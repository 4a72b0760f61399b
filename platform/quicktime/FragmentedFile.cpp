#include "platform/quicktime/FragmentedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <system_error>
#include <utility>

extern "C" {
#include <libavcodec/avcodec.h>
}

#include "platform/foundation/FileManager.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

static_assert(sizeof(off_t) == 8, "movies are larger than 32 bits can count");

constexpr std::string_view kFragment = "moof";
constexpr std::string_view kNothing = "free";
constexpr std::size_t kBoxSize = 4;  // the field before the name
constexpr std::size_t kBoxHeader = 8;
constexpr std::size_t kLargeBoxHeader = 16;
// What a disk writes in one piece or not at all.
constexpr std::int64_t kSector = 512;

struct Box {
  std::size_t start = 0;
  std::size_t contents = 0;
  std::size_t end = 0;
};

std::uint64_t numberAt(std::string_view bytes, std::size_t place, std::size_t length) {
  std::uint64_t number = 0;
  for (const char byte : bytes.substr(place, length)) number = number << 8 | static_cast<unsigned char>(byte);
  return number;
}

// A new file is only found again after a power failure once its folder is on the disk as well. Some file
// systems do not take this; there is nothing to be done about it then.
void syncFolderOf(const std::string& path) {
  const int folder =
      ::open(stringByDeletingLastPathComponent(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  ::fsync(folder);
  ::close(folder);
}

// The first outermost box of that type.
std::optional<Box> findBox(std::string_view bytes, std::string_view type) {
  for (std::size_t place = 0; bytes.size() - place >= kBoxHeader;) {
    std::uint64_t size = numberAt(bytes, place, kBoxSize);
    std::size_t header = kBoxHeader;
    if (size == 1 && bytes.size() - place >= kLargeBoxHeader) {
      size = numberAt(bytes, place + kBoxHeader, 8);
      header = kLargeBoxHeader;
    }
    if (size < header || size > bytes.size() - place) return {};
    const std::size_t end = place + static_cast<std::size_t>(size);
    if (bytes.substr(place + kBoxSize, type.size()) == type) return Box{place, place + header, end};
    place = end;
  }
  return {};
}

std::string largeBoxHeader(std::string_view type, std::int64_t size) {
  std::string header = std::string("\0\0\0\1", 4).append(type);
  for (int shift = 56; shift >= 0; shift -= 8)
    header.push_back(static_cast<char>(static_cast<std::uint64_t>(size) >> shift & 0xff));
  return header;
}

}  // namespace

Result<std::unique_ptr<FragmentedFile>> FragmentedFile::open(const std::string& path,
                                                             std::vector<const AVCodecContext*> encoders) {
  // A pipe without a reader would keep the opening waiting; it is refused.
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
  std::unique_ptr<FragmentedFile> file(new FragmentedFile(descriptor, path));
  if (descriptor < 0) return file->error(errno);
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) return file->error(errno);
  if (!S_ISREG(status.st_mode)) return file->error(EINVAL);
  if (::ftruncate(descriptor, 0) != 0) return file->error(errno);
  file->encoders_ = std::move(encoders);
  file->fragments_ = MovieMuxer::open(file->encoders_, MovieMuxer::Kind::Fragments);
  file->index_ = MovieMuxer::open(file->encoders_, MovieMuxer::Kind::Index);
  if (!file->fragments_) return file->error(ENOTSUP);
  syncFolderOf(path);
  return file;
}

FragmentedFile::~FragmentedFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

Result<void> FragmentedFile::add(MoviePacket packet) {
  if (!packet || !fragments_->write(*packet)) return error(ENOTSUP);
  pending_.push_back(std::move(packet));
  return {};
}

Result<void> FragmentedFile::endFragment() {
  if (pending_.empty()) return {};
  // The first flush writes the head alone.
  if (!fragments_->flush() || (whole_ == 0 && !fragments_->flush())) return error(ENOTSUP);
  std::string fragment = fragments_->take();
  const std::optional<Box> description = findBox(fragment, kFragment);
  if (!description) return error(ENOTSUP);
  if (const int fault = lookForFault(); fault != 0) return error(fault);
  if (const int failure = bringToDisk(fragment, description->start + kBoxSize); failure != 0) {
    cutBack();
    return error(failure);
  }
  if (index_ && !addToIndex(fragment)) index_.reset();
  if (whole_ == 0) {
    const std::optional<Box> head = findBox(fragment, "moov");
    head_ = head ? static_cast<std::int64_t>(head->start) : kSector;
  }
  whole_ += static_cast<std::int64_t>(fragment.size());
  pending_.clear();
  return {};
}

// A file that was removed, or moved away with its folder, would be written for nobody; one that somebody else
// has cut is no movie any more.
int FragmentedFile::lookForFault() const {
  struct stat opened {};
  struct stat named {};
  if (::fstat(descriptor_, &opened) != 0) return errno;
  if (opened.st_nlink == 0) return ENOENT;
  if (::stat(path_.c_str(), &named) != 0 && (errno == ENOENT || errno == ENOTDIR)) return ENOENT;
  return opened.st_size < whole_ ? EIO : 0;
}

// Readers refuse a movie whose last fragment has half a description. So it is first written as one of the
// boxes that nobody looks into, and is given its name once it is there as a whole.
int FragmentedFile::bringToDisk(std::string& fragment, std::size_t name) {
  fragment.replace(name, kNothing.size(), kNothing);
  if (const int failure = write(fragment, whole_); failure != 0) return failure;
  if (::fdatasync(descriptor_) != 0) return errno;
  if (const int failure = write(kFragment, whole_ + static_cast<std::int64_t>(name)); failure != 0)
    return failure;
  return ::fdatasync(descriptor_) == 0 ? 0 : errno;
}

// A fragment holds its first track's samples in turn, then the second's. The index is only worth having when
// every sample is found where it is said to be.
bool FragmentedFile::addToIndex(std::string_view fragment) {
  const std::optional<Box> data = findBox(fragment, "mdat");
  if (!data) return false;
  std::stable_sort(pending_.begin(), pending_.end(), [](const MoviePacket& a, const MoviePacket& b) {
    return a->stream_index < b->stream_index;
  });
  std::size_t place = data->contents;
  for (const MoviePacket& packet : pending_) {
    const auto size = static_cast<std::size_t>(packet->size);
    if (size > data->end - place || std::memcmp(fragment.data() + place, packet->data, size) != 0)
      return false;
    if (!index_->seek(whole_ + static_cast<std::int64_t>(place)) || !index_->write(*packet)) return false;
    place += size;
  }
  return place == data->end;
}

Result<void> FragmentedFile::finish() {
  if (whole_ == 0)
    return cocoaError(
        kFileWriteUnknownError,
        filledIn(localized("Recording", "Nothing was recorded into “%1”."), {lastPathComponent(path_)}));
  const int fault = lookForFault();
  if (cutBack() == 0 && index_ && index_->finish(whole_)) {
    std::string index = index_->take();
    const std::optional<Box> box = findBox(index, "moov");
    if (box && box->start == 0) {
      index.resize(box->end);
      if (!becomePlain(index)) cutBack();
    }
  }
  return fault == 0 ? Result<void>() : error(fault);
}

// Behind the fragments the index is a second one, which readers of fragments pass over. What then makes a
// plain movie of the file, by hiding all that stands before the index, is a single write within one sector of
// the disk: it happens, or it does not.
bool FragmentedFile::becomePlain(const std::string& index) {
  const std::string header = largeBoxHeader("mdat", whole_ - head_);
  if (head_ + static_cast<std::int64_t>(header.size()) > kSector) return false;
  if (write(index, whole_) != 0 || ::fsync(descriptor_) != 0) return false;
  if (write(header, head_) == 0) ::fsync(descriptor_);
  return true;
}

int FragmentedFile::write(std::string_view bytes, std::int64_t offset) {
  while (!bytes.empty()) {
    const ssize_t written = ::pwrite(descriptor_, bytes.data(), bytes.size(), offset);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    if (written == 0) return ENOSPC;
    bytes.remove_prefix(static_cast<std::size_t>(written));
    offset += written;
  }
  return 0;
}

int FragmentedFile::cutBack() {
  return ::ftruncate(descriptor_, whole_) == 0 ? 0 : errno;
}

Error FragmentedFile::error(int number) const {
  const std::string name = lastPathComponent(path_);
  switch (number) {
    case ENOENT:
    case ENOTDIR:
      return cocoaError(kFileNoSuchFileError,
                        filledIn(localized("Movies", "The movie “%1” is missing."), {name}));
    case EACCES:
    case EPERM:
      return cocoaError(kFileWriteNoPermissionError,
                        filledIn(localized("Movies", "The movie “%1” may not be written."), {name}));
    case EROFS:
      return cocoaError(kFileWriteVolumeReadOnlyError,
                        filledIn(localized("Movies", "The disk of “%1” is read-only."), {name}));
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return cocoaError(kFileWriteOutOfSpaceError,
                        filledIn(localized("Movies", "There is no more room on the disk for “%1”."), {name}));
    default:
      return cocoaError(kFileWriteUnknownError,
                        filledIn(localized("Movies", "The movie “%1” could not be written: %2."),
                                 {name, std::generic_category().message(number)}));
  }
}

}  // namespace clipwave
