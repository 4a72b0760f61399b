// Where a movie's picture is shown, whole and in its proportions, on a dark ground; or what is to be said
// where there is none.
#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

namespace clipwave {

class PictureArea final : public QWidget {
  Q_OBJECT

 public:
  explicit PictureArea(QWidget* parent = nullptr);

  // A null image takes the picture away.
  void setPicture(QImage picture);
  const QImage& picture() const { return picture_; }
  // Shown in the middle while there is no picture.
  void setMessage(const QString& message);
  const QString& message() const { return message_; }
  // A drawing above the message that stands for sound.
  void setShowsSound(bool shows);
  // A line over the picture's foot; none when empty.
  void setNotice(const QString& notice);
  const QString& notice() const { return notice_; }
  // The area in the screen's own pixels.
  QSize pixelSize() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void paintPicture(QPainter& painter) const;
  void paintMessage(QPainter& painter) const;
  void paintNotice(QPainter& painter) const;
  void describe();

  QImage picture_;
  QString message_;
  QString notice_;
  bool showsSound_ = false;
};

}  // namespace clipwave
