// Alias records: a block of bytes, kept beside a path, that finds the file again after it was moved or
// renamed.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/Clock.h"
#include "platform/foundation/Error.h"

namespace clipwave {

struct ResolvedAlias {
  std::string path;
  // The record to store instead of the one that was resolved, when it had to be updated (the file was moved,
  // or replaced in place).
  std::optional<std::string> updatedAlias;
};

class AliasManager {
 public:
  virtual ~AliasManager() = default;
  // FSPathMakeRef and FSNewAlias in one: the record of the file at an absolute path. The error's code is the
  // system's own; it says why no file reference could be made.
  virtual Result<std::string> newAlias(std::string_view path) = 0;
  // FSResolveAlias: where the file is now, or nothing when it is gone (or `alias` is no record of ours).
  virtual std::optional<ResolvedAlias> resolveAlias(std::string_view alias) = 0;
};

// How much looking for a moved file may cost.
struct AliasSearchBudget {
  int directoryEntries = 50'000;  // looked at in one scan of a volume's neighbourhood
  Seconds time = Seconds(0.25);   // spent on one scan
  Seconds rest = Seconds(30);     // for which a scan's findings serve, before another scan is begun
};

// A file is identified by its volume, its inode and its path. First the path is asked (one stat): what it
// names is the file, and where volume or inode differ the file was replaced in place and the record is
// updated. Otherwise the inode is looked for on the same volume: in the file's old folder first, then
// outwards, within the budget. One scan serves every record that is resolved until `rest` is over, so that
// ten thousand missing files cost one scan; a record that was not found is not looked for again before that,
// but its path is asked for at every call. Paths have up to 4095 bytes.
std::unique_ptr<AliasManager> makeAliasManager(const Clock& clock, AliasSearchBudget budget = {});

}  // namespace clipwave
