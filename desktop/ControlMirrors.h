// Show the simple elements' state in their widgets, and send what the user does there.
#pragma once

#include <QObject>

#include "platform/appkit/Controls.h"
#include "platform/appkit/TextView.h"

class QAbstractButton;
class QComboBox;
class QLabel;
class QScrollArea;
class QSlider;
class QTextBrowser;

namespace clipwave {

class LevelMeter;
class Spinner;

// Each lives with its widget; what it shows must outlive it.

// A button whose element has an image but no title takes the text of its property "titleOf" with the image's
// name behind it.
class ButtonMirror final : public QObject {
  Q_OBJECT
 public:
  ButtonMirror(QAbstractButton& widget, Button& button);

 private:
  Observation observation_;
};

class PopUpMirror final : public QObject {
  Q_OBJECT
 public:
  PopUpMirror(QComboBox& widget, PopUpButton& popUp);

 private:
  void popUpChanged(QComboBox& widget, const PopUpButton& popUp);
  Observation observation_;
};

// A text that is only shown.
class StatusMirror final : public QObject {
  Q_OBJECT
 public:
  StatusMirror(QLabel& widget, TextField& field);

 private:
  Observation observation_;
};

class SpinnerMirror final : public QObject {
  Q_OBJECT
 public:
  SpinnerMirror(Spinner& widget, ProgressIndicator& indicator);

 private:
  Observation observation_;
};

class LevelMirror final : public QObject {
  Q_OBJECT
 public:
  LevelMirror(LevelMeter& widget, LevelIndicator& indicator);

 private:
  Observation observation_;
};

// Its label is hidden and shown with it.
class SliderMirror final : public QObject {
  Q_OBJECT
 public:
  SliderMirror(QSlider& widget, Slider& slider);

 private:
  Observation observation_;
};

// The slider's value in words: its share of the way.
class SliderValueMirror final : public QObject {
  Q_OBJECT
 public:
  SliderValueMirror(QLabel& widget, Slider& slider);

 private:
  Observation observation_;
};

// The state counts from the lower left corner, as it always does.
class ScrollMirror final : public QObject {
  Q_OBJECT
 public:
  ScrollMirror(QScrollArea& widget, ScrollView& scrollView);

 private:
  Observation observation_;
};

// Links are told as they are clicked; the widget itself follows none.
class TextViewMirror final : public QObject {
  Q_OBJECT
 public:
  TextViewMirror(QTextBrowser& widget, TextView& textView);

 signals:
  void linkActivated(const QString& url);

 private:
  Observation observation_;
};

}  // namespace clipwave
