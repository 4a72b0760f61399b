#include "desktop/RecordTableHeader.h"

#include <QPainter>

#include "desktop/RecordTableModel.h"
#include "desktop/SymbolicIcon.h"

namespace clipwave {
namespace {

constexpr int kSymbolSize = 16;
constexpr int kRoomForArrow = 5;

}  // namespace

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
