#include "desktop/RecordSheet.h"

#include <QDialog>
#include <QFontDatabase>
#include <QIntValidator>
#include <QKeyEvent>
#include <algorithm>

#include "desktop/SymbolicIcon.h"
#include "desktop/Text.h"
#include "ui_Record.h"

namespace clipwave {

namespace {

constexpr int kLargestSide = 32767;  // that a picture’s bounds have room for
constexpr double kSmall = 0.85;
constexpr double kTitle = 1.2;
constexpr double kClock = 1.6;
constexpr int kDot = 16;
constexpr QColor kRecording{217, 54, 43};
constexpr double kDimness = 0.4;  // how far a dim text is on the way to its ground

void scaleFont(QWidget& widget, double factor, QFont font) {
  font.setPointSizeF(widget.font().pointSizeF() * factor);
  widget.setFont(font);
}

QColor between(const QColor& from, const QColor& to, double way) {
  const auto mix = [way](int a, int b) { return static_cast<int>(a + (b - a) * way); };
  return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

// What the key stands for by itself; 0 for one that is no character.
char32_t characterOf(const QKeyEvent& key) {
  if (key.key() <= 0 || key.key() >= Qt::Key_Escape) return 0;
  return QChar::toLower(static_cast<char32_t>(key.key()));
}

// A name stays in its folder. A full stop that comes last is refused key by key; a text that is pasted with
// one is the name that it would be without.
class MovieNameValidator final : public QValidator {
 public:
  MovieNameValidator(QObject* parent, const TextField& field) : QValidator(parent), field_(field) {}
  State validate(QString& input, int& position) const override {
    const qsizetype length = input.size();
    input.remove(QLatin1Char('/')).remove(QChar::Null);
    const bool isKey = input.chopped(std::min<qsizetype>(1, input.size())) == toQString(field_.stringValue());
    while (!isKey && input.endsWith(QLatin1Char('.'))) input.chop(1);
    position =
        std::clamp(position - static_cast<int>(length - input.size()), 0, static_cast<int>(input.size()));
    return Acceptable;
  }

 private:
  const TextField& field_;
};

}  // namespace

RecordSheet::RecordSheet(QDialog& dialog, RecordWindowController& controller)
    : QObject(&dialog), dialog_(dialog), controller_(controller), form_(std::make_unique<Ui::Record>()) {
  form_->setupUi(&dialog);
  dress();
  // The keys are the sheet's until the user goes to a control.
  dialog.setFocusPolicy(Qt::ClickFocus);
  dialog.setFocus();
  dialog.installEventFilter(this);
  form_->filenameTextField->setValidator(
      new MovieNameValidator(form_->filenameTextField, controller.filenameTextField()));
  Recorder& recorder = controller.recorder();
  observations_.push_back(controller.startButton().observe([this] { stateChanged(); }));
  for (MenuItem* item : {&recorder.videoItem, &recorder.soundItem})
    observations_.push_back(item->observe([this] { stateChanged(); }));
  observations_.push_back(controller.filenameTextField().observe([this] { nameChanged(); }));
  stateChanged();
}

RecordSheet::~RecordSheet() = default;

void RecordSheet::dress() {
  form_->recordingDot->setPixmap(
      imageNamed(QStringLiteral("RecordButton")).pixmap(QSize(kDot, kDot), dialog_.devicePixelRatioF()));
  QFont bold = dialog_.font();
  bold.setBold(true);
  scaleFont(*form_->recordButton, kTitle, bold);
  scaleFont(*form_->stateLabel, 1, bold);
  scaleFont(*form_->elapsedTimeTextField, kClock, QFontDatabase::systemFont(QFontDatabase::FixedFont));
  for (QWidget* quiet :
       {static_cast<QWidget*>(form_->nameHintTextField), static_cast<QWidget*>(form_->freeSpaceTextField),
        static_cast<QWidget*>(form_->keyHintLabel)})
    scaleFont(*quiet, kSmall, quiet->font());
}

void RecordSheet::colour() {
  QPalette palette = dialog_.palette();
  const QColor dim = between(palette.color(QPalette::WindowText), palette.color(QPalette::Window), kDimness);
  // What is being recorded is to be read although it cannot be changed.
  palette.setColor(QPalette::Disabled, QPalette::Text, dim);
  form_->filenameTextField->setPalette(palette);
  palette.setColor(QPalette::WindowText, dim);
  for (QWidget* quiet :
       {static_cast<QWidget*>(form_->freeSpaceTextField), static_cast<QWidget*>(form_->keyHintLabel)})
    quiet->setPalette(palette);
  if (isRecording_) palette.setColor(QPalette::WindowText, kRecording);
  form_->stateLabel->setPalette(palette);
  form_->elapsedTimeTextField->setPalette(palette);
}

bool RecordSheet::eventFilter(QObject* /*object*/, QEvent* event) {
  if (event->type() == QEvent::KeyPress) return keyPressed(static_cast<QKeyEvent&>(*event));
  if (event->type() == QEvent::PaletteChange) stateChanged();
  return false;
}

// A key that no control took. Escape closes, and Tab goes on to the next control.
bool RecordSheet::keyPressed(QKeyEvent& key) {
  if (key.key() == Qt::Key_Escape || key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) return false;
  if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
    // A name that is finished leaves the keys to the sheet again.
    if (form_->filenameTextField->hasFocus()) dialog_.setFocus();
  } else if (!key.isAutoRepeat()) {
    const Qt::KeyboardModifiers none = Qt::NoModifier | Qt::KeypadModifier;
    controller_.keyDown({characterOf(key), (key.modifiers() & ~none) != 0});
  }
  key.accept();
  return true;
}

void RecordSheet::stateChanged() {
  const Recorder& recorder = controller_.recorder();
  isRecording_ = controller_.startButton().image() == "StopButton";
  form_->recordingDot->setVisible(isRecording_);
  dialog_.setWindowTitle(isRecording_ ? tr("Recording") : tr("Record"));
  QString state = isRecording_ ? tr("Recording") : tr("Ready");
  if (!recorder.soundItem.isOn() && recorder.videoItem.isOn()) state = tr("%1, no sound").arg(state);
  if (recorder.soundItem.isOn() && !recorder.videoItem.isOn()) state = tr("%1, sound only").arg(state);
  form_->stateLabel->setText(state);
  form_->keyHintLabel->setText(isRecording_ ? tr("or press R to stop") : tr("or press R"));
  colour();
}

void RecordSheet::prepareSizePanel(QDialog& panel) {
  for (auto* field : panel.findChildren<QLineEdit*>())
    field->setValidator(new QIntValidator(0, kLargestSide, field));
  auto* width = panel.findChild<QLineEdit*>(QStringLiteral("wSizeField"));
  Window& window = controller_.recorder().sizePanel;
  observations_.push_back(window.observe([&window, width, wasVisible = std::make_shared<bool>(false)] {
    if (std::exchange(*wasVisible, window.isVisible()) || !window.isVisible()) return;
    width->setFocus();
    width->selectAll();
  }));
}

// Before its field is disabled, the focus goes to the sheet: the next control would take keys that were meant
// for the name.
void RecordSheet::nameChanged() {
  if (!controller_.filenameTextField().isEnabled() && form_->filenameTextField->hasFocus())
    dialog_.setFocus();
}

}  // namespace clipwave
