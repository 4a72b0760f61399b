#include "desktop/OutletMirrors.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QTextBrowser>

#include "desktop/ControlMirrors.h"
#include "desktop/FieldMirror.h"
#include "desktop/LevelMeter.h"
#include "desktop/LivePicture.h"
#include "desktop/MenuMirrors.h"
#include "desktop/Spinner.h"
#include "desktop/WindowMirror.h"

namespace clipwave {

namespace {

// Makes the mirror where the widget is of the kind that it takes.
template <class Mirror, class Widget, class Shown>
bool show(QWidget& widget, Shown& shown) {
  auto* fitting = qobject_cast<Widget*>(&widget);
  if (fitting != nullptr) new Mirror(*fitting, shown);
  return fitting != nullptr;
}

bool showIn(QWidget& widget, TextField& field, WindowMirror& mirror) {
  if (!FieldMirror::canShow(widget)) return show<StatusMirror, QLabel>(widget, field);
  new FieldMirror(widget, field);
  mirror.addResponder(widget, field);
  return true;
}

bool showIn(QWidget& widget, Button& button, WindowMirror&) {
  return show<ButtonMirror, QAbstractButton>(widget, button);
}

bool showIn(QWidget& widget, MenuButton& button, WindowMirror&) {
  return show<MenuButtonMirror, QPushButton>(widget, button);
}

bool showIn(QWidget& widget, PopUpButton& popUp, WindowMirror&) {
  return show<PopUpMirror, QComboBox>(widget, popUp);
}

bool showIn(QWidget& widget, ProgressIndicator& indicator, WindowMirror&) {
  return show<SpinnerMirror, Spinner>(widget, indicator);
}

bool showIn(QWidget& widget, LevelIndicator& indicator, WindowMirror&) {
  return show<LevelMirror, LevelMeter>(widget, indicator);
}

bool showIn(QWidget& widget, Slider& slider, WindowMirror&) {
  return show<SliderMirror, QSlider>(widget, slider) || show<SliderValueMirror, QLabel>(widget, slider);
}

bool showIn(QWidget& widget, ImageView& view, WindowMirror&) {
  auto* picture = qobject_cast<LivePicture*>(&widget);
  if (picture != nullptr) picture->attach(view);
  return picture != nullptr;
}

bool showIn(QWidget& widget, ScrollView& scrollView, WindowMirror&) {
  return show<ScrollMirror, QScrollArea>(widget, scrollView);
}

// Tables want columns, which their window knows.
bool showIn(QWidget&, TableView&, WindowMirror&) {
  return false;
}

bool showIn(QWidget& widget, TextView& textView, WindowMirror&) {
  return show<TextViewMirror, QTextBrowser>(widget, textView);
}

}  // namespace

bool mirrorOutlet(QWidget& widget, const Outlet& outlet, WindowMirror& mirror) {
  return std::visit([&](auto* element) { return showIn(widget, *element, mirror); }, outlet);
}

}  // namespace clipwave
