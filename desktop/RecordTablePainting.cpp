// What a table paints over its rows, and what it asks to know about those that it paints.
#include <QPainter>

#include "desktop/RecordTable.h"

namespace clipwave {
namespace {

constexpr int kEmptyTextMargin = 24;
constexpr qreal kDropMarkWidth = 2;

}  // namespace

void RecordTable::paintEvent(QPaintEvent* event) {
  repaintQueued_ = false;
  QTreeView::paintEvent(event);
  if (table_ == nullptr) return;
  if (model_->rowCount() == 0) paintEmptyText();
  if (table_->dropRow() >= 0) paintDropMark();
  askForFacts();
}

void RecordTable::askForFacts() {
  if (facts_ == nullptr) return;
  std::vector<ManagedObject*> wanted;
  const auto [first, last] = visibleRows();
  for (int row = first; row <= last; ++row)
    if (ManagedObject* const record = model_->record(row)) wanted.push_back(record);
  facts_->setWanted(wanted);
}

void RecordTable::paintEmptyText() {
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const QRect room = viewport()->rect().adjusted(kEmptyTextMargin, 0, -kEmptyTextMargin, 0);
  painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

// Where the program says that the drop would land, which need not be where the pointer is.
void RecordTable::paintDropMark() {
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor color = palette().color(QPalette::Highlight);
  painter.setPen(QPen(color, kDropMarkWidth));
  const int count = model_->rowCount();
  const int row = std::min(table_->dropRow(), count);
  if (count == 0) {
    painter.drawRoundedRect(QRectF(viewport()->rect()).adjusted(3, 3, -3, -3), 4, 4);
    return;
  }
  const bool below = row == count;
  const QRect cell = visualRect(model_->index(below ? count - 1 : row, 0));
  const QRectF line(1, cell.top(), viewport()->width() - 2, cell.height());
  if (table_->dropOperation() == TableDropOperation::On && !below) {
    painter.drawRoundedRect(line.adjusted(1, 1, -1, -1), 3, 3);
    return;
  }
  const qreal y = std::max<qreal>(below ? line.bottom() : line.top(), kDropMarkWidth / 2 + 3);
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawLine(QPointF(8, y), QPointF(line.right(), y));
  painter.drawEllipse(QPointF(5, y), 3, 3);
}

}  // namespace clipwave
