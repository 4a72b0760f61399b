#include "desktop/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace clipwave {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode) {
  elideMode_ = mode;
  update();
}

QString ElidedLabel::shownText() const {
  return fontMetrics().elidedText(QString(text()).replace(QLatin1Char('\n'), QLatin1Char(' ')), elideMode_,
                                  contentsRect().width());
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().horizontalAdvance(QStringLiteral("MM…")), QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !toolTip().isEmpty()) return QLabel::event(event);
  const QPoint place = static_cast<QHelpEvent*>(event)->globalPos();
  if (shownText() == text()) {
    QToolTip::hideText();
    event->ignore();
  } else {
    // As rich text a long path would be read as markup.
    QToolTip::showText(place, text().toHtmlEscaped().prepend(QLatin1String("<p>")), this);
  }
  return true;
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine,
                        palette(), isEnabled(), shownText(), foregroundRole());
}

}  // namespace clipwave
