#include "tests/support/RealMovies.h"

#include <cstdio>
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

std::string probeMovie(std::string_view path, std::string_view entries) {
  const std::string command =
      "ffprobe -v quiet -of csv=p=0 -show_entries '" + std::string(entries) + "' '" + std::string(path) + "'";
  FILE* const pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("failed: " + command);
  std::string facts(4096, '\0');
  facts.resize(std::fread(facts.data(), 1, facts.size(), pipe));
  ::pclose(pipe);
  return facts;
}

bool canBePlayed(std::string_view path) {
  const std::string command =
      "ffmpeg -nostdin -v error -xerror -i '" + std::string(path) + "' -f null - >/dev/null 2>&1";
  return std::system(command.c_str()) == 0;
}

}  // namespace clipwave::testing
