// Shows a text field in a line edit, a text edit or an editable combo box, and takes its keystrokes as they
// come.
#pragma once

#include <QObject>
#include <QString>
#include <QWidget>
#include <functional>

#include "platform/appkit/Controls.h"

class QLineEdit;

namespace clipwave {

class FieldMirror final : public QObject {
  Q_OBJECT

 public:
  // Lives with the widget, which is one of the three kinds; the field must outlive it.
  FieldMirror(QWidget& widget, TextField& field);
  static bool canShow(const QWidget& widget);
  // An empty field then says, dimmed, that there are several values, in place of its own placeholder.
  void setShowsSeveralValues(bool shows);
  static QString severalValuesText() { return tr("Several values"); }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void fieldChanged();
  QString shownText() const;
  void showText(const QString& text);
  void connectKeystrokes();
  // The line that is typed in; null for a text edit.
  QLineEdit* line() const;

  QWidget& widget_;
  TextField& field_;
  QString placeholder_;
  Observation observation_;
};

}  // namespace clipwave
