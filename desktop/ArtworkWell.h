// Shows the picture at an address, loaded and decoded beside the window's life.
#pragma once

#include <QFutureWatcher>
#include <QImage>
#include <QWidget>

#include "platform/foundation/URLLoading.h"

namespace clipwave {

class ArtworkWell final : public QWidget {
  Q_OBJECT

 public:
  explicit ArtworkWell(QWidget* parent = nullptr);
  // What loads pictures from the web, from now on; must outlive this widget. Without it there are none.
  void attach(URLLoading& loading);
  // The absolute path of a file, or a file, http or https URL; empty for no picture. What was under way for
  // another address is dropped. A picture that cannot be shown is told in the tooltip.
  void setAddress(const QString& address);
  QString address() const { return address_; }
  // Null while there is none; at most of the size that a well on the screen can use.
  const QImage& image() const { return picture_.image; }
  bool hasFailed() const { return !picture_.problem.isEmpty(); }

  QSize sizeHint() const override { return {128, 128}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Picture {
    QImage image;
    QString problem;  // a sentence, when there is no image
  };
  struct Source {
    QByteArray bytes;
    QString path;  // in place of the bytes
  };

  static Picture decode(const Source& source);
  void load();
  void loadFromWeb();
  void decodeLater(Source source);
  void show(Picture picture);

  URLLoading* loading_ = nullptr;
  QString address_;
  Picture picture_;
  Observation load_;
  QFutureWatcher<Picture> decoding_;
};

}  // namespace clipwave
