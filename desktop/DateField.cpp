#include "desktop/DateField.h"

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QSignalBlocker>

#include "desktop/ListText.h"

namespace clipwave {

DateField::DateField(QWidget* parent)
    : QWidget(parent), box_(new QCheckBox(this)), edit_(new QDateTimeEdit(this)) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(box_);
  layout->addWidget(edit_, 1);
  box_->setAccessibleName(tr("Has a date"));
  box_->setToolTip(tr("Has a date"));
  // The editor knows no zones: it is given the zone's wall clock.
  edit_->setTimeSpec(Qt::UTC);
  edit_->setCalendarPopup(true);
  edit_->setDisplayFormat(dayFormat(QLocale()) + QStringLiteral("  HH:mm:ss"));
  edit_->setMinimumDate(QDate(1, 1, 1));
  edit_->setMaximumDate(QDate(9999, 12, 31));
  setFocusProxy(edit_);
  edit_->installEventFilter(this);
  connect(edit_, &QDateTimeEdit::dateTimeChanged, this, &DateField::editingBegan);
  connect(edit_, &QDateTimeEdit::editingFinished, this, &DateField::editingEnded);
  connect(box_, &QCheckBox::clicked, this, [this](bool checked) {
    emit editingBegan();
    if (checked) {
      const QSignalBlocker silent(edit_);
      const QDateTime now = QDateTime::currentDateTimeUtc().toTimeZone(zone_);
      edit_->setDateTime(QDateTime(now.date(), now.time(), Qt::UTC));
    }
    emit editingEnded();
  });
}

std::optional<QDateTime> DateField::dateTime() const {
  if (!box_->isChecked()) return std::nullopt;
  return QDateTime(edit_->date(), edit_->time(), zone_);
}

void DateField::setDateTime(const std::optional<QDateTime>& dateTime, bool differs) {
  const QSignalBlocker silent(edit_);
  // Only the program makes a check partial.
  box_->setTristate(differs);
  box_->setCheckState(differs ? Qt::PartiallyChecked : dateTime ? Qt::Checked : Qt::Unchecked);
  edit_->setEnabled(dateTime.has_value());
  if (dateTime) {
    zone_ = dateTime->timeZone();
    edit_->setDateTime(QDateTime(dateTime->date(), dateTime->time(), Qt::UTC));
  } else {
    // The editor's earliest date stands for none: it shows the words instead.
    edit_->setSpecialValueText(differs ? tr("Several values") : tr("No date"));
    edit_->setDateTime(edit_->minimumDateTime());
  }
}

bool DateField::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
    emit editingDiscarded();
  // A wheel that rolls the pane along must not change a date on its way.
  if (event->type() != QEvent::Wheel || edit_->hasFocus()) return false;
  event->ignore();
  return true;
}

bool DateField::event(QEvent* event) {
  // The editor has the focus, and speaks for the whole.
  if (event->type() == QEvent::Show) edit_->setAccessibleName(accessibleName());
  return QWidget::event(event);
}

void DateField::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange) edit_->setEnabled(isEnabled() && box_->isChecked());
  QWidget::changeEvent(event);
}

}  // namespace clipwave
