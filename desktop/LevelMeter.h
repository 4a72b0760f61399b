// A slim bar that says how loud it is.
#pragma once

#include <QWidget>

namespace clipwave {

class LevelMeter final : public QWidget {
  Q_OBJECT

 public:
  explicit LevelMeter(QWidget* parent = nullptr);
  // 0 to 1, as samples count; the bar grows as the ear hears.
  void setLevel(float level);
  float level() const { return level_; }

  QSize sizeHint() const override { return {120, 6}; }
  QSize minimumSizeHint() const override { return {40, 6}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int barLength() const;

  float level_ = 0;
};

}  // namespace clipwave
