// A window or sheet: its title, its visibility, its content view and who in it has the keyboard focus.
#pragma once

#include <string>
#include <string_view>

#include "platform/appkit/Element.h"

namespace clipwave {

class Window : public Element {
 public:
  Window() : firstResponder_(this) {}

  const std::string& title() const { return title_; }
  void setTitle(std::string_view title) { assign(title_, std::string(title)); }
  View& contentView() { return contentView_; }

  // On the screen, decorations included; the y axis points up. What mirrors the window writes it as the user
  // moves and resizes the window, and moves the window when the program sets it.
  const Rect& frame() const { return frame_; }
  void setFrame(const Rect& frame) { assign(frame_, frame); }
  // What the window's style adds to its content's size.
  Size decorations() const { return decorations_; }
  void setDecorations(Size decorations) { assign(decorations_, decorations); }
  Size frameSizeForContentSize(Size content) const {
    return {content.width + decorations_.width, content.height + decorations_.height};
  }
  // The content is never smaller.
  Size contentMinSize() const { return contentMinSize_; }
  void setContentMinSize(Size size) { assign(contentMinSize_, size); }
  // In the middle of the screen, or of the window that it belongs to; a little above it.
  void center() {
    ++centerCount_;
    changed();
  }
  int centerCount() const { return centerCount_; }

  // The element with the keyboard focus; the window itself when no element has it. Never null.
  Responder* firstResponder() const { return firstResponder_; }
  // Moves the focus, to the window itself for null. The element that has it is asked first: false, and
  // nothing changes, when it refuses.
  bool makeFirstResponder(Responder* responder);

  bool isVisible() const { return visible_; }
  bool isKeyWindow() const { return key_; }
  void makeKeyAndOrderFront();
  // Another window, or another application's, has the keyboard now.
  void resignKeyWindow() { assign(key_, false); }
  void orderOut();

  // The sheet on this window, or none. Application begins and ends sheets.
  Window* attachedSheet() const { return attachedSheet_; }
  void setAttachedSheet(Window* sheet) { assign(attachedSheet_, sheet); }

 private:
  std::string title_;
  View contentView_;
  Rect frame_;
  Size decorations_;
  Size contentMinSize_;
  int centerCount_ = 0;
  Responder* firstResponder_;
  Window* attachedSheet_ = nullptr;
  bool visible_ = false;
  bool key_ = false;
};

}  // namespace clipwave
