#include "desktop/RecordTable.h"

#include <QScrollBar>
#include <algorithm>

#include "desktop/RecordTableDelegate.h"
#include "desktop/RecordTableHeader.h"
#include "desktop/Text.h"

namespace clipwave {
namespace {

constexpr int kSymbolColumnWidth = 28;
constexpr int kLeastTitle = 16;  // average characters
constexpr int kCellMargins = 16;
constexpr int kSortArrowRoom = 12;

// Ranges of neighbouring rows: ten thousand of them are one.
QItemSelection selectionOf(const IndexSet& rows, const QAbstractItemModel& model) {
  QItemSelection selection;
  const int last = model.columnCount() - 1;
  for (auto row = rows.begin(); row != rows.end();) {
    const auto first = *row;
    auto end = first;
    while (++row != rows.end() && *row == end + 1) ++end;
    selection.append(QItemSelectionRange(model.index(static_cast<int>(first), 0),
                                         model.index(static_cast<int>(end), last)));
  }
  return selection;
}

IndexSet rowsOf(const QItemSelection& selection) {
  std::vector<std::pair<int, int>> ranges;
  for (const QItemSelectionRange& range : selection) ranges.emplace_back(range.top(), range.bottom());
  std::sort(ranges.begin(), ranges.end());
  IndexSet rows;
  for (const auto& [top, bottom] : ranges)
    for (int row = top; row <= bottom; ++row) rows.insert(rows.end(), static_cast<std::size_t>(row));
  return rows;
}

}  // namespace

RecordTable::RecordTable(QWidget* parent) : QTreeView(parent) {
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setExpandsOnDoubleClick(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setAlternatingRowColors(true);
  setSelectionMode(ExtendedSelection);
  setSelectionBehavior(SelectRows);
  setEditTriggers(NoEditTriggers);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollMode(ScrollPerPixel);
  setContextMenuPolicy(Qt::CustomContextMenu);
  setAcceptDrops(true);
  setHeader(new RecordTableHeader(this));
  setItemDelegate(new RecordTableDelegate(this));
}

void RecordTable::attach(TableView& table, std::vector<Column> columns, MovieFacts* facts) {
  table_ = &table;
  facts_ = facts;
  model_ = new RecordTableModel(table, std::move(columns), facts, this);
  // The new selection model begins with nothing selected, which is no wish of the user's.
  mirroring_ = true;
  setModel(model_);
  setUpHeader();
  tableObservation_ = table.observe([this] { queueSync(); });
  // An observer for each of ten thousand records would cost more than they are worth.
  if (ArrayController* list = table.contentController())
    storeObservation_ = list->observeStore([this](const ContextChange& change) {
      if (change.kind == ContextChange::Kind::ValueChanged) repaintLater();
    });
  if (facts != nullptr) factsObservation_ = facts->observe([this] { repaintLater(); });
  sync();
}

void RecordTable::setSecondLineKey(const QString& key) {
  model_->setSecondLineKey(toText(key));
  scheduleDelayedItemsLayout();
}

void RecordTable::setEmptyText(const QString& text) {
  emptyText_ = text;
  viewport()->update();
}

// --- The header ---

void RecordTable::setUpHeader() {
  QHeaderView& head = *header();
  head.setStretchLastSection(false);
  head.setSectionsMovable(false);
  head.setSectionsClickable(true);
  head.setMinimumSectionSize(kSymbolColumnWidth);
  head.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  head.setTextElideMode(Qt::ElideRight);
  const QFontMetrics& metrics = fontMetrics();
  for (int section = 0; section < head.count(); ++section) {
    const Column& column = model_->column(section);
    if (column.kind == Column::Kind::CheckBox || column.kind == Column::Kind::Trouble) {
      head.setSectionResizeMode(section, QHeaderView::Fixed);
      head.resizeSection(section, kSymbolColumnWidth);
    } else if (column.sample.isEmpty()) {
      head.setSectionResizeMode(section, QHeaderView::Stretch);
    } else {
      const int title = column.sortable ? metrics.horizontalAdvance(column.title) + kSortArrowRoom : 0;
      head.setSectionResizeMode(section, QHeaderView::Interactive);
      head.resizeSection(section, std::max(metrics.horizontalAdvance(column.sample), title) + kCellMargins);
    }
  }
  connect(&head, &QHeaderView::sectionClicked, this, &RecordTable::sortBy);
  showColumnsThatFit();
}

// A narrow table keeps its titles readable: the sizes go first, then the durations.
void RecordTable::showColumnsThatFit() {
  QHeaderView& head = *header();
  std::vector<int> optional;
  for (const Column::Kind kind : {Column::Kind::Duration, Column::Kind::FileSize})
    for (int section = 0; section < head.count(); ++section)
      if (model_->column(section).kind == kind) optional.push_back(section);
  for (const int section : optional) head.setSectionHidden(section, true);
  int room = viewport()->width() - kLeastTitle * fontMetrics().averageCharWidth();
  for (int section = 0; section < head.count(); ++section)
    if (head.sectionResizeMode(section) != QHeaderView::Stretch) room -= head.sectionSize(section);
  for (const int section : optional) {
    head.setSectionHidden(section, false);
    room -= head.sectionSize(section);
    if (room >= 0) continue;
    head.setSectionHidden(section, true);
    return;
  }
}

void RecordTable::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  if (model_ != nullptr) showColumnsThatFit();
}

void RecordTable::sortBy(int section) {
  ArrayController* const list = table_->contentController();
  const Column& column = model_->column(section);
  if (list == nullptr || !column.sortable) {
    showSortOrder();  // the header has moved its arrow by itself
    return;
  }
  // What one looks for first comes first: A, but the newest, the largest, and what is checked.
  const bool isText = column.kind == Column::Kind::Title || column.kind == Column::Kind::Text;
  SortDescriptor order{column.key, isText, column.sortsStored};
  const auto& now = list->sortDescriptors();
  if (!now.empty() && now.front().key == column.key) order.ascending = !now.front().ascending;
  list->setSortDescriptors({order});
  showSortOrder();
}

void RecordTable::showSortOrder() {
  const ArrayController* const list = table_->contentController();
  int shown = -1;
  Qt::SortOrder order = Qt::AscendingOrder;
  if (list != nullptr && !list->sortDescriptors().empty()) {
    const SortDescriptor& first = list->sortDescriptors().front();
    for (int section = 0; section < header()->count(); ++section)
      if (model_->column(section).sortable && model_->column(section).key == first.key) shown = section;
    order = first.ascending ? Qt::AscendingOrder : Qt::DescendingOrder;
  }
  header()->setSortIndicatorShown(shown >= 0);
  if (shown >= 0) header()->setSortIndicator(shown, order);
}

// --- Following the list ---

void RecordTable::repaintLater() {
  if (repaintQueued_) return;
  repaintQueued_ = true;
  viewport()->update();
}

void RecordTable::queueSync() {
  if (syncQueued_) return;
  syncQueued_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (syncQueued_) sync();
      },
      Qt::QueuedConnection);
}

void RecordTable::sync() {
  syncQueued_ = false;
  const Scrolled before = scrolled();
  mirroring_ = true;
  const RecordTableModel::Change change = model_->sync();
  const bool selectsOthers = mirrorSelection();
  mirroring_ = false;
  showSortOrder();
  if (change != RecordTableModel::Change::None) keepInPlace(change, before);
  if (selectsOthers) revealSelection();
  viewport()->update();
}

RecordTable::Scrolled RecordTable::scrolled() const {
  const auto [first, last] = visibleRows();
  Scrolled place;
  place.value = verticalScrollBar()->value();
  if (first > last) return place;
  const auto& rows = model_->rows();
  place.visible.assign(rows.begin() + first, rows.begin() + last + 1);
  place.offset = visualRect(model_->index(first, 0)).top();
  place.showsSelection = isSelectionVisible();
  return place;
}

// Rows that come or go elsewhere leave what is in sight where it is. Sorted anew, the list stays where it was
// scrolled to, or where the selected row went.
void RecordTable::keepInPlace(RecordTableModel::Change change, const Scrolled& before) {
  executeDelayedItemsLayout();
  QScrollBar& bar = *verticalScrollBar();
  if (change == RecordTableModel::Change::Reordered) {
    bar.setValue(before.value);
    if (before.showsSelection) revealSelection();
    return;
  }
  const auto& rows = model_->rows();
  int offset = before.offset;
  for (ManagedObject* record : before.visible) {
    const auto found = std::find(rows.begin(), rows.end(), record);
    if (found != rows.end()) {
      const int top = visualRect(model_->index(static_cast<int>(found - rows.begin()), 0)).top();
      // A list at its beginning stays there: what comes on top is to be seen.
      if (before.value > 0) bar.setValue(bar.value() + top - offset);
      return;
    }
    offset = std::min(offset, 0);
  }
  bar.setValue(before.visible.empty() ? before.value : 0);
}

std::pair<int, int> RecordTable::visibleRows() const {
  if (model_ == nullptr || model_->rowCount() == 0) return {0, -1};
  const QModelIndex first = indexAt(QPoint(0, 0));
  const QModelIndex last = indexAt(QPoint(0, viewport()->height() - 1));
  return {first.isValid() ? first.row() : 0, last.isValid() ? last.row() : model_->rowCount() - 1};
}

// --- The selection ---

// Whether other records than before are selected.
bool RecordTable::mirrorSelection() {
  const IndexSet rows = table_->selectedRowIndexes();
  if (rowsOf(selectionModel()->selection()) != rows) {
    selectionModel()->select(selectionOf(rows, *model_), QItemSelectionModel::ClearAndSelect);
    const bool keepsCurrent =
        currentIndex().isValid() && rows.contains(static_cast<std::size_t>(currentIndex().row()));
    if (!rows.empty() && !keepsCurrent) {
      selectionModel()->setCurrentIndex(model_->index(static_cast<int>(*rows.begin()), model_->titleColumn()),
                                        QItemSelectionModel::NoUpdate);
    }
  }
  std::vector<ManagedObject*> selected;
  for (const std::size_t row : rows)
    if (row < model_->rows().size()) selected.push_back(model_->rows()[row]);
  std::sort(selected.begin(), selected.end());
  return std::exchange(selected_, selected) != selected && !selected.empty();
}

void RecordTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTreeView::selectionChanged(selected, deselected);
  if (!mirroring_ && table_ != nullptr) pushSelection();
}

void RecordTable::pushSelection() {
  const IndexSet rows = rowsOf(selectionModel()->selection());
  if (rows == table_->selectedRowIndexes()) return;
  table_->selectRowIndexes(rows);
  // The user sees the row that was chosen: it need not be scrolled to.
  if (rows == table_->selectedRowIndexes()) {
    selected_.clear();
    for (const std::size_t row : rows) selected_.push_back(model_->rows()[row]);
    std::sort(selected_.begin(), selected_.end());
  }
  queueSync();
}

bool RecordTable::isSelectionVisible() const {
  const auto [first, last] = visibleRows();
  for (const QItemSelectionRange& range : selectionModel()->selection())
    if (range.top() <= last && range.bottom() >= first) return true;
  return false;
}

void RecordTable::revealSelection() {
  const IndexSet rows = table_->selectedRowIndexes();
  if (rows.empty()) return;
  executeDelayedItemsLayout();
  if (rows.size() > 1 && isSelectionVisible()) return;
  scrollTo(model_->index(static_cast<int>(*rows.begin()), model_->titleColumn()));
}

void RecordTable::selectRow(int row) {
  const QModelIndex index = model_->index(row, model_->titleColumn());
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

}  // namespace clipwave
