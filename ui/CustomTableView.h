// A table whose Delete key removes the selected rows from the list behind it.
#pragma once

#include <string>
#include <string_view>

#include "platform/appkit/Application.h"
#include "platform/appkit/TableView.h"

namespace clipwave {

class CustomTableView final : public TableView {
 public:
  explicit CustomTableView(Application& application) : application_(application) {}

  void bind(std::string_view binding, ArrayController* toObject, std::string_view withKeyPath) override;
  void unbind(std::string_view binding) override;
  bool keyDown(const KeyEvent& event) override;

  // The list that the "content" binding points at, and its key path; none without one.
  ArrayController* tableContentController() const { return tableContentController_; }
  const std::string& tableContentKey() const { return tableContentKey_; }

 private:
  Application& application_;
  ArrayController* tableContentController_ = nullptr;
  std::string tableContentKey_;
};

}  // namespace clipwave
