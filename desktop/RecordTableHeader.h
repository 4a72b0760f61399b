// The header of a table, with symbols in the middle of the columns that are too narrow for a title.
#pragma once

#include <QHeaderView>

namespace clipwave {

class RecordTableHeader final : public QHeaderView {
  Q_OBJECT
 public:
  explicit RecordTableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

 protected:
  void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override;
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;
};

}  // namespace clipwave
