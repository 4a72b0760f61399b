// The pictures of the instructions: every window alone, and what the program asks.
#pragma once

#include "desktop/pictures/Photographer.h"

namespace clipwave {

// Of the library that scripts/make-sample-library makes.
void takeInstructionPictures(Photographer& camera);
// Of a library that nobody has used yet, up to its first report. The movies lie in Movies/Raw of the home
// folder.
void takeFirstPodcast(Photographer& camera);

}  // namespace clipwave
