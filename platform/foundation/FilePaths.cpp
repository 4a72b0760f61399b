// The pure path rules of FileManager.h.
#include "platform/foundation/FileManager.h"

namespace clipwave {
namespace {

std::string_view withoutTrailingSlashes(std::string_view path) {
  while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  return path;
}

// Where the last component of a path without trailing slashes begins.
std::size_t lastComponentStart(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos || path == "/" ? 0 : slash + 1;
}

// Where the extension's dot stands in a path without trailing slashes; npos without an extension.
std::size_t extensionDot(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos || dot <= lastComponentStart(path) || dot + 1 == path.size()) {
    return std::string_view::npos;
  }
  return dot;
}

}  // namespace

std::vector<std::string> pathComponents(std::string_view path) {
  std::vector<std::string> components;
  if (path.starts_with('/')) components.emplace_back("/");
  while (!path.empty()) {
    const std::string_view component = path.substr(0, path.find('/'));
    if (!component.empty()) components.emplace_back(component);
    path.remove_prefix(std::min(path.size(), component.size() + 1));
  }
  return components;
}

std::string lastPathComponent(std::string_view path) {
  path = withoutTrailingSlashes(path);
  return std::string(path.substr(lastComponentStart(path)));
}

std::string stringByDeletingLastPathComponent(std::string_view path) {
  path = withoutTrailingSlashes(path);
  if (path == "/") return "/";
  return std::string(withoutTrailingSlashes(path.substr(0, lastComponentStart(path))));
}

std::string stringByAppendingPathComponent(std::string_view path, std::string_view component) {
  std::string joined(withoutTrailingSlashes(path));
  while (component.starts_with('/')) component.remove_prefix(1);
  if (!component.empty() && !joined.empty() && joined != "/") joined += '/';
  return joined.append(withoutTrailingSlashes(component));
}

std::string pathExtension(std::string_view path) {
  path = withoutTrailingSlashes(path);
  const std::size_t dot = extensionDot(path);
  return dot == std::string_view::npos ? std::string() : std::string(path.substr(dot + 1));
}

std::string stringByDeletingPathExtension(std::string_view path) {
  path = withoutTrailingSlashes(path);
  return std::string(path.substr(0, extensionDot(path)));
}

}  // namespace clipwave
