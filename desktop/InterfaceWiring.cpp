#include "desktop/InterfaceWiring.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QTextBrowser>
#include <QVariant>

#include "desktop/ArtworkMirror.h"
#include "desktop/ArtworkWell.h"
#include "desktop/ControlMirrors.h"
#include "desktop/DateField.h"
#include "desktop/FieldMirror.h"
#include "desktop/Spinner.h"
#include "desktop/Text.h"
#include "desktop/ValueMirrors.h"
#include "desktop/WindowMirror.h"

namespace clipwave {

namespace {

// A field that exists for its widget alone, with what keeps it in step; lives with the widget.
class OwnField final : public QObject {
 public:
  explicit OwnField(QWidget& widget) : QObject(&widget) {}
  TextField field;
  std::unique_ptr<FieldBinding> binding;
  std::vector<Observation> observations;
};

// What a person calls the widget: its label without the decorations.
QString nameOf(const QWidget& widget) {
  QString name = widget.accessibleName();
  if (name.isEmpty()) {
    for (const QLabel* label : widget.window()->findChildren<QLabel*>())
      if (label->buddy() == &widget) name = label->text();
  }
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget); button != nullptr && name.isEmpty())
    name = button->text();
  return name.remove(QLatin1Char('&')).remove(QLatin1Char(':'));
}

std::string undoNameOf(const QWidget& widget) {
  return toText(InterfaceWiring::tr("Change of %1").arg(nameOf(widget)));
}

}  // namespace

struct InterfaceWiring::KeyPath {
  ArrayController* controller;
  std::string key;
};

InterfaceWiring::InterfaceWiring(InterfaceNames names) : names_(std::move(names)) {}

QStringList InterfaceWiring::wire(QWidget& root, WindowMirror& mirror, const OutletWirer& wireOutlet) {
  refused_.clear();
  wireWidget(root, mirror, wireOutlet);
  for (QWidget* widget : root.findChildren<QWidget*>()) wireWidget(*widget, mirror, wireOutlet);
  for (QAction* action : root.findChildren<QAction*>()) wireSender(*action, mirror);
  if (const std::string name = toText(propertyText(root, "closeAction")); !name.empty()) {
    if (!names_.actions.contains(name)) refuse(root, tr("there is no action %1").arg(toQString(name)));
    mirror.setCloseRequest([this, name] { send(name); });
  }
  refreshActions();
  return refused_;
}

void InterfaceWiring::wireWidget(QWidget& widget, WindowMirror& mirror, const OutletWirer& wireOutlet) {
  wireOutletOf(widget, mirror, wireOutlet);
  if (auto* combo = qobject_cast<QComboBox*>(&widget)) offerChoices(*combo);
  wireBinding(widget, mirror);
  wireSender(widget, mirror);
}

void InterfaceWiring::wireOutletOf(QWidget& widget, WindowMirror& mirror, const OutletWirer& wireOutlet) {
  const QString name = propertyText(widget, "outlet");
  if (name.isEmpty() || wireOutlet(name, widget)) return;
  const auto found = names_.outlets.find(toText(name));
  if (found == names_.outlets.end()) return refuse(widget, tr("there is no outlet %1").arg(name));

  const Outlet& outlet = found->second;
  if (TextField* const* field = std::get_if<TextField*>(&outlet)) {
    if (FieldMirror::canShow(widget)) {
      new FieldMirror(widget, **field);
      mirror.addResponder(widget, **field);
      return;
    }
    if (auto* label = qobject_cast<QLabel*>(&widget)) return void(new StatusMirror(*label, **field));
  } else if (Button* const* button = std::get_if<Button*>(&outlet)) {
    if (auto* shown = qobject_cast<QAbstractButton*>(&widget))
      return void(new ButtonMirror(*shown, **button));
  } else if (PopUpButton* const* popUp = std::get_if<PopUpButton*>(&outlet)) {
    if (auto* combo = qobject_cast<QComboBox*>(&widget)) return void(new PopUpMirror(*combo, **popUp));
  } else if (ProgressIndicator* const* indicator = std::get_if<ProgressIndicator*>(&outlet)) {
    if (auto* spinner = qobject_cast<Spinner*>(&widget))
      return void(new SpinnerMirror(*spinner, **indicator));
  } else if (ScrollView* const* scrollView = std::get_if<ScrollView*>(&outlet)) {
    if (auto* area = qobject_cast<QScrollArea*>(&widget)) return void(new ScrollMirror(*area, **scrollView));
  } else if (TextView* const* textView = std::get_if<TextView*>(&outlet)) {
    if (auto* browser = qobject_cast<QTextBrowser*>(&widget))
      return void(new TextViewMirror(*browser, **textView));
  }
  refuse(widget, tr("it cannot show %1").arg(name));
}

void InterfaceWiring::wireSender(QObject& sender, WindowMirror& mirror) {
  const std::string name = toText(propertyText(sender, "action"));
  if (name.empty()) return;
  if (!names_.actions.contains(name)) return refuse(sender, tr("there is no action %1").arg(toQString(name)));
  // A button that an element stands behind is pressed there.
  const auto outlet = names_.outlets.find(toText(propertyText(sender, "outlet")));
  if (outlet != names_.outlets.end() && std::holds_alternative<Button*>(outlet->second)) return;
  const auto perform = [this, name] { send(name); };
  if (auto* action = qobject_cast<QAction*>(&sender)) {
    connect(action, &QAction::triggered, this, perform);
  } else if (auto* button = qobject_cast<QAbstractButton*>(&sender)) {
    // It takes no focus by a click, which would ask about the entry before the button is pressed at all.
    connect(button, &QAbstractButton::clicked, this, [this, name, perform, &window = mirror.window()] {
      if (names_.actions.at(name).leavesEdits || window.firstResponder()->resignFirstResponder()) perform();
    });
  } else {
    return refuse(sender, tr("it sends no actions"));
  }
  connect(&sender, &QObject::destroyed, this,
          [this, gone = &sender] { std::erase_if(senders_, [gone](auto& s) { return s.object == gone; }); });
  senders_.push_back({&sender, name});
}

bool InterfaceWiring::send(const std::string& name) {
  const auto found = names_.actions.find(name);
  if (found == names_.actions.end()) return false;
  const InterfaceAction& action = found->second;
  if (action.isEnabled && !action.isEnabled()) return false;
  action.perform();
  emit sent();
  refreshActions();
  return true;
}

void InterfaceWiring::refreshActions() {
  for (const Sender& sender : senders_) {
    const auto& isEnabled = names_.actions.at(sender.action).isEnabled;
    if (isEnabled) sender.object->setProperty("enabled", isEnabled());
  }
}

void InterfaceWiring::wireBinding(QWidget& widget, WindowMirror& mirror) {
  const QString binding = propertyText(widget, "binding");
  if (binding.isEmpty()) return;
  if (const auto path = keyPathOf(binding)) {
    bindSelection(widget, mirror, *path);
  } else if (names_.setting && names_.setting(toText(binding)).observe) {
    bindSetting(widget, mirror, toText(binding));
  } else {
    refuse(widget, tr("there is no value %1").arg(binding));
  }
}

void InterfaceWiring::bindSelection(QWidget& widget, WindowMirror& mirror, const KeyPath& path) {
  ArrayController& controller = *path.controller;
  const auto store = [this, &widget, path](const Value& value) {
    storeChoice(*path.controller, path.key, value, undoNameOf(widget), names_.presentError);
  };
  if (FieldMirror::canShow(widget)) return bindField(widget, mirror, path);
  if (auto* box = qobject_cast<QCheckBox*>(&widget)) {
    new CheckMirror(*box, controller, path.key, store);
  } else if (auto* combo = qobject_cast<QComboBox*>(&widget)) {
    new ChoiceMirror(*combo, controller, path.key, [store](const std::string& text) { store(text); });
  } else if (auto* date = qobject_cast<DateField*>(&widget)) {
    const QString zoneText = propertyText(widget, "zoneBinding");
    const auto zone = keyPathOf(zoneText);
    if (!zoneText.isEmpty() && (!zone || zone->controller != path.controller))
      return refuse(widget, tr("there is no time zone %1").arg(zoneText));
    new DateMirror(*date, controller, path.key, zone ? zone->key : std::string(), store);
  } else if (auto* label = qobject_cast<QLabel*>(&widget)) {
    if (propertyText(widget, "shows") == QLatin1String("image")) {
      new ImageMirror(*label, controller, path.key);
    } else {
      new LabelMirror(*label, controller, path.key);
    }
    return;
  } else if (auto* well = qobject_cast<ArtworkWell*>(&widget)) {
    new ArtworkMirror(*well, controller, path.key);
    return;
  } else {
    return refuse(widget, tr("it cannot show a value"));
  }
  keepEnabled(widget, nullptr, path);
}

void InterfaceWiring::bindField(QWidget& widget, WindowMirror& mirror, const KeyPath& path) {
  auto* own = new OwnField(widget);
  TextField* field = &own->field;
  if (const auto found = names_.outlets.find(toText(propertyText(widget, "outlet")));
      found != names_.outlets.end()) {
    field = std::get<TextField*>(found->second);
  } else {
    new FieldMirror(widget, *field);
    mirror.addResponder(widget, *field);
  }
  own->binding = std::make_unique<FieldBinding>(*field, *path.controller, path.key, names_.presentError);
  own->binding->setUndoActionName(undoNameOf(widget));
  setCheck(widget, *field);
  keepEnabled(widget, field, path);
}

void InterfaceWiring::setCheck(QWidget& widget, TextField& field) {
  const QString name = propertyText(widget, "validator");
  if (name.isEmpty()) return;
  const auto validator = names_.validators.find(toText(name));
  if (validator == names_.validators.end()) return refuse(widget, tr("there is no check %1").arg(name));
  field.setValidator(validator->second);
}

void InterfaceWiring::keepEnabled(QWidget& widget, TextField* field, const KeyPath& path) {
  std::string enabledKey;
  if (const QString text = propertyText(widget, "enabledBinding"); !text.isEmpty()) {
    const auto enabled = keyPathOf(text);
    if (!enabled) return refuse(widget, tr("there is no value %1").arg(text));
    enabledKey = enabled->key;
  }
  // Through the element where there is one: a field that is disabled drops its edit.
  new EnabledMirror(widget, *path.controller, enabledKey, [&widget, field](bool isEnabled) {
    if (field != nullptr) {
      field->setEnabled(isEnabled);
    } else {
      widget.setEnabled(isEnabled);
    }
  });
}

void InterfaceWiring::bindSetting(QWidget& widget, WindowMirror& mirror, const std::string& keyPath) {
  const SettingAccess setting = names_.setting(keyPath);
  const auto tell = [present = names_.presentError](const std::string& trouble) {
    if (!trouble.empty() && present) present(cocoaError(kKeyValueValidationError, trouble));
    return trouble.empty();
  };
  auto* own = new OwnField(widget);
  if (FieldMirror::canShow(widget)) {
    TextField& field = own->field;
    auto* fieldMirror = new FieldMirror(widget, field);
    mirror.addResponder(widget, field);
    const auto show = [&field, setting] {
      if (!field.isEditing()) field.setStringValue(setting.text());
    };
    // The hint may take a question to another service: it waits until somebody can read it.
    const Window& window = mirror.window();
    const auto showHint = [&window, setting, fieldMirror] {
      const std::string hint = setting.hint && window.isVisible() ? setting.hint() : "";
      if (!hint.empty()) fieldMirror->setPlaceholder(toQString(hint));
    };
    if (setting.hint) {
      own->observations.push_back(setting.observe(showHint));
      own->observations.push_back(mirror.window().observe(showHint));
    }
    field.setCommit([setting, tell](std::string_view text) { return tell(setting.store(text)); });
    setCheck(widget, field);
    own->observations.push_back(setting.observe(show));
    own->observations.push_back(field.observe(show));
    show();
  } else if (auto* box = qobject_cast<QCheckBox*>(&widget)) {
    const auto show = [box, setting] { box->setChecked(setting.flag()); };
    connect(box, &QCheckBox::clicked, own, [setting, tell, show](bool checked) {
      tell(setting.storeFlag(checked));
      show();
    });
    own->observations.push_back(setting.observe(show));
    show();
  } else if (auto* combo = qobject_cast<QComboBox*>(&widget)) {
    const auto show = [combo, setting] {
      combo->setCurrentIndex(combo->findText(toQString(setting.text())));
    };
    connect(combo, &QComboBox::textActivated, own, [setting, tell, show](const QString& text) {
      tell(setting.store(toText(text)));
      show();
    });
    own->observations.push_back(setting.observe(show));
    show();
  } else {
    refuse(widget, tr("it cannot show a setting"));
  }
}

void InterfaceWiring::offerChoices(QComboBox& combo) {
  const std::string name = toText(propertyText(combo, "choices"));
  if (name.empty()) return;
  const auto found = names_.choices.find(name);
  if (found == names_.choices.end()) return refuse(combo, tr("there are no choices %1").arg(toQString(name)));
  combo.clear();
  combo.addItems(found->second());
  combo.setCurrentIndex(-1);
}

std::optional<InterfaceWiring::KeyPath> InterfaceWiring::keyPathOf(const QString& text) {
  const QStringList parts = text.split(QLatin1Char('.'));
  if (parts.size() != 3 || parts[1] != QLatin1String("selection")) return std::nullopt;
  const auto controller = names_.controllers.find(toText(parts[0]));
  if (controller == names_.controllers.end()) return std::nullopt;
  const EntityDescription* entity =
      names_.model != nullptr ? names_.model->entity(controller->second->entityName()) : nullptr;
  if (entity == nullptr || entity->indexOf(toText(parts[2])) < 0) return std::nullopt;
  return KeyPath{controller->second, toText(parts[2])};
}

void InterfaceWiring::refuse(const QObject& object, const QString& reason) {
  refused_ << tr("%1 of the interface: %2.").arg(object.objectName(), reason);
}

}  // namespace clipwave
