// Show what the selected records of a list have in common in widgets that hold no text being typed, and store
// what the user chooses there.
#pragma once

#include <QDateTime>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/appkit/SelectedValue.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QWidget;

namespace clipwave {

class ArtworkWell;
class DateField;

// Sets the value in every selected record, validated, and names the undo step so. A refusal is handed to
// `presentError`.
void storeChoice(ArrayController& controller, const std::string& key, const Value& value,
                 const std::string& undoName, const std::function<void(const Error&)>& presentError);

// Each lives with its widget; the controller must outlive it.

// Different values show as a partial check; a click then checks them all.
class CheckMirror final : public QObject {
  Q_OBJECT
 public:
  CheckMirror(QCheckBox& widget, ArrayController& controller, std::string key,
              std::function<void(bool)> store);

 private:
  void refresh();

  QCheckBox& widget_;
  SelectedValue selected_;
};

// A choice among fixed texts. A value that is not among them shows as no choice.
class ChoiceMirror final : public QObject {
  Q_OBJECT
 public:
  ChoiceMirror(QComboBox& widget, ArrayController& controller, std::string key,
               std::function<void(const std::string&)> store);

 private:
  void refresh();

  QComboBox& widget_;
  SelectedValue selected_;
};

// A date while it is being typed is an edit of the list, as a text is. `zoneKey` "": the machine's zone.
class DateMirror final : public QObject, public Editor {
  Q_OBJECT
 public:
  DateMirror(DateField& widget, ArrayController& controller, std::string key, std::string zoneKey,
             std::function<void(const Value&)> store);
  ~DateMirror() override;

  bool commitEditing() override;
  void discardEditing() override;

 private:
  void refresh();
  void endEditing();

  DateField& widget_;
  ArrayController& controller_;
  std::function<void(const Value&)> store_;
  bool isEditing_ = false;
  SelectedValue selected_;
  std::unique_ptr<SelectedValue> zone_;
};

// A text that is only shown; several different values show as an ellipsis.
class LabelMirror final : public QObject {
  Q_OBJECT
 public:
  LabelMirror(QLabel& widget, ArrayController& controller, std::string key);

 private:
  void refresh();

  QLabel& widget_;
  SelectedValue selected_;
};

// The program's image that the value names.
class ImageMirror final : public QObject {
  Q_OBJECT
 public:
  ImageMirror(QLabel& widget, ArrayController& controller, std::string key);

 private:
  void refresh();

  QLabel& widget_;
  SelectedValue selected_;
};

// Keeps a widget enabled while something is selected, and while `enabledKey` ("" for none) is true for it.
// What is enabled so may be an element instead of the widget itself.
class EnabledMirror final : public QObject {
  Q_OBJECT
 public:
  EnabledMirror(QObject& owner, ArrayController& controller, const std::string& enabledKey,
                const std::function<void(bool)>& setEnabled);

 private:
  SelectedValue selected_;
};

// The artwork that the selected channels share, chosen among all images.
class ImagePicker final : public QObject {
  Q_OBJECT
 public:
  // `store` takes the chosen image, absent for none.
  ImagePicker(QComboBox& widget, ArrayController& channels, ArrayController& images,
              std::function<void(const Value&)> store);

 private:
  void refresh();
  ManagedObject* imageWithID(std::int64_t objectID) const;

  QComboBox& widget_;
  ArrayController& images_;
  SelectedValue selected_;
  Observation imagesObservation_;
  Observation titlesObservation_;
};

}  // namespace clipwave
