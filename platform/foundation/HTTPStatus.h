// The statuses of HTTP and WebDAV in words.
#pragma once

#include <string>

namespace clipwave {

// "404 Not Found"; the number alone where it has no name.
std::string httpStatusText(long status);

}  // namespace clipwave
