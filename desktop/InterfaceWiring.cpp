#include "desktop/InterfaceWiring.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QPointer>
#include <QVariant>

#include "desktop/ArtworkMirror.h"
#include "desktop/ArtworkWell.h"
#include "desktop/DateField.h"
#include "desktop/FieldMirror.h"
#include "desktop/MenuMirrors.h"
#include "desktop/OutletMirrors.h"
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
  return toText(QCoreApplication::translate("InterfaceWiring", "Change of %1").arg(nameOf(widget)));
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
    if (!names_.actions.contains(name))
      refuse(root, QStringLiteral("there is no action %1").arg(toQString(name)));
    mirror.setCloseRequest([this, name] { send(name); });
  }
  refreshActions();
  return refused_;
}

void InterfaceWiring::wireWidget(QWidget& widget, WindowMirror& mirror, const OutletWirer& wireOutlet) {
  wireOutletOf(widget, mirror, wireOutlet);
  if (auto* combo = qobject_cast<QComboBox*>(&widget)) offerChoices(*combo, mirror.window());
  wireBinding(widget, mirror);
  wireSender(widget, mirror);
}

void InterfaceWiring::wireOutletOf(QWidget& widget, WindowMirror& mirror, const OutletWirer& wireOutlet) {
  const QString name = propertyText(widget, "outlet");
  if (name.isEmpty() || wireOutlet(name, widget)) return;
  const auto found = names_.outlets.find(toText(name));
  if (found == names_.outlets.end()) return refuse(widget, QStringLiteral("there is no outlet %1").arg(name));
  if (!mirrorOutlet(widget, found->second, mirror))
    refuse(widget, QStringLiteral("it cannot show %1").arg(name));
}

void InterfaceWiring::wireSender(QObject& sender, WindowMirror& mirror) {
  const std::string name = toText(propertyText(sender, "action"));
  if (name.empty()) return;
  if (auto* entry = qobject_cast<QAction*>(&sender); entry != nullptr && wireMenuEntry(*entry, name)) return;
  if (!names_.actions.contains(name))
    return refuse(sender, QStringLiteral("there is no action %1").arg(toQString(name)));
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
    return refuse(sender, QStringLiteral("it sends no actions"));
  }
  connect(&sender, &QObject::destroyed, this,
          [this, gone = &sender] { std::erase_if(senders_, [gone](auto& s) { return s.object == gone; }); });
  senders_.push_back({&sender, name});
}

// The entries of a button's menu are elements of their own; false for an entry of another menu.
bool InterfaceWiring::wireMenuEntry(QAction& entry, const std::string& action) {
  for (const QObject* around : entry.associatedObjects()) {
    const auto outlet = names_.outlets.find(toText(propertyText(*around, "outlet")));
    if (outlet == names_.outlets.end()) continue;
    auto* const* button = std::get_if<MenuButton*>(&outlet->second);
    if (button == nullptr) continue;
    const int tag = entry.property("tag").toInt();
    const Menu* menu = (*button)->menu();
    if (MenuItem* item = menu != nullptr ? menu->item(action, tag) : nullptr) {
      new MenuItemMirror(entry, *item);
    } else {
      refuse(entry,
             QStringLiteral("there is no menu entry %1 with the tag %2").arg(toQString(action)).arg(tag));
    }
    return true;
  }
  return false;
}

bool InterfaceWiring::send(const std::string& name) {
  const auto found = names_.actions.find(name);
  if (found == names_.actions.end()) return false;
  const InterfaceAction& action = found->second;
  if (action.isEnabled && !action.isEnabled()) return false;
  const QPointer<InterfaceWiring> alive(this);  // the action may close the window for good
  action.perform();
  if (!alive) return true;
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
    refuse(widget, QStringLiteral("there is no value %1").arg(binding));
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
      return refuse(widget, QStringLiteral("there is no time zone %1").arg(zoneText));
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
    return refuse(widget, QStringLiteral("it cannot show a value"));
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
  if (validator == names_.validators.end())
    return refuse(widget, QStringLiteral("there is no check %1").arg(name));
  field.setValidator(validator->second);
}

void InterfaceWiring::keepEnabled(QWidget& widget, TextField* field, const KeyPath& path) {
  std::string enabledKey;
  if (const QString text = propertyText(widget, "enabledBinding"); !text.isEmpty()) {
    const auto enabled = keyPathOf(text);
    if (!enabled) return refuse(widget, QStringLiteral("there is no value %1").arg(text));
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
    if (setting.comesAndGoes) {
      const Window& window = mirror.window();
      own->observations.push_back(mirror.window().observe([&window, show] {
        if (window.isVisible()) show();
      }));
    }
    show();
  } else if (auto* combo = qobject_cast<QComboBox*>(&widget)) {
    bindChoice(*combo, mirror, setting, tell, own->observations);
  } else {
    refuse(widget, QStringLiteral("it cannot show a setting"));
  }
}

void InterfaceWiring::bindChoice(QComboBox& combo, WindowMirror& mirror, const SettingAccess& setting,
                                 const std::function<bool(const std::string&)>& tell,
                                 std::vector<Observation>& observations) {
  const auto found = names_.choices.find(toText(propertyText(combo, "choices")));
  const Choices choices = found != names_.choices.end() ? found->second : Choices();
  const Window& window = mirror.window();
  const auto show = [&combo, &window, setting, choices] {
    if (choices.comeAndGo && !window.isVisible()) return;
    const QString stored = toQString(setting.text());
    if (combo.findData(stored) < 0 && choices.missing) combo.addItem(choices.missing(stored), stored);
    combo.setCurrentIndex(combo.findData(stored));
  };
  connect(&combo, &QComboBox::activated, &combo, [&combo, setting, tell, show](int index) {
    tell(setting.store(toText(combo.itemData(index).toString())));
    show();
  });
  observations.push_back(setting.observe(show));
  if (choices.comeAndGo) {
    observations.push_back(mirror.window().observe(
        [this, &combo, &window, show, wasVisible = std::make_shared<bool>(window.isVisible())] {
          if (std::exchange(*wasVisible, window.isVisible()) || !window.isVisible()) return;
          offerChoices(combo, window);
          show();
        }));
  }
  show();
}

void InterfaceWiring::offerChoices(QComboBox& combo, const Window& window) {
  const std::string name = toText(propertyText(combo, "choices"));
  if (name.empty()) return;
  const auto found = names_.choices.find(name);
  if (found == names_.choices.end())
    return refuse(combo, QStringLiteral("there are no choices %1").arg(toQString(name)));
  // What comes and goes is looked up for eyes to see it.
  if (found->second.comeAndGo && !window.isVisible()) return;
  combo.clear();
  for (const Choices::Choice& choice : found->second.offered()) combo.addItem(choice.shown, choice.stored);
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
  refused_ << QStringLiteral("%1 of the interface: %2.").arg(object.objectName(), reason);
}

}  // namespace clipwave
