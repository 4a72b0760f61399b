#include "tests/support/RealMovies.h"

#include <cstdlib>
#include <stdexcept>

namespace clipwave::testing {

std::string makeMovie(const TemporaryFolder& folder, std::string_view name, double seconds) {
  const std::string path = folder / name;
  const std::string length = ":duration=" + std::to_string(seconds);
  const bool hasPicture = !name.ends_with(".mp3") && !name.ends_with(".m4a") && !name.ends_with(".wav");
  std::vector<std::string> arguments = {"-f", "lavfi", "-i", "sine=sample_rate=8000" + length};
  if (hasPicture) {
    const std::string pattern = "testsrc2=size=64x48:rate=10" + length;
    arguments.insert(arguments.end(), {"-f", "lavfi", "-i", pattern, "-c:v", "mpeg4"});
  }
  arguments.push_back(path);
  runFFmpeg(arguments);
  return path;
}

void runFFmpeg(const std::vector<std::string>& arguments) {
  std::string command = "ffmpeg -nostdin -loglevel error -y";
  for (const std::string& argument : arguments) command += " '" + argument + "'";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

}  // namespace clipwave::testing
