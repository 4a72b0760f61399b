#include "desktop/ArtworkWell.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>
#include <QThreadPool>
#include <QUrl>
#include <utility>

#include "desktop/SymbolicIcon.h"
#include "desktop/Text.h"

namespace clipwave {
namespace {

constexpr int kLargestSide = 1024;
constexpr int kSymbolSize = 32;
constexpr double kRadius = 6;

}  // namespace

ArtworkWell::ArtworkWell(QWidget* parent) : QWidget(parent) {
  connect(&decoding_, &QFutureWatcherBase::finished, this, [this] {
    // Nothing comes of a decoding that was given up.
    if (decoding_.future().resultCount() > 0) show(decoding_.result());
  });
  show({});
}

void ArtworkWell::attach(URLLoading& loading) {
  loading_ = &loading;
  load();
}

void ArtworkWell::setAddress(const QString& address) {
  if (address_ == address) return;
  address_ = address;
  load();
}

void ArtworkWell::load() {
  load_.cancel();
  decoding_.setFuture({});
  show({});
  const QUrl url(address_);
  const QString scheme = url.scheme().toLower();
  if (address_.isEmpty()) return;
  if (address_.startsWith(QLatin1Char('/'))) {
    decodeLater({{}, address_});
  } else if (scheme == QLatin1String("file")) {
    decodeLater({{}, url.toLocalFile()});
  } else if (scheme == QLatin1String("http") || scheme == QLatin1String("https")) {
    if (loading_) loadFromWeb();
  } else {
    show({{}, tr("“%1” is not the address of a picture.").arg(address_)});
  }
}

void ArtworkWell::loadFromWeb() {
  const QByteArray url = QUrl(address_).toEncoded();
  load_ = loading_->loadDataInBackground(url.toStdString(), [this](const Result<LoadedData>& loaded) {
    if (loaded) {
      decodeLater({QByteArray::fromStdString(loaded.value().bytes), {}});
    } else {
      show({{}, toQString(loaded.error().localizedDescription)});
    }
  });
}

// A camera's picture takes a tenth of a second to decode, a file on a sleeping disk longer to come.
void ArtworkWell::decodeLater(Source source) {
  decoding_.setFuture(
      QtFuture::makeReadyFuture(std::move(source)).then(QThreadPool::globalInstance(), &ArtworkWell::decode));
}

// Runs on a thread of the pool.
ArtworkWell::Picture ArtworkWell::decode(const Source& source) {
  if (!source.path.isEmpty() && !QFileInfo(source.path).isFile())
    return {{}, tr("There is no file “%1”.").arg(source.path)};
  QBuffer buffer;
  buffer.setData(source.bytes);
  QImageReader reader;
  if (source.path.isEmpty()) {
    reader.setDevice(&buffer);
  } else {
    reader.setFileName(source.path);
    reader.setDecideFormatFromContent(true);
  }
  reader.setAutoTransform(true);
  if (const QSize size = reader.size(); size.width() > kLargestSide || size.height() > kLargestSide)
    reader.setScaledSize(size.scaled(kLargestSide, kLargestSide, Qt::KeepAspectRatio));
  QImage image = reader.read();
  if (image.isNull()) return {{}, tr("The picture cannot be read: %1.").arg(reader.errorString())};
  return {std::move(image), {}};
}

void ArtworkWell::show(Picture picture) {
  picture_ = std::move(picture);
  setToolTip(hasFailed() ? picture_.problem : address_);
  setAccessibleDescription(hasFailed() ? picture_.problem : address_.isEmpty() ? tr("No picture") : address_);
  update();
}

void ArtworkWell::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  QPainterPath outline;
  outline.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
  painter.fillPath(outline, palette().brush(QPalette::Base));
  if (image().isNull()) {
    const QIcon symbol = imageNamed(hasFailed() ? QStringLiteral("trouble") : QStringLiteral("image"));
    QRect place(0, 0, kSymbolSize, kSymbolSize);
    place.moveCenter(rect().center());
    symbol.paint(&painter, place, Qt::AlignCenter, QIcon::Disabled);
  } else {
    painter.setClipPath(outline);
    QSizeF size = QSizeF(image().size()).scaled(this->size(), Qt::KeepAspectRatio);
    QRectF place({}, size);
    place.moveCenter(QRectF(rect()).center());
    painter.drawImage(place, image());
    painter.setClipping(false);
  }
  QColor line = palette().color(QPalette::WindowText);
  line.setAlphaF(0.24F);
  painter.strokePath(outline, QPen(line, 1));
}

}  // namespace clipwave
