// A library whose store is in memory, made anew for each input.
#pragma once

#include "fuzz/MemoryFiles.h"
#include "fuzz/Require.h"
#include "tests/support/FakeLibraryHost.h"

namespace clipwave::fuzz {

// Only the lock lies on the disk. Paths in alias records are looked up there too, which is not searched for
// what is missing.
class MemoryLibrary final : public testing::FakeLibraryHost {
 public:
  MemoryLibrary() : FakeLibraryHost(std::make_unique<MemoryFiles>(), {.directoryEntries = 0}) {}
  std::string storeText() { return *fileManager.contentsAtPath(storePath()); }
};

}  // namespace clipwave::fuzz
