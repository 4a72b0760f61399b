// What the colours of a picture mean, where it says so itself and where it does not. Internal to this room.
#pragma once

#include "platform/quicktime/MovieInput.h"

namespace clipwave {

// As the libraries number colour spaces. Unmarked pictures of many rows are meant as those of HDTV, others as
// those of older television.
int colourSpaceOfHeight(int rows);
int colourSpaceOf(const AVFrame& picture);

// Tells a scaler what the numbers of its source mean, and into which space they go. A source of a format that
// always has the full range keeps it.
void setSourceColours(SwsContext& scaler, int space, bool hasFullRange);
void setColours(SwsContext& scaler, int sourceSpace, bool sourceHasFullRange, int targetSpace);

}  // namespace clipwave
