#include "platform/dotmac/MultiStatus.h"

#include <cstdlib>

#include "platform/foundation/XMLDocument.h"

namespace clipwave {
namespace {

// Servers choose their prefixes, and nothing but the names of WebDAV is asked for.
std::string localName(const XMLElement& element) {
  const std::string name = element.name();
  return name.substr(name.find(':') + 1);
}

std::vector<XMLElement> childrenNamed(const XMLElement& parent, std::string_view name) {
  std::vector<XMLElement> found;
  for (const XMLElement& child : parent.elements())
    if (localName(child) == name) found.push_back(child);
  return found;
}

// Of a line such as "HTTP/1.1 404 Not Found"; 0 when it holds none.
long statusOfLine(const std::string& line) {
  const std::size_t blank = line.find(' ', line.find("HTTP/"));
  return blank == line.npos ? 0 : std::atol(line.c_str() + blank);
}

ResourceStatus resourceOf(const XMLElement& response) {
  ResourceStatus resource;
  for (const XMLElement& status : childrenNamed(response, "status"))
    resource.status = statusOfLine(status.stringValue());
  for (const XMLElement& propstat : childrenNamed(response, "propstat"))
    for (const XMLElement& prop : childrenNamed(propstat, "prop"))
      for (const XMLElement& type : childrenNamed(prop, "resourcetype"))
        resource.isFolder = resource.isFolder || !childrenNamed(type, "collection").empty();
  return resource;
}

}  // namespace

std::optional<std::vector<ResourceStatus>> resourcesOfMultiStatus(std::string_view body) {
  const auto document = XMLDocument::parse(body, XMLDocument::Parsing::Tolerant);
  if (!document || localName(document->rootElement()) != "multistatus") return std::nullopt;
  std::vector<ResourceStatus> resources;
  for (const XMLElement& response : childrenNamed(document->rootElement(), "response"))
    resources.push_back(resourceOf(response));
  return resources;
}

}  // namespace clipwave
