// Memory that holds the whole content of a file, in pages as large as the system offers.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>

namespace clipwave {

// Its bytes have no defined value at first. Given back to the system when it is destroyed.
class ContentBuffer {
 public:
  // Nothing when there is not so much memory.
  static std::optional<ContentBuffer> withSize(std::size_t size);

  char* data() { return bytes_.get(); }
  std::size_t size() const { return size_; }

 private:
  struct Free {
    void operator()(char* bytes) const;
  };
  ContentBuffer(char* bytes, std::size_t size) : bytes_(bytes), size_(size) {}

  std::unique_ptr<char, Free> bytes_;
  std::size_t size_;
};

}  // namespace clipwave
