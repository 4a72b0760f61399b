// A file as large as a movie, and the program that moves it for reference.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace clipwave::bench {

// Bytes that nothing on the way can make less of.
inline void makeLargeMovie(const std::string& path, std::size_t megabytes) {
  std::ofstream out(path, std::ios::binary);
  std::string megabyte(1 << 20, '\0');
  unsigned seed = 1;
  for (char& c : megabyte) c = static_cast<char>((seed = seed * 1664525U + 1013904223U) >> 24);
  for (std::size_t i = 0; i < megabytes; ++i)
    out.write(megabyte.data(), static_cast<std::streamsize>(megabyte.size()));
}

// Runs the command to its end, which has to be a good one.
inline void runReference(std::vector<std::string> command) {
  std::vector<char*> argv;
  for (std::string& word : command) argv.push_back(word.data());
  argv.push_back(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    ::execvp(argv[0], argv.data());
    ::_exit(127);
  }
  int status = 1;
  ::waitpid(child, &status, 0);
  if (status != 0) std::abort();
}

}  // namespace clipwave::bench
