// What the names in the interface files stand for: elements, operations, lists and choices of the program.
#pragma once

#include <QString>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Controls.h"
#include "platform/appkit/ImageView.h"
#include "platform/appkit/MovieView.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/TextView.h"
#include "platform/appkit/Window.h"
#include "platform/coredata/ManagedObjectModel.h"
#include "record/MenuButton.h"

namespace clipwave {

// Text or flag that is no record's: a setting. What `store` answers is wrong with the entry, in a sentence;
// "" when it was taken.
struct SettingAccess {
  std::function<std::string()> text;
  std::function<std::string(std::string_view)> store;
  std::function<bool()> flag;
  std::function<std::string(bool)> storeFlag;
  std::function<Observation(std::function<void()>)> observe;
  // What an empty field says of it in place of what the interface file says; none: nothing.
  std::function<std::string()> hint = {};
  // Whether a flag changes by itself, and is asked for whenever the window comes up.
  bool comesAndGoes = false;
};

struct InterfaceAction {
  std::function<void()> perform;
  // Whether it can be sent now; none: always.
  std::function<bool()> isEnabled = {};
  // Leaves the entry that is being typed alone. Before any other action that a button sends, it is taken; one
  // that is refused keeps the action from being sent.
  bool leavesEdits = false;
};

using Outlet = std::variant<TextField*, Button*, MenuButton*, PopUpButton*, ProgressIndicator*,
                            LevelIndicator*, Slider*, ImageView*, ScrollView*, TableView*, TextView*>;

// What a combo box offers.
struct Choices {
  struct Choice {
    QString shown;
    QString stored;
  };
  std::function<std::vector<Choice>()> offered;
  // Whether the choices come and go by themselves, and are asked for whenever the window comes up.
  bool comeAndGo = false;
  // How a stored value is shown that is not offered; none: as no choice.
  std::function<QString(const QString& stored)> missing = {};
};

struct InterfaceNames {
  std::map<std::string, Outlet, std::less<>> outlets;
  std::map<std::string, InterfaceAction, std::less<>> actions;
  std::map<std::string, ArrayController*, std::less<>> controllers;
  const ManagedObjectModel* model = nullptr;
  // The setting under a key path such as "defaults.noConfirm"; one without `observe` for none.
  std::function<SettingAccess(const std::string& keyPath)> setting;
  std::map<std::string, Choices, std::less<>> choices;
  std::map<std::string, TextField::Validator, std::less<>> validators;
  std::function<void(const Error&)> presentError;
};

}  // namespace clipwave
