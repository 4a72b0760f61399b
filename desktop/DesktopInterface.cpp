#include "desktop/DesktopInterface.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QTimer>

#include "desktop/ArtworkMirror.h"
#include "desktop/ArtworkWell.h"
#include "desktop/ControlMirrors.h"
#include "desktop/EditActions.h"
#include "desktop/LibraryTables.h"
#include "desktop/LoadedWindow.h"
#include "desktop/LowerArea.h"
#include "desktop/MoviePreview.h"
#include "desktop/PreviewMirror.h"
#include "desktop/ProgramNames.h"
#include "desktop/RecordNames.h"
#include "desktop/RecordSheet.h"
#include "desktop/RecordTable.h"
#include "desktop/SplitView.h"
#include "desktop/Text.h"
#include "desktop/ValueMirrors.h"
#include "desktop/WindowDressing.h"
#include "desktop/WindowFrameMirror.h"
#include "desktop/WindowMemory.h"
#include "desktop/WindowMirror.h"
#include "ui/MovieFacts.h"
#include "ui_About.h"
#include "ui_CaptureSettings.h"
#include "ui_FeedURL.h"
#include "ui_ImageProperties.h"
#include "ui_MainWindow.h"
#include "ui_Preferences.h"
#include "ui_Report.h"
#include "ui_SizePanel.h"

namespace clipwave {

namespace {

const QStringList kWindows = {"mainWindow",           "statusWindow", "rssFeedWindow",
                              "editImagePropsWindow", "prefWindow",   "aboutWindow"};
// The user default: the channel attribute that the channel list shows under the titles; "" for none.
constexpr const char* kUnderChannels = "channelListShows";
constexpr int kTellFor = 6000;  // milliseconds
// How long a cancelled transfer may take to clean up behind itself before the program goes all the same.
constexpr int kWaitForCancel = 15000;  // milliseconds

template <class Form>
void setUp(QDialog& dialog) {
  Form().setupUi(&dialog);
}

}  // namespace

DesktopInterface::DesktopInterface(ClipwaveProgram& program, DesktopInterfaceLoader& loader)
    : program_(program),
      loader_(loader),
      preferences_(program.services().defaults, program.services().secrets),
      mainWindow_(std::make_unique<QMainWindow>()),
      wiring_(namesOfProgram(program, preferences_,
                             {[this] { quit(); }, [this](const std::string& message) { tell(message); }})),
      facts_(std::make_unique<MovieFacts>(program.services().runLoop, program.services().movies)),
      memory_(std::make_unique<WindowMemory>(*mainWindow_, program.services().defaults)) {
  MainInterface& interface = program.interface();
  Ui::MainWindow().setupUi(mainWindow_.get());
  wire(*mainWindow_, interface.mainWindow, wiring_);
  if (auto* view = mainWindow_->findChild<QMenu*>("menuView")) addListChoices(*view);
  mirrors_.at(&interface.mainWindow)->setCloseRequest([this] { quit(); });
  makeReport();
  makeDialog(interface.rssFeedWindow, setUp<Ui::FeedURL>);
  makeDialog(interface.editImagePropsWindow, setUp<Ui::ImageProperties>);
  makeDialog(interface.prefWindow, setUp<Ui::Preferences>);
  observations_.push_back(interface.publishButton.observe([this] { refreshPublishAction(); }));
  loader_.setMaker([this](WindowController& controller) { loadWindow(controller); });
  program.controller().publishRun().setOnEnd(
      [this](PublishOutcome outcome, const std::optional<Error>&) { publishRunEnded(outcome); });
  for (ArrayController* list : std::initializer_list<ArrayController*>{
           &interface.channelController, &interface.vodcastController, &interface.imageController}) {
    observations_.push_back(list->observeSelectedObjects([this] { wiring_.refreshActions(); }));
  }
}

DesktopInterface::~DesktopInterface() {
  loader_.setMaker(nullptr);
  program_.controller().publishRun().setOnEnd(nullptr);
  observations_.clear();
  // The windows go before what they show.
  mainWindow_.reset();
}

void DesktopInterface::makeDialog(Window& window, void (*setUpDialog)(QDialog&)) {
  auto* dialog = new QDialog(mainWindow_.get());
  setUpDialog(*dialog);
  wire(*dialog, window, wiring_);
}

void DesktopInterface::makeReport() {
  Window& window = program_.interface().statusWindow;
  auto* dialog = new QDialog(mainWindow_.get());
  Ui::Report form;
  form.setupUi(dialog);
  summaryLabel_ = form.summaryLabel;
  wire(*dialog, window, wiring_);
  connect(dialog->findChild<TextViewMirror*>(), &TextViewMirror::linkActivated, this,
          [this](const QString& link) { program_.services().workspace.openURL(toText(link)); });
}

void DesktopInterface::wire(QWidget& root, Window& window, InterfaceWiring& wiring) {
  if (!dressWindow(root))
    refused_ << QStringLiteral("%1: a symbol or a page is missing.").arg(root.objectName());
  for (ArtworkWell* well : root.findChildren<ArtworkWell*>()) well->attach(program_.services().urls);
  auto* mirror = new WindowMirror(root, window);
  mirrors_[&window] = mirror;
  connect(mirror, &QObject::destroyed, this, [this, &window] { mirrors_.erase(&window); });
  refused_ += wiring.wire(
      root, *mirror, [this](const QString& outlet, QWidget& widget) { return wireOutlet(outlet, widget); });
  for (QAction* action : root.findChildren<QAction*>()) {
    const QString name = action->property("action").toString();
    if (name != QLatin1String("undo:")) continue;
    for (QObject* menu : action->associatedObjects())
      if (auto* shown = qobject_cast<QMenu*>(menu))
        connect(shown, &QMenu::aboutToShow, this, [this] { refreshEditMenu(); });
  }
}

QWidget* DesktopInterface::widgetOf(const Window& window) const {
  const auto found = mirrors_.find(&window);
  return found == mirrors_.end() ? nullptr : &found->second->widget();
}

bool DesktopInterface::wireOutlet(const QString& outlet, QWidget& widget) {
  MainInterface& interface = program_.interface();
  Controller& controller = program_.controller();
  if (auto* area = qobject_cast<LowerArea*>(widget.parentWidget());
      outlet == "lowerView" && area != nullptr) {
    area->attach(interface.lowerView);
  } else if (auto* preview = qobject_cast<MoviePreview*>(&widget);
             preview != nullptr && outlet == "previewPane") {
    preview->attach(interface.previewPane, program_.services().runLoop);
    new PreviewMirror(*preview, interface.previewPane, interface.vodcastController);
  } else if (auto* split = qobject_cast<SplitView*>(&widget); split != nullptr && outlet == "splitView") {
    const WindowLayout& layout = controller.windowLayout();
    split->setConstraints(
        [&layout](float proposed, int divider) { return layout.constrainMinCoordinate(proposed, divider); },
        [&layout](float proposed, int divider) { return layout.constrainMaxCoordinate(proposed, divider); });
  } else if (auto* well = qobject_cast<ArtworkWell*>(&widget); well != nullptr && outlet == "artworkWell") {
    new ArtworkMirror(*well, interface.channelController, "image");
  } else if (auto* combo = qobject_cast<QComboBox*>(&widget); combo != nullptr && outlet == "imagePopUp") {
    new ImagePicker(*combo, interface.channelController, interface.imageController,
                    [this, &interface](const Value& image) {
                      storeChoice(interface.channelController, "image", image,
                                  toText(tr("Change of Artwork")), wiring_.names().presentError);
                    });
  } else if (auto* table = qobject_cast<RecordTable*>(&widget)) {
    return wireTable(outlet, *table);
  } else {
    // The windows themselves are known by the files that they are made from.
    return kWindows.contains(outlet) && widget.isWindow();
  }
  return true;
}

bool DesktopInterface::wireTable(const QString& outlet, RecordTable& table) {
  MainInterface& interface = program_.interface();
  if (outlet == "channelTableView") {
    table.attach(interface.channelTableView, channelColumns());
    channelTable_ = &table;
    table.setSecondLineKey(toQString(program_.services().defaults.string(kUnderChannels)));
  } else if (outlet == "vcastTableView") {
    table.attach(interface.vcastTableView, episodeColumns(), facts_.get());
    observations_.push_back(followEmptyText(table, interface.channelController));
    connect(&table, &RecordTable::recordOpened, this, [this] { wiring_.send("openMediaInQuicktime:"); });
  } else if (outlet == "imageTableView") {
    imageTable_.bind("content", &interface.imageController, "arrangedObjects");
    table.attach(imageTable_, imageColumns());
  } else {
    return false;
  }
  addContextMenu(table, outlet);
  return true;
}

void DesktopInterface::addContextMenu(RecordTable& table, const QString& outlet) {
  // What the menu bar has for the rows of this table.
  auto* menu = mainWindow_->findChild<QMenu*>(outlet == "channelTableView" ? "menuChannel" : "menuEpisode");
  if (menu == nullptr || outlet == "imageTableView") return;
  table.setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&table, &QWidget::customContextMenuRequested, menu,
          [&table, menu](const QPoint& place) { menu->popup(table.viewport()->mapToGlobal(place)); });
}

void DesktopInterface::addListChoices(QMenu& menu) {
  auto* choices = new QActionGroup(this);
  menu.addSeparator();
  QMenu* shown = menu.addMenu(tr("Under channel &titles"));
  std::vector<NamedCode> names = program_.delegate().channelNames();
  names.push_back({toText(tr("Nothing")), ""});
  const std::string current = program_.services().defaults.string(kUnderChannels);
  for (const NamedCode& name : names) {
    QAction* choice = shown->addAction(toQString(name.name));
    choice->setCheckable(true);
    choice->setChecked(name.code == current);
    choices->addAction(choice);
    connect(choice, &QAction::triggered, this, [this, code = name.code] {
      channelTable_->setSecondLineKey(toQString(code));
      static_cast<void>(program_.services().defaults.setValue(kUnderChannels, code));
    });
  }
}

void DesktopInterface::publishRunEnded(PublishOutcome outcome) {
  if (auto* summary = summaryLabel_; summary != nullptr && outcome == PublishOutcome::Done) {
    const auto count = static_cast<int>(program_.controller().feedPreparation().urlsToLaunch().size());
    summary->setText(count == 0
                         ? tr("No channel is marked for publishing.")
                         : tr("%n channels were published. Their subscription links:", nullptr, count));
  }
  if (outcome == PublishOutcome::NotCommitted) showPendingEntry();
  wiring_.refreshActions();
  if (isQuitting_) QTimer::singleShot(0, this, [this] { terminate(); });
}

void DesktopInterface::loadWindow(WindowController& controller) {
  const qsizetype refusedBefore = refused_.size();
  if (controller.windowNibName() == "About") {
    loadAbout(controller);
  } else if (auto* record = dynamic_cast<RecordWindowController*>(&controller)) {
    loadRecordSheet(*record);
  } else if (auto* settings = dynamic_cast<CaptureSettings::WindowParts*>(&controller)) {
    loadCaptureSettings(*settings);
  }
  for (const QString& refused : refused_.mid(refusedBefore)) program_.services().log.write(toText(refused));
}

void DesktopInterface::loadAbout(WindowController& controller) {
  auto* dialog = new QDialog(mainWindow_.get());
  Ui::About form;
  form.setupUi(dialog);
  const Dictionary& info = program_.services().bundle.infoDictionary();
  if (const auto version = info.find("CFBundleVersion"); version != info.end())
    form.versionLabel->setText(tr("Version %1").arg(toQString(version->second.stringValue())));
  wire(*dialog, controller.window(), wiring_);
}

void DesktopInterface::loadRecordSheet(RecordWindowController& controller) {
  const auto loaded = std::make_shared<LoadedWindow>(namesOfRecordSheet(controller));
  QDialog& sheet = loaded->addDialog(mainWindow_.get());
  auto* recordSheet = new RecordSheet(sheet, controller);
  wire(sheet, controller.window(), loaded->wiring());
  sheet.resize(sheet.sizeHint());
  new WindowFrameMirror(sheet, controller.window());

  QDialog& panel = loaded->addDialog(&sheet);
  setUp<Ui::SizePanel>(panel);
  wire(panel, controller.recorder().sizePanel, loaded->wiring());
  recordSheet->prepareSizePanel(panel);
  panel.resize(panel.sizeHint());
  new WindowFrameMirror(panel, controller.recorder().sizePanel);
  controller.setInterface(loaded);
}

void DesktopInterface::loadCaptureSettings(CaptureSettings::WindowParts& parts) {
  const auto loaded = std::make_shared<LoadedWindow>(namesOfCaptureSettings(parts));
  const Window* sheet = program_.interface().mainWindow.attachedSheet();
  QWidget* parent = sheet != nullptr ? widgetOf(*sheet) : nullptr;
  QDialog& dialog = loaded->addDialog(parent != nullptr ? parent : mainWindow_.get());
  setUp<Ui::CaptureSettings>(dialog);
  wire(dialog, parts.window(), loaded->wiring());
  dialog.resize(dialog.sizeHint());
  parts.setInterface(loaded);
}

void DesktopInterface::refreshEditMenu() {
  UndoManager* manager = program_.delegate().windowWillReturnUndoManager(program_.interface().mainWindow);
  for (QAction* action : mainWindow_->findChildren<QAction*>()) {
    const QString name = action->property("action").toString();
    if (name == QLatin1String("undo:")) action->setText(undoTitle(manager));
    if (name == QLatin1String("redo:")) action->setText(redoTitle(manager));
  }
  wiring_.refreshActions();
}

void DesktopInterface::refreshPublishAction() {
  const bool isCopying = program_.interface().copyStatus.isAnimating();
  for (QAction* action : mainWindow_->findChildren<QAction*>())
    if (action->property("action").toString() == QLatin1String("save:"))
      action->setText(isCopying ? tr("Cancel &publishing") : tr("&Publish"));
}

// The shortcuts work as long as their menu entries are enabled, and nobody opens the menu before.
void DesktopInterface::followUndo() {
  UndoManager* manager = program_.delegate().windowWillReturnUndoManager(program_.interface().mainWindow);
  if (manager == undoManager_ || manager == nullptr) return;
  undoManager_ = manager;
  undoObservation_ = manager->observe([this] {
    if (std::exchange(refreshQueued_, true)) return;
    QTimer::singleShot(0, this, [this] {
      refreshQueued_ = false;
      wiring_.refreshActions();
    });
  });
}

void DesktopInterface::tell(const std::string& message) {
  // What a run has to say comes first.
  TextField& status = program_.interface().copyStatusTextField;
  if (!status.isHidden() && status.stringValue() != told_) return;
  told_ = message;
  status.setStringValue(message);
  status.setHidden(false);
  QTimer::singleShot(kTellFor, this, [&status, message] {
    if (status.stringValue() == message) status.setHidden(true);
  });
}

void DesktopInterface::show() {
  memory_->restore();
  followUndo();
  // The library may be opened only later.
  connect(&wiring_, &InterfaceWiring::sent, this, &DesktopInterface::followUndo);
  program_.interface().mainWindow.makeKeyAndOrderFront();
}

void DesktopInterface::raise(const QByteArray& activationToken) {
  if (!activationToken.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activationToken);
  if (mainWindow_->isMinimized()) mainWindow_->showNormal();
  mainWindow_->raise();
  mainWindow_->activateWindow();
}

void DesktopInterface::quit() {
  PublishRun& run = program_.controller().publishRun();
  if (isQuitting_ || program_.services().application.isTerminated()) return;
  program_.controller().recordHandOff().endRecording();
  if (!run.isCopying()) return terminate();
  isQuitting_ = true;
  // Cut short, a transfer would leave half a file behind.
  QTimer::singleShot(kWaitForCancel, this, [this] {
    if (isQuitting_) terminate();
  });
  run.save();
}

void DesktopInterface::terminate() {
  isQuitting_ = false;
  memory_->keep();
  program_.services().application.terminate();
  if (!program_.services().application.isTerminated()) showPendingEntry();
}

void DesktopInterface::showPendingEntry() {
  mirrors_.at(&program_.interface().mainWindow)->showFirstResponder();
}

}  // namespace clipwave
