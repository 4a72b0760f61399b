// Times two ways of doing a thing in turn and answers how they compare.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace clipwave::bench {

inline double secondsOf(const std::function<void()>& function) {
  // What was freed in small pieces is joined at the next large request, whoever makes it: without this one,
  // one side would pay for the other's pieces.
  void* volatile large = std::malloc(1 << 20);
  std::free(large);
  const auto start = std::chrono::steady_clock::now();
  function();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

inline double percentile(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  return values[std::min(values.size() - 1,
                         static_cast<std::size_t>(share * static_cast<double>(values.size())))];
}

struct Comparison {
  double ours = 0;       // median seconds
  double reference = 0;  // median seconds
  double ratio = 0;      // median of the pairs' ratios
};

// Runs the two in turn, `rounds` times after one round that is not counted, so that a machine that drifts
// drifts under both. Each answers the seconds that count.
inline Comparison compareSeconds(int rounds, const std::function<double()>& ours,
                                 const std::function<double()>& reference) {
  std::vector<double> a;
  std::vector<double> b;
  std::vector<double> ratios;
  for (int round = 0; round <= rounds; ++round) {
    const double first = ours();
    const double second = reference();
    if (round == 0) continue;
    a.push_back(first);
    b.push_back(second);
    ratios.push_back(first / second);
  }
  return {median(a), median(b), median(ratios)};
}

inline Comparison compare(int rounds, const std::function<void()>& ours,
                          const std::function<void()>& reference) {
  return compareSeconds(
      rounds, [&] { return secondsOf(ours); }, [&] { return secondsOf(reference); });
}

inline void report(const std::string& what, const std::string& reference, const Comparison& c,
                   const std::string& aim) {
  std::printf("%-58s %8.2f ms   %-34s %8.2f ms   ratio %.2f   (aim %s)\n", what.c_str(), c.ours * 1e3,
              reference.c_str(), c.reference * 1e3, c.ratio, aim.c_str());
  std::fflush(stdout);
}

}  // namespace clipwave::bench
