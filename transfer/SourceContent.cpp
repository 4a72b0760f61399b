#include "transfer/SourceContent.h"

#include <algorithm>
#include <chrono>
#include <system_error>

namespace clipwave {
namespace {

constexpr std::size_t kHelpers = 2;
constexpr std::chrono::microseconds kWait{500};

}  // namespace

SourceContent::SourceContent(std::unique_ptr<FileHandle> file, std::int64_t wholeFileLimit)
    : file_(std::move(file)),
      expectedLength_(file_ ? std::max<std::int64_t>(file_->size(), 0) : 0),
      length_(expectedLength_) {
  if (expectedLength_ <= wholeFileLimit) {
    whole_ = ContentBuffer::withSize(static_cast<std::size_t>(expectedLength_));
  }
}

SourceContent::~SourceContent() {
  nextPiece_ = expectedLength_;
  for (std::thread& helper : helpers_) helper.join();
}

bool SourceContent::readOn() {
  if (!whole_) return true;
  if (expectedLength_ > kPieceLength && nextPiece_ == 0 && helpers_.empty()) startHelpers();
  if (helpers_.empty()) {
    readPiece();
    return nextPiece_ >= expectedLength_;
  }
  // The turns that wait for the helpers should leave the processor to them.
  if (reading_ > 0) std::this_thread::sleep_for(kWait);
  return reading_ == 0;
}

std::string_view SourceContent::bytesAt(std::int64_t offset, std::size_t length) {
  if (offset >= length_) return {};
  length =
      static_cast<std::size_t>(std::min<std::int64_t>(static_cast<std::int64_t>(length), length_ - offset));
  if (whole_) return {whole_->data() + offset, length};
  if (asked_.size() < length) asked_.resize(length);
  const std::size_t read = file_->readDataAtOffset(offset, asked_.data(), length).value_or(0);
  if (read < length) endAt(offset + static_cast<std::int64_t>(read));
  return {asked_.data(), read};
}

// Takes the next piece that nobody has taken and reads it; false when there is none.
bool SourceContent::readPiece() {
  const std::int64_t offset = nextPiece_.fetch_add(kPieceLength);
  if (offset >= expectedLength_) return false;
  const auto length = static_cast<std::size_t>(std::min(kPieceLength, expectedLength_ - offset));
  const std::size_t read = file_->readDataAtOffset(offset, whole_->data() + offset, length).value_or(0);
  if (read < length) endAt(offset + static_cast<std::int64_t>(read));
  return true;
}

// The first use of so much memory takes longer than the reading, too long for a turn of the run loop; two
// threads need half the time of one.
void SourceContent::startHelpers() {
  try {
    while (helpers_.size() < kHelpers) {
      ++reading_;
      helpers_.emplace_back([this] {
        while (readPiece()) {
        }
        --reading_;
      });
    }
  } catch (const std::system_error&) {
    // No further thread is to be had: the one there is reads alone, or else the turns of the run loop do.
    --reading_;
  }
}

// Pieces are taken in order, so that all bytes before the earliest end have been read.
void SourceContent::endAt(std::int64_t offset) {
  std::int64_t end = length_;
  while (offset < end && !length_.compare_exchange_weak(end, offset)) {
  }
  nextPiece_ = expectedLength_;
}

}  // namespace clipwave
