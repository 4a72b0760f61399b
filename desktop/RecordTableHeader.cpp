#include "desktop/RecordTableHeader.h"

#include <QPainter>
#include <QStyleOptionHeader>

#include "desktop/RecordTableModel.h"
#include "desktop/SymbolicIcon.h"

namespace clipwave {
namespace {

constexpr int kSymbolSize = 16;
constexpr int kRoomForArrow = 5;

}  // namespace

void RecordTableHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
  QHeaderView::initStyleOptionForIndex(option, section);
  if (option->sortIndicator == QStyleOptionHeader::None) return;
  // A title that is shortened ends before the arrow.
  const int taken = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, option, this) +
                    style()->pixelMetric(QStyle::PM_HeaderMarkSize, option, this);
  option->text = option->fontMetrics.elidedText(option->text, textElideMode(), sectionSize(section) - taken);
}

void RecordTableHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
  // The style leaves a clip behind.
  painter->save();
  QHeaderView::paintSection(painter, rect, section);
  painter->restore();
  const auto* const table = qobject_cast<const RecordTableModel*>(model());
  if (table == nullptr || table->column(section).symbol.isEmpty()) return;
  QRect symbol(0, 0, kSymbolSize, kSymbolSize);
  symbol.moveCenter(rect.center());
  if (isSortIndicatorShown() && sortIndicatorSection() == section) symbol.translate(-kRoomForArrow, 0);
  paintImage(*painter, table->column(section).symbol, symbol, palette().color(QPalette::ButtonText));
}

}  // namespace clipwave
