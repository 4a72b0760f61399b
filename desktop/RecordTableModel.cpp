#include "desktop/RecordTableModel.h"

#include <QBrush>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

#include "desktop/ListText.h"
#include "desktop/Text.h"

namespace clipwave {
namespace {

const std::vector<ManagedObject*>& recordsOf(const TableView& table) {
  static const std::vector<ManagedObject*> kNone;
  const ArrayController* list = table.contentController();
  return list == nullptr ? kNone : list->arrangedObjects();
}

bool holdTheSame(std::vector<ManagedObject*> a, std::vector<ManagedObject*> b) {
  if (a.size() != b.size()) return false;
  std::sort(a.begin(), a.end());
  std::sort(b.begin(), b.end());
  return a == b;
}

bool isNumber(Column::Kind kind) {
  return kind == Column::Kind::Duration || kind == Column::Kind::FileSize || kind == Column::Kind::Count;
}

}  // namespace

RecordTableModel::RecordTableModel(TableView& table, std::vector<Column> columns, MovieFacts* facts,
                                   QObject* parent)
    : QAbstractTableModel(parent),
      table_(table),
      columns_(std::move(columns)),
      facts_(facts),
      dimsUnpublished_(std::ranges::any_of(columns_, [](const Column& c) { return c.key == "vcPublish"; })) {}

RecordTableModel::Change RecordTableModel::sync() {
  const std::vector<ManagedObject*>& now = recordsOf(table_);
  const auto [oldEnd, newEnd] = std::mismatch(rows_.begin(), rows_.end(), now.begin(), now.end());
  const auto same = oldEnd - rows_.begin();
  if (oldEnd == rows_.end() && newEnd == now.end()) return Change::None;

  // What is left when the rows that both begin and both end with are taken away.
  const auto [oldBack, newBack] = std::mismatch(rows_.rbegin(), std::make_reverse_iterator(oldEnd),
                                                now.rbegin(), std::make_reverse_iterator(now.begin() + same));
  const auto gone = oldBack.base() - oldEnd;
  const auto come = newBack.base() - newEnd;
  const int first = static_cast<int>(same);
  if (gone == 0) {
    beginInsertRows({}, first, first + static_cast<int>(come) - 1);
    rows_ = now;
    endInsertRows();
    return Change::RowsInserted;
  }
  if (come == 0) {
    beginRemoveRows({}, first, first + static_cast<int>(gone) - 1);
    rows_ = now;
    endRemoveRows();
    return Change::RowsRemoved;
  }
  const bool reordered = holdTheSame(rows_, now);
  beginResetModel();
  rows_ = now;
  endResetModel();
  return reordered ? Change::Reordered : Change::Replaced;
}

ManagedObject* RecordTableModel::record(int row) const {
  const std::vector<ManagedObject*>& now = recordsOf(table_);
  const auto index = static_cast<std::size_t>(row);
  if (row < 0 || index >= rows_.size() || index >= now.size() || rows_[index] != now[index]) return nullptr;
  return now[index];
}

int RecordTableModel::titleColumn() const {
  const auto found = std::ranges::find(columns_, Column::Kind::Title, &Column::kind);
  return found == columns_.end() ? 0 : static_cast<int>(found - columns_.begin());
}

int RecordTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RecordTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

Qt::ItemFlags RecordTableModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (index.isValid() && column(index.column()).kind == Column::Kind::CheckBox)
    flags |= Qt::ItemIsUserCheckable;
  return flags;
}

QVariant RecordTableModel::data(const QModelIndex& index, int role) const {
  const ManagedObject* const found = index.isValid() ? record(index.row()) : nullptr;
  if (found == nullptr) return {};
  const Column& shown = column(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return text(shown, *found);
    case Qt::CheckStateRole:
      if (shown.kind != Column::Kind::CheckBox) return {};
      return found->primitiveValue(shown.key).boolValue() ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
      return static_cast<int>(Qt::AlignVCenter | (isNumber(shown.kind) ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::ForegroundRole:
      return foreground(shown, *found);
    case Qt::ToolTipRole:
      return shown.kind == Column::Kind::Trouble ? troubleText(*found) : QString();
    case Qt::AccessibleTextRole:
      return accessibleText(shown, *found);
    case kSecondLineRole:
      return shown.kind == Column::Kind::Title ? secondLine(*found) : QString();
    case kTroubleRole:
      return shown.kind == Column::Kind::Trouble ? troubleText(*found) : QString();
    default:
      return {};
  }
}

// Only what is stored: what a first reading would find out in the movie file is the business of MovieFacts.
QString RecordTableModel::text(const Column& shown, const ManagedObject& record) const {
  const Value& value = record.primitiveValue(shown.key);
  switch (shown.kind) {
    case Column::Kind::Title:
      return value.stringValue().empty() ? tr("Untitled") : toQString(value.stringValue()).simplified();
    case Column::Kind::Text:
      return toQString(value.stringValue()).simplified();
    case Column::Kind::Day:
      return value.dateValue() ? dayText(*value.dateValue(), QLocale()) : QString();
    case Column::Kind::Duration:
      return shortDurationText(value.stringValue());
    case Column::Kind::FileSize:
      return sizeText(record);
    case Column::Kind::Count:
      return QLocale().toString(static_cast<qlonglong>(record.relatedObjects(shown.key).size()));
    default:
      return {};
  }
}

// The stored size is what 32 bits hold of it; the file tells the rest, as long as it is the stored one's.
QString RecordTableModel::sizeText(const ManagedObject& record) const {
  const Value& stored = record.primitiveValue("size");
  const MovieFacts::Facts* facts = facts_ == nullptr ? nullptr : facts_->factsOf(record);
  const std::optional<std::int64_t> file = facts == nullptr ? std::nullopt : facts->bytes;
  const bool isOfTheFile =
      file && (stored.isNull() || static_cast<std::int32_t>(*file) == stored.integerValue());
  const std::int64_t bytes = isOfTheFile ? *file : stored.integerValue();
  return bytes > 0 ? shortSizeText(bytes, QLocale()) : QString();
}

QString RecordTableModel::secondLine(const ManagedObject& record) const {
  return secondLineKey_.empty() ? QString()
                                : toQString(record.primitiveValue(secondLineKey_).stringValue()).simplified();
}

QString RecordTableModel::troubleText(const ManagedObject& record) const {
  const MovieFacts::Facts* facts = facts_ == nullptr ? nullptr : facts_->factsOf(record);
  if (facts == nullptr || facts->trouble == MovieTrouble::None) return {};
  return facts->trouble == MovieTrouble::Missing
             ? tr("The movie file is missing. Choose it again, or put it back in its place.")
             : tr("This file cannot be opened as a movie.");
}

QString RecordTableModel::accessibleText(const Column& shown, const ManagedObject& record) const {
  switch (shown.kind) {
    case Column::Kind::CheckBox:
      return shown.title;
    case Column::Kind::Trouble:
      return troubleText(record);
    case Column::Kind::Count:
      return tr("%n episodes", nullptr, static_cast<int>(record.relatedObjects(shown.key).size()));
    default:
      return text(shown, record);
  }
}

QVariant RecordTableModel::foreground(const Column& shown, const ManagedObject& record) const {
  const bool untitled =
      shown.kind == Column::Kind::Title && record.primitiveValue(shown.key).stringValue().empty();
  const bool unpublished = dimsUnpublished_ && !record.primitiveValue("vcPublish").boolValue();
  if (!untitled && !unpublished && shown.kind != Column::Kind::Count) return {};
  return QBrush(QGuiApplication::palette().color(QPalette::PlaceholderText));
}

QVariant RecordTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const Column& shown = column(section);
  const bool isNamed =
      shown.symbol.isEmpty() && shown.kind != Column::Kind::Trouble && shown.kind != Column::Kind::Count;
  switch (role) {
    case Qt::DisplayRole:
      return isNamed ? shown.title : QString();
    case Qt::ToolTipRole:
      return isNamed ? QVariant() : QVariant(shown.title);
    case Qt::AccessibleTextRole:
      return shown.title;
    case Qt::TextAlignmentRole:
      return static_cast<int>(Qt::AlignVCenter | (isNumber(shown.kind) ? Qt::AlignRight : Qt::AlignLeft));
    default:
      return {};
  }
}

bool RecordTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  ManagedObject* const found = index.isValid() ? record(index.row()) : nullptr;
  if (found == nullptr || role != Qt::CheckStateRole) return false;
  const Column& shown = column(index.column());
  if (shown.kind != Column::Kind::CheckBox) return false;
  UndoManager& undoManager = found->managedObjectContext()->undoManager();
  undoManager.beginUndoGrouping();
  found->setValue(shown.key, value.toInt() == Qt::Checked);
  undoManager.setActionName(toText(shown.actionName));
  undoManager.endUndoGrouping();
  emit dataChanged(index, index, {Qt::CheckStateRole});
  return true;
}

}  // namespace clipwave
