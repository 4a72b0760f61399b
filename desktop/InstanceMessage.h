// What a second start says to the first: its files and addresses, and its activation token, in one frame of
// bytes.
#pragma once

#include <QByteArray>
#include <optional>
#include <string>
#include <vector>

namespace clipwave {

struct InstanceMessage {
  std::vector<std::string> items;  // absolute paths, and addresses of feeds
  QByteArray activationToken;
};

// A mark, the length of the rest (four bytes, the highest first), then the token and the items, a NUL behind
// each.
QByteArray frameOf(const InstanceMessage& message);

// What has come so far, from anyone: a whole message; or nothing, and `isBroken` says whether more bytes
// could still make it one.
std::optional<InstanceMessage> messageFrom(const QByteArray& bytes, bool* isBroken);

}  // namespace clipwave
