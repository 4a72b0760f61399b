// Asks, file by file, what becomes of files that already exist at the destination; shared by all back-ends.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/Application.h"
#include "platform/foundation/UserDefaultsController.h"
#include "transfer/CopyBackEnd.h"

namespace clipwave {

// The entries of `files` that are to be copied: without those answered "Keep Existing", and all of them,
// without a question, where the default "noConfirm" is YES. Nothing when the user answered "Cancel". `exists`
// tells whether anything exists at a destination file path (`toDirectory` + "/" + filename).
std::optional<std::vector<CopyEntry>> askAboutExistingFiles(
    Application& application, const UserDefaultsController& defaults, const std::vector<CopyEntry>& files,
    std::string_view toDirectory, const std::function<bool(const std::string& path)>& exists);

}  // namespace clipwave
