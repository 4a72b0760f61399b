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

class SVGIconEngine final : public QIconEngine {
 public:
  explicit SVGIconEngine(QByteArray image) : image_(std::move(image)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
    const bool isSymbol = image_.contains(kColour);
    QByteArray coloured = image_;
    if (isSymbol) coloured.replace(kColour, textColour(mode).name().toLatin1());
    QSvgRenderer renderer(coloured);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    painter->save();
    if (!isSymbol && mode == QIcon::Disabled) painter->setOpacity(0.4);
    renderer.render(painter, rect);
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
  registerImages();
  QFile file(QLatin1String(":/images/") + name + QLatin1String(".svg"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QIcon(new SVGIconEngine(file.readAll()));
}

}  // namespace clipwave
