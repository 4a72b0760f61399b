#include "desktop/SymbolicIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

// Out of every namespace, as the macro wants it; a static library's resources are linked in only this way.
static void registerImages() {
  Q_INIT_RESOURCE(images);
}

namespace clipwave {
namespace {

constexpr char kColour[] = "currentColor";

QColor textColour(QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  if (mode == QIcon::Selected) return palette.color(QPalette::Active, QPalette::HighlightedText);
  return palette.color(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
}

QByteArray contentOf(const QString& name) {
  registerImages();
  QFile file(QLatin1String(":/images/") + name + QLatin1String(".svg"));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void render(QPainter& painter, QByteArray image, const QRectF& rect, const QColor& colour) {
  QSvgRenderer renderer(image.replace(kColour, colour.name().toLatin1()));
  renderer.setAspectRatioMode(Qt::KeepAspectRatio);
  renderer.render(&painter, rect);
}

class SVGIconEngine final : public QIconEngine {
 public:
  explicit SVGIconEngine(QByteArray image) : image_(std::move(image)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
    painter->save();
    if (!image_.contains(kColour) && mode == QIcon::Disabled) painter->setOpacity(0.4);
    render(*painter, image_, rect, textColour(mode));
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new SVGIconEngine(image_); }

 private:
  const QByteArray image_;
};

}  // namespace

QIcon imageNamed(const QString& name) {
  const QByteArray image = contentOf(name);
  return image.isEmpty() ? QIcon() : QIcon(new SVGIconEngine(image));
}

void paintImage(QPainter& painter, const QString& name, const QRectF& rect, const QColor& colour) {
  if (const QByteArray image = contentOf(name); !image.isEmpty()) render(painter, image, rect, colour);
}

}  // namespace clipwave
