// A small wheel that turns while something is going on, in the colour of the text.
#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace clipwave {

// Keeps its room while it is still, and draws nothing then.
class Spinner final : public QWidget {
  Q_OBJECT

 public:
  explicit Spinner(QWidget* parent = nullptr);
  bool isSpinning() const { return spinning_; }
  void setSpinning(bool spinning);

  QSize sizeHint() const override { return {16, 16}; }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void updateTimer();

  QBasicTimer timer_;
  bool spinning_ = false;
  int step_ = 0;
};

}  // namespace clipwave
