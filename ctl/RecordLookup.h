// Finds the channels and episodes that a command line names, by title or by id.
#pragma once

#include <string>
#include <string_view>

#include "model/Channel.h"
#include "model/Vodcast.h"
#include "platform/appkit/ArrayController.h"
#include "platform/foundation/Error.h"

namespace clipwave {

// A title, as it is or as the companion prints it on one line, or else an id. Fails when nothing or more than
// one record is meant; the error names the candidates.
Result<Channel*> findChannel(ArrayController& channels, std::string_view name);
Result<Vodcast*> findEpisode(Channel& channel, std::string_view name);
// "CHANNEL" or "CHANNEL/EPISODE"; titles may hold slashes themselves.
Result<ManagedObject*> findRecord(ArrayController& channels, std::string_view name);

}  // namespace clipwave
