// Paints the cells of a table: centred check boxes and marks, titles with a second line, calm rows.
#pragma once

#include <QStyledItemDelegate>

namespace clipwave {

class RecordTableDelegate final : public QStyledItemDelegate {
  Q_OBJECT
 public:
  explicit RecordTableDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  // A title that is cut off is told in full.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
};

}  // namespace clipwave
