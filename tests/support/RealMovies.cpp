#include "tests/support/RealMovies.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace clipwave::testing {

std::string makeMovie(const TemporaryFolder& folder, std::string_view name, double seconds) {
  const std::string path = folder / name;
  const std::string length = ":duration=" + std::to_string(seconds);
  const bool hasPicture = !name.ends_with(".mp3") && !name.ends_with(".m4a") && !name.ends_with(".wav");
  // Long movies are for their duration's sake: a silent frame every ten seconds will do.
  const bool isLong = hasPicture && seconds > 60;
  std::vector<std::string> arguments;
  if (!isLong) arguments = {"-f", "lavfi", "-i", "sine=sample_rate=8000" + length};
  if (hasPicture) {
    const std::string pattern = std::string("testsrc2=size=64x48:rate=") + (isLong ? "1/10" : "10") + length;
    arguments.insert(arguments.end(), {"-f", "lavfi", "-i", pattern, "-c:v", "mpeg4"});
  }
  arguments.push_back(path);
  runFFmpeg(std::move(arguments));
  return path;
}

void runFFmpeg(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"ffmpeg", "-nostdin", "-loglevel", "error", "-y"});
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  pid_t tool = 0;
  int status = 0;
  if (::posix_spawnp(&tool, "ffmpeg", nullptr, nullptr, argv.data(), environ) != 0 ||
      ::waitpid(tool, &status, 0) != tool || status != 0)
    throw std::runtime_error("ffmpeg could not make " + arguments.back());
}

}  // namespace clipwave::testing
