#include "desktop/RecordTableDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "desktop/RecordTableModel.h"
#include "desktop/SymbolicIcon.h"

namespace clipwave {
namespace {

constexpr int kLineSpacing = 8;  // above and below the text of a row, together
constexpr int kSecondLineSpacing = 12;
constexpr int kMark = 16;

const RecordTableModel& modelOf(const QModelIndex& index) {
  return *static_cast<const RecordTableModel*>(index.model());
}

QStyle& styleOf(const QStyleOptionViewItem& option) {
  return *(option.widget != nullptr ? option.widget->style() : QApplication::style());
}

QFont secondLineFont(QFont font) {
  if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * 0.9);
  return font;
}

QPalette::ColorGroup colourGroup(const QStyleOptionViewItem& option) {
  if (!(option.state & QStyle::State_Enabled)) return QPalette::Disabled;
  return option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

// Where the style begins a text.
int margin(const QStyleOptionViewItem& option) {
  return styleOf(option).pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
}

void paintBackground(QPainter& painter, const QStyleOptionViewItem& option) {
  styleOf(option).drawPrimitive(QStyle::PE_PanelItemViewItem, &option, &painter, option.widget);
}

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < 128;
}

// Told from text, and calm, on light and on dark backgrounds.
QColor warningColour(const QPalette& palette) {
  return isDark(palette) ? QColor(0xF0, 0xB0, 0x50) : QColor(0xA8, 0x58, 0x00);
}

void paintCheckBox(QPainter& painter, const QStyleOptionViewItem& option) {
  QStyleOptionViewItem box = option;
  const QStyle& style = styleOf(option);
  const QSize size(style.pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget),
                   style.pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget));
  box.rect = QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
  box.state &= ~QStyle::State_HasFocus;
  box.state |= option.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
  style.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, &painter, option.widget);
  if (!isDark(option.palette)) return;
  // Some styles leave an empty box on a dark background all but invisible.
  QColor frame = option.palette.color(QPalette::Text);
  frame.setAlphaF(0.4F);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(frame);
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(box.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
  painter.restore();
}

void paintTwoLines(QPainter& painter, const QStyleOptionViewItem& option, const QString& second) {
  const bool selected = option.state & QStyle::State_Selected;
  QColor colour =
      option.palette.color(colourGroup(option), selected ? QPalette::HighlightedText : QPalette::Text);
  const QFont small = secondLineFont(option.font);
  const QFontMetrics smallMetrics(small);
  const int height = option.fontMetrics.height() + smallMetrics.height();
  QRect line = option.rect.adjusted(margin(option), (option.rect.height() - height) / 2, -margin(option), 0);
  line.setHeight(option.fontMetrics.height());
  painter.save();
  painter.setPen(colour);
  painter.setFont(option.font);
  painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                   option.fontMetrics.elidedText(option.text, Qt::ElideRight, line.width()));
  line.translate(0, line.height());
  line.setHeight(smallMetrics.height());
  if (selected) {
    colour.setAlphaF(0.75F);
  } else {
    colour = option.palette.color(colourGroup(option), QPalette::PlaceholderText);
  }
  painter.setPen(colour);
  painter.setFont(small);
  painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                   smallMetrics.elidedText(second, Qt::ElideRight, line.width()));
  painter.restore();
}

void paintTrouble(QPainter& painter, const QStyleOptionViewItem& option) {
  const QRect mark = QStyle::alignedRect(option.direction, Qt::AlignCenter, QSize(kMark, kMark), option.rect);
  const bool selected = option.state & QStyle::State_Selected;
  paintImage(painter, QStringLiteral("trouble"), mark,
             selected ? option.palette.color(colourGroup(option), QPalette::HighlightedText)
                      : warningColour(option.palette));
}

}  // namespace

void RecordTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  // The selection shows where the keyboard is.
  if (cell.state & QStyle::State_Selected) cell.state &= ~QStyle::State_HasFocus;
  const Column::Kind kind = modelOf(index).column(index.column()).kind;
  if (kind == Column::Kind::CheckBox) {
    paintBackground(*painter, cell);
    if (cell.features & QStyleOptionViewItem::HasCheckIndicator) paintCheckBox(*painter, cell);
    return;
  }
  if (kind == Column::Kind::Trouble) {
    paintBackground(*painter, cell);
    if (!index.data(RecordTableModel::kTroubleRole).toString().isEmpty()) paintTrouble(*painter, cell);
    return;
  }
  const QString second = index.data(RecordTableModel::kSecondLineRole).toString();
  if (!second.isEmpty()) {
    paintBackground(*painter, cell);
    paintTwoLines(*painter, cell, second);
    return;
  }
  styleOf(cell).drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
}

QSize RecordTableDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  int height = cell.fontMetrics.height() + kLineSpacing;
  if (modelOf(index).hasSecondLine())
    height =
        cell.fontMetrics.height() + QFontMetrics(secondLineFont(cell.font)).height() + kSecondLineSpacing;
  return {cell.fontMetrics.horizontalAdvance(cell.text) + 2 * margin(cell), height};
}

bool RecordTableDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                    const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip || !index.isValid()) {
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  }
  QString text = index.data(Qt::ToolTipRole).toString();
  if (text.isEmpty()) {
    QStringList cut;
    const QString title = index.data().toString();
    const QString second = index.data(RecordTableModel::kSecondLineRole).toString();
    const int room = option.rect.width() - 2 * margin(option);
    if (option.fontMetrics.horizontalAdvance(title) > room) cut += title;
    if (QFontMetrics(secondLineFont(option.font)).horizontalAdvance(second) > room) cut += second;
    text = cut.join("\n");
  }
  // What an episode is called is text, also where it looks like markup.
  QToolTip::showText(event->globalPos(),
                     text.isEmpty() ? text : "<p>" + text.toHtmlEscaped().replace("\n", "<br>") + "</p>",
                     view);
  return true;
}

}  // namespace clipwave
