#include "desktop/DraggedFiles.h"

#include <QSysInfo>
#include <QUrl>

namespace clipwave {
namespace {

bool isOnThisMachine(const QUrl& url) {
  const QString host = url.host();
  return url.isLocalFile() && (host.isEmpty() || host == "localhost" ||
                               host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0);
}

// Byte for byte: a name need not be text in any encoding.
std::string pathOf(const QUrl& url) {
  return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toUtf8()).toStdString();
}

// The program asks for sources that allow links, for all that it takes of a file is where it is. Many file
// managers offer copies without links; who lets a file be copied lets it be referred to.
unsigned sourceMask(Qt::DropActions actions) {
  unsigned mask = NSDragOperationNone;
  if (actions & Qt::CopyAction) mask |= NSDragOperationCopy | NSDragOperationLink;
  if (actions & Qt::LinkAction) mask |= NSDragOperationLink;
  if (actions & Qt::MoveAction) mask |= NSDragOperationMove | NSDragOperationGeneric;
  return mask;
}

}  // namespace

std::optional<DraggingInfo> draggedFiles(const QMimeData& mime, Qt::DropActions possibleActions) {
  const unsigned mask = sourceMask(possibleActions);
  const QList<QUrl> urls = mime.urls();
  if (urls.isEmpty() || (mask & NSDragOperationLink) == 0) return std::nullopt;
  Array paths;
  for (const QUrl& url : urls) {
    if (!isOnThisMachine(url)) return std::nullopt;
    paths.emplace_back(pathOf(url));
  }
  DraggingInfo info;
  info.draggingPasteboard.setPropertyList(std::move(paths), NSFilenamesPboardType);
  info.draggingSourceOperationMask = mask;
  return info;
}

Qt::DropAction acknowledgement(Qt::DropActions possibleActions) {
  return possibleActions & Qt::LinkAction ? Qt::LinkAction : Qt::CopyAction;
}

}  // namespace clipwave
