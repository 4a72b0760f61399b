// The simple elements: text fields, buttons, pop-ups, progress indicators, scroll views.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/Element.h"

namespace clipwave {

// A one-line text field. Keystrokes arrive through edit(); the edit is pending until it is committed or
// discarded.
class TextField : public Element {
 public:
  // Asked with the proposed value before an edit is accepted (the delegate's control:isValidObject:).
  using Validator = std::function<bool(const TextField&, std::string_view proposed)>;
  // Takes the edited text over; false refuses it and the field stays in editing.
  using Commit = std::function<bool(std::string_view text)>;

  const std::string& stringValue() const { return stringValue_; }
  // Sets the text from the program; drops a pending edit.
  void setStringValue(std::string_view text);

  // Whether the field stands for several values that differ; it shows none of them then.
  bool standsForSeveral() const { return standsForSeveral_; }
  void setStandsForSeveral(bool several) { assign(standsForSeveral_, several); }

  // What the user typed, as it comes.
  void edit(std::string_view text);
  bool isEditing() const { return editing_; }
  // Ends the edit: validator, then commit. True when nothing was pending. A refusal leaves the text as typed.
  // Asked again while validator or commit still run (an alert of theirs takes the focus away), it answers
  // false and asks neither.
  bool commitEditing();
  // Drops the edit: the text is again what it was before.
  void discardEditing();
  // A field that is disabled drops its edit: nobody could end it any more.
  void setEnabled(bool enabled) override;
  bool resignFirstResponder() override { return commitEditing(); }

  void setValidator(Validator validator) { validator_ = std::move(validator); }
  void setCommit(Commit commit) { commit_ = std::move(commit); }

 private:
  std::string stringValue_;
  std::string valueBeforeEditing_;
  bool standsForSeveral_ = false;
  bool editing_ = false;
  bool committing_ = false;
  Validator validator_;
  Commit commit_;
};

class Button : public Element {
 public:
  using Action = std::function<void()>;

  const std::string& title() const { return title_; }
  void setTitle(std::string_view title) { assign(title_, std::string(title)); }
  // The name of the image that it shows; "" for none.
  const std::string& image() const { return image_; }
  void setImage(std::string_view name) { assign(image_, std::string(name)); }
  bool isOn() const { return on_; }
  void setOn(bool on) { assign(on_, on); }
  void setAction(Action action) { action_ = std::move(action); }
  // A press by the user; nothing happens while the button is disabled.
  void performClick() {
    if (isEnabled() && action_) action_();
  }

 private:
  std::string title_;
  std::string image_;
  bool on_ = false;
  Action action_;
};

class PopUpButton : public Element {
 public:
  struct Item {
    std::string title;
    int tag = 0;
    bool operator==(const Item&) const = default;
  };
  // Takes the tag over that the user chose.
  using Commit = std::function<void(int tag)>;
  using Action = std::function<void()>;

  const std::vector<Item>& items() const { return items_; }
  void setItems(std::vector<Item> items) { assign(items_, std::move(items)); }
  // The selected item's tag; nothing when no item is selected.
  std::optional<int> selectedTag() const { return selectedTag_; }
  // From the program: calls neither commit nor action. Selects nothing where no item has the tag.
  void selectItemWithTag(std::optional<int> tag) {
    assign(selectedTag_, tag && hasItemWithTag(*tag) ? tag : std::nullopt);
  }

  // A choice by the user, also of the item that is selected already: selected, committed, then the action.
  // Nothing happens while the button is disabled or when no item has the tag.
  void chooseItemWithTag(int tag);
  void setCommit(Commit commit) { commit_ = std::move(commit); }
  void setAction(Action action) { action_ = std::move(action); }

 private:
  bool hasItemWithTag(int tag) const;

  std::vector<Item> items_;
  std::optional<int> selectedTag_;
  Commit commit_;
  Action action_;
};

// An indeterminate, spinning indicator.
class ProgressIndicator : public Element {
 public:
  bool isAnimating() const { return animating_; }
  void startAnimation() { assign(animating_, true); }
  void stopAnimation() { assign(animating_, false); }

 private:
  bool animating_ = false;
};

// How strong something is at the moment, such as sound: 0 to 1.
class LevelIndicator : public Element {
 public:
  float level() const { return level_; }
  void setLevel(float level) { assign(level_, level); }

 private:
  float level_ = 0;
};

// A value between two bounds that the user sets by dragging.
class Slider : public Element {
 public:
  Slider(double minValue, double maxValue) : minValue_(minValue), maxValue_(maxValue) {}
  double minValue() const { return minValue_; }
  double maxValue() const { return maxValue_; }
  double value() const { return value_; }
  void setValue(double value) { assign(value_, value); }

 private:
  double minValue_;
  double maxValue_;
  double value_ = 0;
};

class ScrollView : public View {
 public:
  Size documentSize() const { return documentSize_; }
  void setDocumentSize(Size size) { assign(documentSize_, size); }
  Point scrolledTo() const { return scrolledTo_; }
  void scrollPoint(Point point) { assign(scrolledTo_, point); }

 private:
  Size documentSize_;
  Point scrolledTo_;
};

}  // namespace clipwave
