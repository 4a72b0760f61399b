// An alert as a dialogue: its title and message as plain text, its check box, its buttons in their order.
#pragma once

#include <QDialog>

#include "platform/appkit/Alert.h"

class QCheckBox;
class QVBoxLayout;

namespace clipwave {

class AlertDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit AlertDialog(const Alert& alert, QWidget* parent = nullptr);

  // The button that was pressed. Before the user has pressed one: the answer that changes least ("Cancel",
  // else the last button but the default one, else the only one).
  Alert::Answer answer() const { return answer_; }
  bool isCheckBoxOn() const;

  // Escape and the window's close button: presses "Cancel", or the only button unless that is "Quit". Any
  // other question stays until it is answered.
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QVBoxLayout* makeTexts(const Alert& alert);
  QLayout* makeButtons(const Alert& alert);
  void end(Alert::Answer answer);

  Alert::Answer answer_ = Alert::Answer::Default;
  bool canBeDismissed_ = false;
  QCheckBox* checkBox_ = nullptr;
};

}  // namespace clipwave
