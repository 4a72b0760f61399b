// Interface elements as state: what is shown and what was entered, without a pixel in it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Observation.h"

namespace clipwave {

class Window;

struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;
  bool operator==(const Size&) const = default;
};

// The y axis points up.
struct Rect {
  Point origin;
  Size size;
  bool operator==(const Rect&) const = default;
};

// Something that can have the keyboard focus.
class Responder {
 public:
  virtual ~Responder() = default;
  virtual bool acceptsFirstResponder() const { return true; }
  // Asked before the focus leaves; false keeps it here (an entry that is not acceptable).
  virtual bool resignFirstResponder() { return true; }
};

// One element. Whoever mirrors it in a widget observes it and writes back through the same setters; setting
// what is already there calls nobody.
class Element : public Responder {
 public:
  Element() = default;
  Element(const Element&) = delete;
  Element& operator=(const Element&) = delete;

  bool isHidden() const { return hidden_; }
  void setHidden(bool hidden) { assign(hidden_, hidden); }
  bool isEnabled() const { return enabled_; }
  virtual void setEnabled(bool enabled) { assign(enabled_, enabled); }

  // Called after any of the element's state changed.
  Observation observe(std::function<void()> function) { return observers_.add(std::move(function)); }

 protected:
  void changed() { observers_.call(); }
  template <class T, class U>
  void assign(T& field, U&& value) {
    if (field == value) return;
    field = std::forward<U>(value);
    changed();
  }

 private:
  bool hidden_ = false;
  bool enabled_ = true;
  Observers<> observers_;
};

// A rectangular area with a frame in its superview's coordinates.
class View : public Element {
 public:
  const Rect& frame() const { return frame_; }
  void setFrame(const Rect& frame) { assign(frame_, frame); }
  void setFrameOrigin(Point origin) { assign(frame_.origin, origin); }
  // Asks for drawing at once.
  void display() {
    ++displayCount_;
    changed();
  }
  int displayCount() const { return displayCount_; }

 private:
  Rect frame_;
  int displayCount_ = 0;
};

}  // namespace clipwave
