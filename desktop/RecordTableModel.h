// The rows of a table: the records of its list as they stood when the view last took them over.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "desktop/Column.h"
#include "platform/appkit/TableView.h"
#include "ui/MovieFacts.h"

namespace clipwave {

// The list may change at any moment, the rows only in `sync`. In between a row whose record is not in its
// place any more shows nothing: records are only compared, never looked into, unless the list holds them
// right now.
class RecordTableModel final : public QAbstractTableModel {
  Q_OBJECT
 public:
  static constexpr int kSecondLineRole = Qt::UserRole;
  static constexpr int kTroubleRole = Qt::UserRole + 1;  // the reason; absent for an episode without trouble

  // `table` and `facts` (or null) must outlive the model.
  RecordTableModel(TableView& table, std::vector<Column> columns, MovieFacts* facts, QObject* parent);

  enum class Change { None, RowsInserted, RowsRemoved, Reordered, Replaced };
  // Takes the list over. Where rows did not only come or go in one place, the model is reset.
  Change sync();
  // As of the last sync; only to be compared.
  const std::vector<ManagedObject*>& rows() const { return rows_; }
  // Null where the list has another record in this place by now.
  ManagedObject* record(int row) const;
  const Column& column(int index) const { return columns_[static_cast<std::size_t>(index)]; }
  int titleColumn() const;
  void setSecondLineKey(std::string key) { secondLineKey_ = std::move(key); }
  bool hasSecondLine() const { return !secondLineKey_.empty(); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  // A check box: stores the value in this one record, as an undo step of its own.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  QString text(const Column& column, const ManagedObject& record) const;
  QString sizeText(const ManagedObject& record) const;
  QString secondLine(const ManagedObject& record) const;
  QString accessibleText(const Column& column, const ManagedObject& record) const;
  QString troubleText(const ManagedObject& record) const;
  QVariant foreground(const Column& column, const ManagedObject& record) const;

  TableView& table_;
  std::vector<Column> columns_;
  MovieFacts* facts_;
  std::string secondLineKey_;
  bool dimsUnpublished_;
  std::vector<ManagedObject*> rows_;
};

}  // namespace clipwave
