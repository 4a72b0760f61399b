// What the record sheet's interface file cannot say: its keys, its focus, and how it looks while it records.
#pragma once

#include <QObject>
#include <memory>
#include <vector>

#include "record/RecordWindowController.h"

class QDialog;
class QKeyEvent;

namespace Ui {
class Record;
}

namespace clipwave {

// Lives with the dialogue, which it fills; the controller must outlive it. To be made before the dialogue is
// wired.
class RecordSheet final : public QObject {
  Q_OBJECT

 public:
  RecordSheet(QDialog& dialog, RecordWindowController& controller);
  ~RecordSheet() override;
  // The panel that asks for a size: whole numbers, the first of them to be typed over at once.
  void prepareSizePanel(QDialog& panel);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void dress();
  void colour();
  bool keyPressed(QKeyEvent& key);
  void stateChanged();
  void nameChanged();

  QDialog& dialog_;
  RecordWindowController& controller_;
  std::unique_ptr<Ui::Record> form_;
  bool isRecording_ = false;
  std::vector<Observation> observations_;
};

}  // namespace clipwave
