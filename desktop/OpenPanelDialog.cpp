#include "desktop/OpenPanelDialog.h"

#include <QAction>
#include <QDir>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTreeView>
#include <algorithm>

#include "desktop/Text.h"
#include "platform/foundation/FileManager.h"

namespace clipwave {
namespace {

// Leaves files out of the listing that could not be chosen. What a file is named decides; a look into it is
// spent only on one without an extension, so that a large folder opens at once. "All files" shows the rest,
// which is looked at when it is chosen.
class AllowedFilesOnly final : public QSortFilterProxyModel {
 public:
  AllowedFilesOnly(const OpenPanel& panel, OpenPanelDialog::IsAllowed isAllowed, QObject* parent)
      : QSortFilterProxyModel(parent), panel_(panel), isAllowed_(std::move(isAllowed)) {}

  void setShowsEverything(bool showsEverything) {
    showsEverything_ = showsEverything;
    invalidateFilter();
  }

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
    const auto* files = static_cast<const QFileSystemModel*>(sourceModel());
    const QModelIndex index = files->index(row, 0, parent);
    if (showsEverything_ || files->isDir(index)) return true;
    const std::string name = toPath(files->fileName(index));
    const auto& types = panel_.allowedTypes;
    if (std::ranges::find(types, pathExtension(name)) != types.end()) return true;
    return pathExtension(name).empty() && isAllowed_(files->filePath(index));
  }
  // The order is the file system model's, which knows sizes and dates.
  void sort(int column, Qt::SortOrder order) override { sourceModel()->sort(column, order); }

 private:
  const OpenPanel panel_;
  OpenPanelDialog::IsAllowed isAllowed_;
  bool showsEverything_ = false;
};

QString displayed(const QString& path) {
  return QDir::toNativeSeparators(QFileInfo(path).fileName().isEmpty() ? path : QFileInfo(path).fileName());
}

}  // namespace

bool isAllowedFile(const OpenPanel& panel, const std::string& path,
                   const std::function<std::string(const std::string&)>& hfsType) {
  const auto& types = panel.allowedTypes;
  const auto has = [&types](const std::string& type) {
    return std::ranges::find(types, type) != types.end();
  };
  if (types.empty()) return true;
  const std::string extension = pathExtension(path);
  if (!extension.empty() && has(extension)) return true;
  const bool asksForContent =
      std::ranges::any_of(types, [](const auto& type) { return type.starts_with('\''); });
  const std::string type = asksForContent ? hfsType(path) : std::string();
  return !type.empty() && has(type);
}

OpenPanelDialog::OpenPanelDialog(const OpenPanel& panel, IsAllowed isAllowed, const QString& lastFolder,
                                 QWidget* parent)
    : QFileDialog(parent), panel_(panel), isAllowed_(std::move(isAllowed)) {
  setOption(DontUseNativeDialog);
  setOption(DontResolveSymlinks);
  setOption(HideNameFilterDetails);
  setOption(ShowDirsOnly, !panel.canChooseFiles);
  setOption(ReadOnly, !panel.canCreateDirectories);
  setAcceptMode(AcceptOpen);
  setFileMode(!panel.canChooseFiles           ? Directory
              : panel.allowsMultipleSelection ? ExistingFiles
                                              : ExistingFile);
  // This dialogue chooses; making a folder is as much as it changes.
  for (const char* name : {"qt_delete_action", "qt_rename_action"}) {
    if (auto* action = findChild<QAction*>(QLatin1String(name))) {
      action->disconnect();
      action->setVisible(false);
    }
  }
  setUpFilters();
  setUpSizes();
  const QString title = toQString(panel.title);
  setWindowTitle(!title.isEmpty()             ? title
                 : !panel.canChooseFiles      ? tr("Choose a folder")
                 : panel.allowedTypes.empty() ? tr("Open")
                                              : tr("Choose a movie"));
  setUpLines(toQString(panel.message));
  setLabelText(Accept, !panel.prompt.empty()  ? withoutShortcut(toQString(panel.prompt))
                       : panel.canChooseFiles ? tr("&Open")
                                              : tr("&Choose"));
  const QString wanted = pathToQString(panel.directory);
  const QString folders[] = {wanted, lastFolder, QDir::homePath()};
  const auto* folder = std::ranges::find_if(
      folders, [](const QString& path) { return !path.isEmpty() && QDir(path).exists(); });
  if (folder != std::end(folders)) setDirectory(*folder);
}

void OpenPanelDialog::setUpFilters() {
  if (!panel_.canChooseFiles || panel_.allowedTypes.empty()) return;
  auto* allowed = new AllowedFilesOnly(panel_, isAllowed_, this);
  setProxyModel(allowed);
  const QString everything = tr("All files");
  setNameFilters({tr("Movies") + QStringLiteral(" (*)"), everything + QStringLiteral(" (*)")});
  connect(this, &QFileDialog::filterSelected, allowed, [allowed, everything](const QString& filter) {
    allowed->setShowsEverything(filter.startsWith(everything));
  });
}

// Room for whole names and dates; what the user has made of it before comes first.
void OpenPanelDialog::setUpSizes() {
  resize(size().expandedTo(QSize(800, 520)));
  if (auto* splitter = findChild<QSplitter*>(); splitter != nullptr && splitter->sizes().value(0) < 160)
    splitter->setSizes({160, 640});
  if (auto* details = findChild<QTreeView*>(QStringLiteral("treeView"))) {
    details->header()->setStretchLastSection(false);
    details->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    details->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  }
}

// Adds a line above the dialogue's own widgets, and one below them.
void OpenPanelDialog::setUpLines(const QString& message) {
  auto* grid = qobject_cast<QGridLayout*>(layout());
  if (grid == nullptr) return;
  const auto makeLabel = [this](const char* name) {
    auto* label = new QLabel(this);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
  };
  objection_ = makeLabel("openPanelObjection");
  objection_->setVisible(false);
  grid->addWidget(objection_, grid->rowCount(), 1, 1, 1);
  connect(this, &QFileDialog::currentChanged, objection_, &QWidget::hide);
  connect(this, &QFileDialog::directoryEntered, objection_, &QWidget::hide);
  if (message.isEmpty()) return;

  struct Placed {
    QLayoutItem* item;
    int row, column, rowSpan, columnSpan;
  };
  std::vector<Placed> placed;
  while (grid->count() > 0) {
    Placed place{};
    grid->getItemPosition(0, &place.row, &place.column, &place.rowSpan, &place.columnSpan);
    place.item = grid->takeAt(0);
    placed.push_back(place);
  }
  for (const Placed& place : placed)
    grid->addItem(place.item, place.row + 1, place.column, place.rowSpan, place.columnSpan);
  auto* label = makeLabel("openPanelMessage");
  label->setText(message);
  grid->addWidget(label, 0, 0, 1, -1);
}

// What is typed is one path first of all, whatever characters it holds; then what is selected in the listing;
// then names in quotes. Only the rest (a "~") is left to Qt, which drops names from a list.
QStringList OpenPanelDialog::candidates() const {
  const auto* edit = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  const QString typed = edit != nullptr ? edit->text() : QString();
  const QString path = directory().absoluteFilePath(typed);
  if (!typed.isEmpty() && QFileInfo::exists(path)) return {path};
  if (!typed.contains('"')) return selectedFiles();

  QStringList selected, names;
  for (const QModelIndex& index :
       findChild<QListView*>(QStringLiteral("listView"))->selectionModel()->selectedRows()) {
    selected << index.data(QFileSystemModel::FilePathRole).toString();
    names << '"' + QFileInfo(selected.back()).fileName() + '"';
  }
  if (names.join(' ') == typed) return selected;
  const QStringList parts = typed.split('"');
  selected.clear();
  for (qsizetype i = 1; i < parts.size(); i += 2) selected << directory().absoluteFilePath(parts[i]);
  return selected;
}

// Why the path cannot be chosen; empty where it can.
QString OpenPanelDialog::objectionTo(const QString& path) const {
  const QFileInfo info(path);
  const QString name = displayed(path);
  if (!info.exists()) return tr("“%1” does not exist.").arg(name);
  if (info.isDir())
    return panel_.canChooseDirectories ? QString() : tr("“%1” is a folder. Choose a file in it.").arg(name);
  if (!panel_.canChooseFiles) return tr("“%1” is not a folder.").arg(name);
  if (!isAllowed_(path)) return tr("“%1” is not a movie that can be used here.").arg(name);
  return {};
}

void OpenPanelDialog::accept() {
  const QStringList chosen = candidates();
  if (chosen.isEmpty()) return;
  const QFileInfo first(chosen.front());
  if (chosen.size() == 1 && first.isDir() && !panel_.canChooseDirectories) {
    setDirectory(first.absoluteFilePath());
    if (auto* edit = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) edit->clear();
    return;
  }
  if (chosen.size() > 1 && !panel_.allowsMultipleSelection) return refuse(tr("Choose one only."));
  OpenPanelAnswer paths;
  for (const QString& path : chosen) {
    if (const QString objection = objectionTo(path); !objection.isEmpty()) return refuse(objection);
    paths.push_back(toPath(QDir::cleanPath(path)));
  }
  answer_ = std::move(paths);
  done(QDialog::Accepted);
}

void OpenPanelDialog::refuse(const QString& objection) {
  if (objection_ == nullptr) return;
  objection_->setText(objection);
  objection_->show();
}

}  // namespace clipwave
