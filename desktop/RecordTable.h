// A table over a list controller's records: mirrors the list, its selection and its drops, both ways.
#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QTreeView>
#include <optional>

#include "desktop/RecordTableModel.h"
#include "platform/appkit/TableView.h"

namespace clipwave {

// Changes of the list are taken over once a turn, however many there were, and before any event of the
// user's.
class RecordTable final : public QTreeView {
  Q_OBJECT
  Q_PROPERTY(QString emptyText READ emptyText WRITE setEmptyText)

 public:
  explicit RecordTable(QWidget* parent = nullptr);

  // Once, with the table's content bound. `table` and `facts` (null: nothing is found out about movies) must
  // outlive this widget.
  void attach(TableView& table, std::vector<Column> columns, MovieFacts* facts = nullptr);
  // Under the titles: a text of the record; empty for one line a row.
  void setSecondLineKey(const QString& key);
  // What an empty table says, one line of it or several.
  QString emptyText() const { return emptyText_; }
  void setEmptyText(const QString& text);

  void keyboardSearch(const QString& search) override;

 signals:
  // A double click on a row or the Return key: its record is the selected one.
  void recordOpened();

 protected:
  bool viewportEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 protected slots:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  struct DropPlace {
    int row = 0;
    TableDropOperation operation = TableDropOperation::Above;
    bool operator==(const DropPlace&) const = default;
  };
  // Where the rows stood before a change: the records from the first visible one on, only to be compared.
  struct Scrolled {
    std::vector<ManagedObject*> visible;
    int offset = 0;  // of the first one's top from the viewport's
    int value = 0;
    bool showsSelection = false;
  };

  void setUpHeader();
  void showColumnsThatFit();
  void sortBy(int section);
  void showSortOrder();
  void queueSync();
  void sync();
  void repaintLater();
  Scrolled scrolled() const;
  void keepInPlace(RecordTableModel::Change change, const Scrolled& before);
  bool mirrorSelection();
  void pushSelection();
  void revealSelection();
  bool isSelectionVisible() const;
  void selectRow(int row);
  std::pair<int, int> visibleRows() const;
  QModelIndex checkBoxAt(const QPoint& position) const;
  bool passToTable(const QKeyEvent& event);
  void askForFacts();
  void paintEmptyText();
  void paintDropMark();
  DropPlace dropPlaceAt(const QPoint& position) const;
  void updateDrag(QDropEvent& event);
  void endDrag();

  TableView* table_ = nullptr;
  RecordTableModel* model_ = nullptr;
  MovieFacts* facts_ = nullptr;
  QString emptyText_;
  Observation tableObservation_;
  Observation storeObservation_;
  Observation factsObservation_;
  bool syncQueued_ = false;
  bool repaintQueued_ = false;
  bool mirroring_ = false;                // the selection is being taken from the list
  std::vector<ManagedObject*> selected_;  // as last mirrored; only compared
  QPersistentModelIndex pressedCheckBox_;
  QString searched_;
  QElapsedTimer sinceSearch_;
  std::optional<DraggingInfo> drag_;
  std::optional<DropPlace> dropPlace_;
  unsigned dropAnswer_ = NSDragOperationNone;
  QBasicTimer scrollWhileDragging_;
  int dragScrollStep_ = 0;
};

}  // namespace clipwave
