// The one rule that turns a movie file into a new episode of the selected channel.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/Vodcast.h"
#include "platform/appkit/ArrayController.h"

namespace clipwave {

// The title: the prefix and the file's name without its directory and last extension.
std::string episodeTitleFromPath(std::string_view prefix, std::string_view path);
// Makes an episode through the list, inserts it at the top, then sets its path and its title. Null when the
// list has no store.
Vodcast* addEpisodeFromFile(ArrayController& vodcastController, std::string_view prefix,
                            std::string_view path);

}  // namespace clipwave
