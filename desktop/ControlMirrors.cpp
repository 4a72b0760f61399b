#include "desktop/ControlMirrors.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSlider>
#include <QTextBrowser>
#include <QTextCursor>
#include <cmath>

#include "desktop/LevelMeter.h"
#include "desktop/Spinner.h"
#include "desktop/SymbolicIcon.h"
#include "desktop/Text.h"

namespace clipwave {

ButtonMirror::ButtonMirror(QAbstractButton& widget, Button& button) : QObject(&widget) {
  const auto show = [&widget, &button] {
    // A button without a title keeps what its interface file says: with a face, for each face.
    const QString face = toQString(button.image());
    QString title = toQString(button.title());
    if (title.isEmpty()) title = widget.property(("titleOf" + button.image()).c_str()).toString();
    if (!title.isEmpty()) widget.setText(title);
    if (!face.isEmpty()) widget.setIcon(imageNamed(face));
    widget.setEnabled(button.isEnabled());
    widget.setHidden(button.isHidden());
  };
  observation_ = button.observe(show);
  connect(&widget, &QAbstractButton::clicked, this, [&button] { button.performClick(); });
  show();
}

PopUpMirror::PopUpMirror(QComboBox& widget, PopUpButton& popUp) : QObject(&widget) {
  observation_ = popUp.observe([this, &widget, &popUp] { popUpChanged(widget, popUp); });
  connect(&widget, &QComboBox::activated, this, [this, &widget, &popUp](int index) {
    popUp.chooseItemWithTag(widget.itemData(index).toInt());
    // A choice that was taken back shows again what there is.
    popUpChanged(widget, popUp);
  });
  popUpChanged(widget, popUp);
}

void PopUpMirror::popUpChanged(QComboBox& widget, const PopUpButton& popUp) {
  const QSignalBlocker silent(&widget);
  if (widget.count() != static_cast<int>(popUp.items().size())) {
    widget.clear();
    for (const PopUpButton::Item& item : popUp.items()) widget.addItem(toQString(item.title), item.tag);
  }
  widget.setCurrentIndex(popUp.selectedTag() ? widget.findData(*popUp.selectedTag()) : -1);
  widget.setEnabled(popUp.isEnabled());
}

StatusMirror::StatusMirror(QLabel& widget, TextField& field) : QObject(&widget) {
  const auto show = [&widget, &field] {
    // The label keeps its place, so that nothing beside it moves.
    widget.setText(field.isHidden() ? QString() : toQString(field.stringValue()));
  };
  observation_ = field.observe(show);
  show();
}

SpinnerMirror::SpinnerMirror(Spinner& widget, ProgressIndicator& indicator) : QObject(&widget) {
  const auto show = [&widget, &indicator] { widget.setSpinning(indicator.isAnimating()); };
  observation_ = indicator.observe(show);
  show();
}

LevelMirror::LevelMirror(LevelMeter& widget, LevelIndicator& indicator) : QObject(&widget) {
  const auto show = [&widget, &indicator] {
    // The bar keeps its place, so that nothing around it moves.
    widget.setLevel(indicator.isHidden() || !indicator.isEnabled() ? 0 : indicator.level());
  };
  observation_ = indicator.observe(show);
  show();
}

SliderMirror::SliderMirror(QSlider& widget, Slider& slider) : QObject(&widget) {
  widget.setRange(static_cast<int>(slider.minValue()), static_cast<int>(slider.maxValue()));
  const auto show = [&widget, &slider] {
    const QSignalBlocker silent(&widget);
    widget.setValue(static_cast<int>(std::lround(slider.value())));
    widget.setEnabled(slider.isEnabled());
    widget.setHidden(slider.isHidden());
    for (QLabel* label : widget.window()->findChildren<QLabel*>())
      if (label->buddy() == &widget) label->setHidden(slider.isHidden());
  };
  connect(&widget, &QSlider::valueChanged, this, [&slider](int value) { slider.setValue(value); });
  observation_ = slider.observe(show);
  show();
}

SliderValueMirror::SliderValueMirror(QLabel& widget, Slider& slider) : QObject(&widget) {
  const auto show = [&widget, &slider] {
    const double share = (slider.value() - slider.minValue()) / (slider.maxValue() - slider.minValue());
    widget.setText(tr("%1 %").arg(std::lround(share * 100)));
    widget.setHidden(slider.isHidden());
  };
  observation_ = slider.observe(show);
  show();
}

ScrollMirror::ScrollMirror(QScrollArea& widget, ScrollView& scrollView) : QObject(&widget) {
  if (widget.widget() != nullptr) {
    const QSize size = widget.widget()->sizeHint();
    scrollView.setDocumentSize({static_cast<double>(size.width()), static_cast<double>(size.height())});
  }
  observation_ = scrollView.observe([&widget, &scrollView] {
    const double fromTop = scrollView.documentSize().height - scrollView.scrolledTo().y;
    widget.verticalScrollBar()->setValue(static_cast<int>(fromTop));
  });
}

TextViewMirror::TextViewMirror(QTextBrowser& widget, TextView& textView) : QObject(&widget) {
  const auto show = [&widget, &textView] {
    const std::string& text = textView.string();
    widget.setPlainText(toQString(text));
    for (const TextStorage::Run& run : textView.textStorage().runs()) {
      const auto link = run.attributes.find(NSLinkAttributeName);
      if (link == run.attributes.end()) continue;
      const auto lengthBefore = toQString(std::string_view(text).substr(0, run.range.location)).size();
      const auto length =
          toQString(std::string_view(text).substr(run.range.location, run.range.length)).size();
      QTextCursor cursor(widget.document());
      cursor.setPosition(static_cast<int>(lengthBefore));
      cursor.setPosition(static_cast<int>(lengthBefore + length), QTextCursor::KeepAnchor);
      QTextCharFormat format;
      format.setAnchor(true);
      format.setAnchorHref(toQString(link->second.stringValue()));
      format.setFontUnderline(true);
      // The blue that the palette has for links: readable on a dark ground, too.
      format.setForeground(widget.palette().link());
      cursor.mergeCharFormat(format);
    }
    widget.moveCursor(QTextCursor::Start);
  };
  widget.setOpenLinks(false);
  connect(&widget, &QTextBrowser::anchorClicked, this,
          [this](const QUrl& url) { emit linkActivated(url.toString(QUrl::FullyEncoded)); });
  observation_ = textView.observe(show);
  show();
}

}  // namespace clipwave
