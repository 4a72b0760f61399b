#include "platform/appkit/Menu.h"

#include <algorithm>

namespace clipwave {

MenuItem* Menu::item(std::string_view action, int tag) const {
  const auto found = std::ranges::find_if(
      items_, [&](const MenuItem* item) { return item->action() == action && item->tag() == tag; });
  return found == items_.end() ? nullptr : *found;
}

void Menu::update() {
  if (!validator_) return;
  for (MenuItem* item : items_) item->setEnabled(validator_(*item));
}

void Menu::popUpContextMenu(Element& view) {
  update();
  popUps_.call(view);
}

}  // namespace clipwave
