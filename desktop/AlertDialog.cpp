#include "desktop/AlertDialog.h"

#include <QAccessible>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <array>
#include <utility>

#include "desktop/AlertIcon.h"
#include "desktop/PlainTextView.h"
#include "desktop/Text.h"
#include "platform/foundation/Localization.h"

namespace clipwave {
namespace {

constexpr int kGrid = 8;  // pixels; every distance is a multiple of it
constexpr int kIconSize = 6 * kGrid;

using Button = std::pair<Alert::Answer, const std::string*>;

std::array<Button, 3> buttonsOf(const Alert& alert) {
  return {Button{Alert::Answer::Default, &alert.defaultButton},
          Button{Alert::Answer::Alternate, &alert.alternateButton},
          Button{Alert::Answer::Other, &alert.otherButton}};
}

bool isQuestion(const Alert& alert) {
  return !alert.alternateButton.empty() || !alert.otherButton.empty();
}

// A serious question warns; a failure that can only be taken note of is an error.
AlertIcon iconFor(const Alert& alert) {
  if (alert.style == Alert::Style::Informational) return AlertIcon::Information;
  return isQuestion(alert) ? AlertIcon::Warning : AlertIcon::Error;
}

}  // namespace

AlertDialog::AlertDialog(const Alert& alert, QWidget* parent)
    : QDialog(parent), canBeDismissed_(!isQuestion(alert) && alert.defaultButton != "Quit") {
  for (const auto& [answer, title] : buttonsOf(alert)) {
    if (!title->empty() && !canBeDismissed_) answer_ = answer;
    if (*title == "Cancel" || *title == localized("Alerts", "Cancel")) canBeDismissed_ = true;
  }
  setWindowTitle(QStringLiteral("Clipwave"));
  if (!canBeDismissed_) setWindowFlag(Qt::WindowCloseButtonHint, false);
  const QString title = toQString(alert.title);
  const QString message = toQString(alert.message);
  setAccessibleName(title.isEmpty() ? message : title);
  setAccessibleDescription(message);

  auto* icon = new QLabel(this);
  icon->setPixmap(alertIcon(iconFor(alert), kIconSize, devicePixelRatioF()));
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(3 * kGrid, 3 * kGrid, 3 * kGrid, 2 * kGrid);
  grid->setHorizontalSpacing(2 * kGrid);
  grid->setVerticalSpacing(3 * kGrid);
  grid->setSizeConstraint(QLayout::SetFixedSize);
  grid->addWidget(icon, 0, 0, Qt::AlignTop);
  grid->addLayout(makeTexts(alert), 0, 1, Qt::AlignVCenter);
  grid->addLayout(makeButtons(alert), 1, 0, 1, 2);
}

QVBoxLayout* AlertDialog::makeTexts(const Alert& alert) {
  auto* texts = new QVBoxLayout;
  texts->setSpacing(kGrid);
  const std::pair<const char*, const std::string*> shown[] = {{"alertTitle", &alert.title},
                                                              {"alertMessage", &alert.message}};
  for (const auto& [name, text] : shown) {
    if (text->empty()) continue;
    auto* view = new PlainTextView(toQString(*text), text == &alert.title, this);
    view->setObjectName(QLatin1String(name));
    texts->addWidget(view);
  }
  if (alert.checkBox) {
    checkBox_ = new QCheckBox(withoutShortcut(toQString(alert.checkBox->title)), this);
    checkBox_->setChecked(alert.checkBox->isOn);
    texts->addSpacing(kGrid);
    texts->addWidget(checkBox_, 0, Qt::AlignLeft);
  }
  return texts;
}

QLayout* AlertDialog::makeButtons(const Alert& alert) {
  auto* row = new QHBoxLayout;
  row->setSpacing(kGrid);
  row->addStretch();
  for (const auto& [answer, title] : buttonsOf(alert)) {
    if (title->empty()) continue;
    auto* button = new QPushButton(withoutShortcut(toQString(*title)), this);
    connect(button, &QPushButton::clicked, this, [this, pressed = answer] { end(pressed); });
    row->addWidget(button);
    if (answer != Alert::Answer::Default) continue;
    button->setDefault(true);
    button->setFocus();
  }
  return row;
}

bool AlertDialog::isCheckBoxOn() const {
  return checkBox_ != nullptr && checkBox_->isChecked();
}

void AlertDialog::end(Alert::Answer answer) {
  answer_ = answer;
  done(QDialog::Accepted);
}

void AlertDialog::reject() {
  if (canBeDismissed_) done(QDialog::Rejected);
}

void AlertDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  QAccessibleEvent alerted(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alerted);
}

}  // namespace clipwave
