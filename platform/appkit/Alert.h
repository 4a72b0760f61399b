// A question or a message that the user has to answer before the program goes on.
#pragma once

#include <optional>
#include <string>

#include "platform/appkit/Element.h"

namespace clipwave {

// A check box added to an alert's content view.
struct AlertCheckBox {
  std::string title;
  Point origin;       // points from the panel's lower-left corner
  bool isOn = false;  // as shown, then as the user left it
};

// Escape and closing answer the button "Cancel", where there is one, else the only button.
struct Alert {
  enum class Style { Informational, Critical };
  enum class Answer { Default, Alternate, Other };

  Style style = Style::Informational;
  std::string title;    // "" for none
  std::string message;  // shown as text, never read as a format
  std::string defaultButton = "OK";
  std::string alternateButton = {};  // "" for none
  std::string otherButton = {};
  std::optional<AlertCheckBox> checkBox = {};
  // What is asked about (a file's name), for a shell that answers by itself; not shown.
  std::string subject = {};
};

}  // namespace clipwave
