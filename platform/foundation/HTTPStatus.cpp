#include "platform/foundation/HTTPStatus.h"

#include <string_view>
#include <utility>

namespace clipwave {
namespace {

constexpr std::pair<long, std::string_view> kNames[] = {{204, "No Content"},
                                                        {205, "Reset Content"},
                                                        {206, "Partial Content"},
                                                        {300, "Multiple Choices"},
                                                        {301, "Moved Permanently"},
                                                        {302, "Found"},
                                                        {303, "See Other"},
                                                        {304, "Not Modified"},
                                                        {307, "Temporary Redirect"},
                                                        {308, "Permanent Redirect"},
                                                        {400, "Bad Request"},
                                                        {401, "Unauthorized"},
                                                        {402, "Payment Required"},
                                                        {403, "Forbidden"},
                                                        {404, "Not Found"},
                                                        {405, "Method Not Allowed"},
                                                        {406, "Not Acceptable"},
                                                        {407, "Proxy Authentication Required"},
                                                        {408, "Request Timeout"},
                                                        {409, "Conflict"},
                                                        {410, "Gone"},
                                                        {411, "Length Required"},
                                                        {412, "Precondition Failed"},
                                                        {413, "Content Too Large"},
                                                        {414, "URI Too Long"},
                                                        {415, "Unsupported Media Type"},
                                                        {422, "Unprocessable Content"},
                                                        {423, "Locked"},
                                                        {424, "Failed Dependency"},
                                                        {429, "Too Many Requests"},
                                                        {431, "Request Header Fields Too Large"},
                                                        {451, "Unavailable For Legal Reasons"},
                                                        {500, "Internal Server Error"},
                                                        {501, "Not Implemented"},
                                                        {502, "Bad Gateway"},
                                                        {503, "Service Unavailable"},
                                                        {504, "Gateway Timeout"},
                                                        {507, "Insufficient Storage"}};

}  // namespace

std::string httpStatusText(long status) {
  std::string text = std::to_string(status);
  for (const auto& [known, name] : kNames)
    if (known == status) text.append(" ").append(name);
  return text;
}

}  // namespace clipwave
