#include "ui/MovieFileReader.h"

#include <filesystem>

namespace clipwave {

MovieFileReport MovieFileReader::read(const MovieFileRequest& request) {
  MovieFileReport report{.episode = request.episode};
  std::string path = request.path;
  // An alias that leads nowhere means a file that is gone, whatever lies at the path that was stored once.
  if (request.alias) {
    auto resolved = aliases_->resolveAlias(*request.alias);
    path = resolved ? std::move(resolved->path) : std::string();
    if (resolved) report.updatedAlias = std::move(resolved->updatedAlias);
  }
  std::error_code error;
  if (path.empty() || !std::filesystem::exists(path, error)) {
    report.trouble = MovieTrouble::Missing;
    return report;
  }
  const auto bytes = std::filesystem::file_size(path, error);
  if (!error) report.bytes = static_cast<std::int64_t>(bytes);
  if (!request.opensMovie) return report;
  report.movie = movies_.movieWithPath(path);
  if (!report.movie) report.trouble = MovieTrouble::NotAMovie;
  return report;
}

}  // namespace clipwave
