// The one loader of outlets, actions and bindings: walks a finished widget tree and connects each widget with
// what its dynamic properties name.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/InterfaceNames.h"
#include "platform/appkit/FieldBinding.h"

class QAction;
class QComboBox;
class QWidget;

namespace clipwave {

class WindowMirror;

// Properties, all texts:
//   outlet          the element of the program that the widget shows
//   action          the operation that a button or a menu entry sends
//   tag             of an entry that a button's menu has: tells entries of one action apart
//   closeAction     the operation that closing a dialogue sends
//   binding         CONTROLLER.selection.KEY, or a setting such as defaults.KEY
//   enabledBinding  a key path of a boolean without which the widget is disabled
//   zoneBinding     of a date: the key path of the time zone in which it is shown
//   startsGroup     true of such an entry that has a line above it
//   titleOfFACE     a button's text while its element has the image FACE and no title of its own
//   choices         what a combo box offers
//   shows           "image": a label shows the image that its value names
//   validator       the check of a field's entries
class InterfaceWiring final : public QObject {
  Q_OBJECT

 public:
  // What the names stand for must outlive every wired window, and so must this.
  explicit InterfaceWiring(InterfaceNames names);

  // Wires a window of the program that is shown in `root`. Outlets that this knows nothing about (custom
  // widgets) are left to `wireOutlet`, which answers whether it knows the name. Answers what it refused, one
  // sentence each: names that nothing answers to, and widgets that cannot show what they are to show.
  using OutletWirer = std::function<bool(const QString& outlet, QWidget& widget)>;
  QStringList wire(QWidget& root, WindowMirror& mirror, const OutletWirer& wireOutlet);

  // Sends an action by its name, as a button would; false for a name that nothing answers to, or that is
  // disabled.
  bool send(const std::string& name);
  // Has menu entries and buttons ask again whether they can be sent.
  void refreshActions();
  const InterfaceNames& names() const { return names_; }

 signals:
  // An action was sent and has returned.
  void sent();

 private:
  struct Sender {
    QObject* object;
    std::string action;
  };
  struct KeyPath;

  void wireWidget(QWidget& widget, WindowMirror& mirror, const OutletWirer& wireOutlet);
  void wireOutletOf(QWidget& widget, WindowMirror& mirror, const OutletWirer& wireOutlet);
  void wireSender(QObject& sender, WindowMirror& mirror);
  bool wireMenuEntry(QAction& entry, const std::string& action);
  void wireBinding(QWidget& widget, WindowMirror& mirror);
  void bindSelection(QWidget& widget, WindowMirror& mirror, const KeyPath& path);
  void bindField(QWidget& widget, WindowMirror& mirror, const KeyPath& path);
  void bindSetting(QWidget& widget, WindowMirror& mirror, const std::string& keyPath);
  void bindChoice(QComboBox& combo, WindowMirror& mirror, const SettingAccess& setting,
                  const std::function<bool(const std::string&)>& tell,
                  std::vector<Observation>& observations);
  void setCheck(QWidget& widget, TextField& field);
  void keepEnabled(QWidget& widget, TextField* field, const KeyPath& path);
  void offerChoices(QComboBox& combo, const Window& window);
  std::optional<KeyPath> keyPathOf(const QString& text);
  void refuse(const QObject& object, const QString& reason);

  InterfaceNames names_;
  std::vector<Sender> senders_;
  QStringList refused_;
};

}  // namespace clipwave
