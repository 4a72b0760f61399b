// Starts programs that live on by themselves. Internal to this room.
#pragma once

#include <string>
#include <vector>

namespace clipwave {

// Starts `arguments[0]` (looked for in $PATH when it bears no "/") without a shell and without waiting for
// it: in a session of its own, with no open file of this process, nothing to read and no place in this
// process's output. It is nobody's child to be reaped here. False when it could not be started.
bool startDetachedProcess(const std::vector<std::string>& arguments);

}  // namespace clipwave
