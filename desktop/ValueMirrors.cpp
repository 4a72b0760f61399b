#include "desktop/ValueMirrors.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QTimeZone>
#include <algorithm>

#include "desktop/DateField.h"
#include "desktop/FieldMirror.h"
#include "desktop/SymbolicIcon.h"
#include "desktop/Text.h"
#include "model/LibraryModel.h"
#include "platform/coredata/ManagedObjectContext.h"

namespace clipwave {

namespace {

QTimeZone zoneNamed(const Value& name) {
  const QTimeZone zone(QByteArray(std::string(name.stringValue()).c_str()));
  return zone.isValid() ? zone : QTimeZone::systemTimeZone();
}

}  // namespace

void storeChoice(ArrayController& controller, const std::string& key, const Value& value,
                 const std::string& undoName, const std::function<void(const Error&)>& presentError) {
  const Validation answer = controller.selection().commitValue(key, value);
  if (answer.valid) controller.setUndoActionName(undoName);
  if (!answer.valid && answer.error && presentError) presentError(*answer.error);
}

CheckMirror::CheckMirror(QCheckBox& widget, ArrayController& controller, std::string key,
                         std::function<void(bool)> store)
    : QObject(&widget), widget_(widget), selected_(controller, std::move(key), [this] { refresh(); }) {
  connect(&widget, &QCheckBox::clicked, this, [this, store = std::move(store)] {
    store(widget_.checkState() != Qt::Unchecked);
    refresh();
  });
  refresh();
}

void CheckMirror::refresh() {
  const QSignalBlocker silent(&widget_);
  const bool isMixed = selected_.differs();
  // Only the program makes a check partial.
  widget_.setTristate(isMixed);
  if (isMixed) {
    widget_.setCheckState(Qt::PartiallyChecked);
  } else {
    widget_.setChecked(selected_.value().boolValue());
  }
}

ChoiceMirror::ChoiceMirror(QComboBox& widget, ArrayController& controller, std::string key,
                           std::function<void(const std::string&)> store)
    : QObject(&widget), widget_(widget), selected_(controller, std::move(key), [this] { refresh(); }) {
  connect(&widget, &QComboBox::textActivated, this,
          [store = std::move(store)](const QString& text) { store(toText(text)); });
  refresh();
}

void ChoiceMirror::refresh() {
  widget_.setPlaceholderText(selected_.differs() ? FieldMirror::severalValuesText() : QString());
  widget_.setCurrentIndex(widget_.findText(toQString(selected_.value().stringValue())));
}

DateMirror::DateMirror(DateField& widget, ArrayController& controller, std::string key, std::string zoneKey,
                       std::function<void(const Value&)> store)
    : QObject(&widget),
      widget_(widget),
      controller_(controller),
      store_(std::move(store)),
      selected_(controller, std::move(key), [this] { refresh(); }) {
  if (!zoneKey.empty())
    zone_ = std::make_unique<SelectedValue>(controller, std::move(zoneKey), [this] { refresh(); });
  connect(&widget, &DateField::editingBegan, this, [this] {
    if (std::exchange(isEditing_, true)) return;
    controller_.objectDidBeginEditing(*this);
  });
  connect(&widget, &DateField::editingEnded, this, [this] { commitEditing(); });
  connect(&widget, &DateField::editingDiscarded, this, [this] { discardEditing(); });
  refresh();
}

DateMirror::~DateMirror() {
  if (isEditing_) controller_.objectDidEndEditing(*this);
}

bool DateMirror::commitEditing() {
  if (!isEditing_) return true;
  const std::optional<QDateTime> date = widget_.dateTime();
  endEditing();
  store_(date ? Value(Date{date->toMSecsSinceEpoch() * 1000}) : Value());
  refresh();
  return true;
}

void DateMirror::discardEditing() {
  if (!isEditing_) return;
  endEditing();
  refresh();
}

void DateMirror::endEditing() {
  isEditing_ = false;
  controller_.objectDidEndEditing(*this);
}

void DateMirror::refresh() {
  if (isEditing_) return;
  const std::optional<Date> date = selected_.value().dateValue();
  const QTimeZone zone = zone_ ? zoneNamed(zone_->value()) : QTimeZone::systemTimeZone();
  widget_.setDateTime(
      date ? std::optional(QDateTime::fromMSecsSinceEpoch(date->microseconds / 1000, zone)) : std::nullopt,
      selected_.differs());
}

LabelMirror::LabelMirror(QLabel& widget, ArrayController& controller, std::string key)
    : QObject(&widget), widget_(widget), selected_(controller, std::move(key), [this] { refresh(); }) {
  widget_.setTextFormat(Qt::PlainText);
  refresh();
}

void LabelMirror::refresh() {
  widget_.setText(selected_.differs() ? QStringLiteral("…") : toQString(selected_.value().stringValue()));
}

ImageMirror::ImageMirror(QLabel& widget, ArrayController& controller, std::string key)
    : QObject(&widget), widget_(widget), selected_(controller, std::move(key), [this] { refresh(); }) {
  refresh();
}

void ImageMirror::refresh() {
  const QIcon image = imageNamed(toQString(selected_.value().stringValue()));
  widget_.setPixmap(image.pixmap(widget_.maximumSize(), widget_.devicePixelRatioF()));
}

EnabledMirror::EnabledMirror(QObject& owner, ArrayController& controller, const std::string& enabledKey,
                             const std::function<void(bool)>& setEnabled)
    : QObject(&owner), selected_(controller, enabledKey, [this, enabledKey, setEnabled] {
        setEnabled(selected_.hasSelection() && (enabledKey.empty() || selected_.value().boolValue()));
      }) {
  setEnabled(selected_.hasSelection() && (enabledKey.empty() || selected_.value().boolValue()));
}

ImagePicker::ImagePicker(QComboBox& widget, ArrayController& channels, ArrayController& images,
                         std::function<void(const Value&)> store)
    : QObject(&widget),
      widget_(widget),
      images_(images),
      selected_(channels, "image", [this] { refresh(); }),
      imagesObservation_(images.observeArrangedObjects([this] { refresh(); })),
      titlesObservation_(images.observeStore([this](const ContextChange& change) {
        if (change.kind == ContextChange::Kind::ValueChanged &&
            change.object->entity().name() == kImageEntity)
          refresh();
      })) {
  connect(&widget, &QComboBox::activated, this, [this, store = std::move(store)](int index) {
    store(imageWithID(widget_.itemData(index).toLongLong()));
    refresh();
  });
  refresh();
}

void ImagePicker::refresh() {
  const QSignalBlocker silent(&widget_);
  widget_.clear();
  widget_.addItem(tr("None"), 0);
  for (ManagedObject* image : images_.arrangedObjects()) {
    const QString title = toQString(image->value("title").stringValue());
    widget_.addItem(title.isEmpty() ? tr("Untitled") : title, static_cast<qlonglong>(image->objectID()));
  }
  const ManagedObject* current = selected_.value().recordValue();
  const int place = current == nullptr ? 0 : widget_.findData(static_cast<qlonglong>(current->objectID()));
  widget_.setCurrentIndex(selected_.differs() ? -1 : place);
  widget_.setEnabled(selected_.hasSelection());
}

ManagedObject* ImagePicker::imageWithID(std::int64_t objectID) const {
  ManagedObjectContext* context = images_.managedObjectContext();
  return context != nullptr && objectID != 0 ? context->objectWithID(objectID) : nullptr;
}

}  // namespace clipwave
