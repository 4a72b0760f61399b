// A line of text that is shortened to the room it has; a tooltip shows it whole.
#pragma once

#include <QLabel>

namespace clipwave {

// text() is the whole text always, for assistive technology too. Plain text on one line.
class ElidedLabel final : public QLabel {
  Q_OBJECT
  Q_PROPERTY(Qt::TextElideMode elideMode READ elideMode WRITE setElideMode)

 public:
  explicit ElidedLabel(QWidget* parent = nullptr);
  Qt::TextElideMode elideMode() const { return elideMode_; }
  void setElideMode(Qt::TextElideMode mode);
  // What is to be read in the room there is now.
  QString shownText() const;

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::TextElideMode elideMode_ = Qt::ElideRight;
};

}  // namespace clipwave
