// Small real movies, made on the spot with the FFmpeg command-line tool.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/TemporaryFolder.h"

namespace clipwave::testing {

// Makes a movie of `seconds`, a moving pattern with a tone (in .mp3, .m4a and .wav the tone only), and
// answers its path. The container follows from the name's extension. Throws std::runtime_error when the tool
// fails.
std::string makeMovie(const TemporaryFolder& folder, std::string_view name, double seconds = 1);

// Runs the tool with arguments of the test's own, without quotes; the last names what is made.
void runFFmpeg(const std::vector<std::string>& arguments);

// What the probing tool says of a movie's `entries` ("format=duration"): values in lines of commas. "" for a
// file that it cannot open.
std::string probeMovie(std::string_view path, std::string_view entries);
// Whether every picture and sound of the movie can be decoded without a complaint.
bool canBePlayed(std::string_view path);

}  // namespace clipwave::testing
