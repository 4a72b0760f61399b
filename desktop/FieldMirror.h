// Shows a text field in a line edit, a text edit or an editable combo box, and takes its keystrokes as they
// come.
#pragma once

#include <QObject>
#include <QString>
#include <QWidget>
#include <functional>

#include "platform/appkit/Controls.h"

class QKeyEvent;
class QLineEdit;

namespace clipwave {

class FieldMirror final : public QObject {
  Q_OBJECT

 public:
  // Lives with the widget, which is one of the three kinds; the field must outlive it.
  FieldMirror(QWidget& widget, TextField& field);
  static bool canShow(const QWidget& widget);
  // What an empty field shows, dimmed.
  static void setPlaceholder(QWidget& widget, const QString& text);
  static QString placeholder(const QWidget& widget);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void fieldChanged();
  QString shownText() const;
  void showText(const QString& text);
  void connectKeystrokes();
  void lineEdited(QLineEdit& line);
  void forgetTyping();
  bool canTakeTypingBack(const QKeyEvent& key) const;

  QWidget& widget_;
  TextField& field_;
  bool wasEditing_ = false;
  Observation observation_;
};

}  // namespace clipwave
