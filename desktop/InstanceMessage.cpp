#include "desktop/InstanceMessage.h"

#include <QList>
#include <QtEndian>
#include <algorithm>

#include "publish/SubscriptionLinks.h"

namespace clipwave {
namespace {

constexpr char kMark[] = "CWI1";
constexpr qsizetype kMarkLength = 4;
constexpr qsizetype kHeadLength = kMarkLength + 4;
// More than a command line can hold.
constexpr quint32 kLongestBody = 32 * 1024 * 1024;

}  // namespace

QByteArray frameOf(const InstanceMessage& message) {
  QByteArray body = message.activationToken + '\0';
  for (const std::string& item : message.items)
    body.append(item.data(), static_cast<qsizetype>(item.size())).append('\0');
  char length[4];
  qToBigEndian(static_cast<quint32>(body.size()), length);
  return QByteArray(kMark, kMarkLength).append(length, 4) + body;
}

std::optional<InstanceMessage> messageFrom(const QByteArray& bytes, bool* isBroken) {
  const qsizetype markLength = std::min(bytes.size(), kMarkLength);
  *isBroken = bytes.left(markLength) != QByteArray(kMark, markLength);
  if (*isBroken || bytes.size() < kHeadLength) return std::nullopt;
  const auto length = qFromBigEndian<quint32>(bytes.constData() + kMarkLength);
  *isBroken = length == 0 || length > kLongestBody || bytes.size() > kHeadLength + qsizetype{length};
  if (*isBroken || bytes.size() < kHeadLength + qsizetype{length}) return std::nullopt;

  *isBroken = !bytes.endsWith('\0');
  if (*isBroken) return std::nullopt;
  QList<QByteArray> parts = bytes.sliced(kHeadLength).chopped(1).split('\0');
  InstanceMessage message{.items = {}, .activationToken = parts.takeFirst()};
  for (const QByteArray& item : parts) {
    *isBroken = !item.startsWith('/') && !feedURLForAddress(item.toStdString());
    if (*isBroken) return std::nullopt;
    message.items.push_back(item.toStdString());
  }
  return message;
}

}  // namespace clipwave
