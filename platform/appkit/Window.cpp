#include "platform/appkit/Window.h"

namespace clipwave {

bool Window::makeFirstResponder(Responder* responder) {
  if (responder == nullptr) responder = this;
  if (responder == firstResponder_) return true;
  if (!responder->acceptsFirstResponder()) return false;
  if (firstResponder_ != this && !firstResponder_->resignFirstResponder()) return false;
  firstResponder_ = responder;
  changed();
  return true;
}

void Window::makeKeyAndOrderFront() {
  if (visible_ && key_) return;
  visible_ = true;
  key_ = true;
  changed();
}

void Window::orderOut() {
  if (!visible_ && !key_) return;
  visible_ = false;
  key_ = false;
  changed();
}

}  // namespace clipwave
