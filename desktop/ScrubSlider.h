// A slider that goes where it is clicked.
#pragma once

#include <QSlider>

namespace clipwave {

class ScrubSlider final : public QSlider {
  Q_OBJECT

 public:
  explicit ScrubSlider(QWidget* parent = nullptr);

 protected:
  void mousePressEvent(QMouseEvent* event) override;

 private:
  int valueAt(int x) const;
};

}  // namespace clipwave
