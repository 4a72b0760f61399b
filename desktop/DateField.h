// A date with its time of day that may be absent: a box says whether there is one.
#pragma once

#include <QDateTime>
#include <QTimeZone>
#include <QWidget>
#include <optional>

class QCheckBox;
class QDateTimeEdit;

namespace clipwave {

class DateField final : public QWidget {
  Q_OBJECT

 public:
  explicit DateField(QWidget* parent = nullptr);

  // What is shown now, also while it is being typed; nothing for no date.
  std::optional<QDateTime> dateTime() const;
  // From the program: tells nobody. Shown in the date's own time zone. `differs`: there are several dates,
  // none of which is shown.
  void setDateTime(const std::optional<QDateTime>& dateTime, bool differs = false);

 signals:
  void editingBegan();
  // The user is done: the focus left, Return was pressed, or the box was clicked.
  void editingEnded();
  // Escape was pressed.
  void editingDiscarded();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QCheckBox* box_;
  QDateTimeEdit* edit_;
  QTimeZone zone_ = QTimeZone::systemTimeZone();
};

}  // namespace clipwave
