#include "platform/foundation/ContentBuffer.h"

#include <sys/mman.h>

#include <cstdlib>
#include <limits>

namespace clipwave {
namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20;

}  // namespace

void ContentBuffer::Free::operator()(char* bytes) const {
  std::free(bytes);
}

std::optional<ContentBuffer> ContentBuffer::withSize(std::size_t size) {
  if (size < kLargePage) {
    auto* bytes = static_cast<char*>(std::malloc(size + 1));
    if (bytes == nullptr) return std::nullopt;
    return ContentBuffer(bytes, size);
  }
  if (size > std::numeric_limits<std::size_t>::max() - kLargePage) return std::nullopt;
  const std::size_t rounded = (size + kLargePage - 1) / kLargePage * kLargePage;
  auto* bytes = static_cast<char*>(std::aligned_alloc(kLargePage, rounded));
  if (bytes == nullptr) return std::nullopt;
  // First use of memory in small pages costs more than reading a cached file into it. A system without large
  // pages refuses, and the buffer serves all the same.
  ::madvise(bytes, rounded, MADV_HUGEPAGE);
  return ContentBuffer(bytes, size);
}

}  // namespace clipwave
