// The columns of the library's lists, and what their tables say while they are empty.
#pragma once

#include <vector>

#include "desktop/RecordTable.h"
#include "platform/appkit/ArrayController.h"

namespace clipwave {

std::vector<Column> episodeColumns();
std::vector<Column> channelColumns();
std::vector<Column> imageColumns();
// What an episode list without rows says, with this selection of channels.
QString emptyEpisodeListText(const ArrayController& channels);
// Keeps that text up to date for as long as the answer lives. Both must outlive it.
Observation followEmptyText(RecordTable& episodes, ArrayController& channels);

}  // namespace clipwave
