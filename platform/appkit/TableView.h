// A table over a list controller's records: its selected rows, its drops and its keys.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/appkit/ArrayController.h"
#include "platform/appkit/Dragging.h"
#include "platform/appkit/Element.h"

namespace clipwave {

enum class TableDropOperation { On = 0, Above = 1 };

// Codes of keys that stand for no character.
inline constexpr unsigned NSUpArrowFunctionKey = 0xF700;
inline constexpr unsigned NSDownArrowFunctionKey = 0xF701;
inline constexpr unsigned NSHomeFunctionKey = 0xF729;
inline constexpr unsigned NSEndFunctionKey = 0xF72B;

struct KeyEvent {
  enum Modifier : unsigned { Shift = 1, Control = 2, Option = 4, Command = 8 };
  // The first character without modifiers, as a code: 127 is the Backspace key's Delete character.
  unsigned character = 0;
  unsigned modifiers = 0;
};

class TableView : public View {
 public:
  // What the table asks its delegate and data source.
  class Delegate {
   public:
    virtual ~Delegate() = default;
    virtual bool selectionShouldChangeInTableView(TableView& tableView) = 0;
    // Which operation a drop would be; may retarget it with setDropRow.
    virtual unsigned validateDrop(TableView& tableView, const DraggingInfo& info, int proposedRow,
                                  TableDropOperation proposedDropOperation) = 0;
    virtual bool acceptDrop(TableView& tableView, const DraggingInfo& info, int row,
                            TableDropOperation operation) = 0;
  };

  void setDelegate(Delegate* delegate) { delegate_ = delegate; }
  Delegate* delegate() const { return delegate_; }

  // Binds an aspect of the table to a controller's key path: "content" to "arrangedObjects" makes the table
  // show the controller's records and share its selection; observers of the table are told when either
  // changes. The controller is not owned and must be unbound before it goes.
  virtual void bind(std::string_view binding, ArrayController* toObject, std::string_view withKeyPath);
  virtual void unbind(std::string_view binding);
  ArrayController* contentController() const { return contentController_; }

  void registerForDraggedTypes(std::vector<std::string> types) { assign(draggedTypes_, std::move(types)); }
  const std::vector<std::string>& registeredDraggedTypes() const { return draggedTypes_; }

  // Of the content controller; empty without one.
  IndexSet selectedRowIndexes() const;
  // A selection by the user: the delegate is asked first. False when it refuses.
  bool selectRowIndexes(const IndexSet& rows);

  // Where the current drag would land; row -1 when there is no drag.
  void setDropRow(int row, TableDropOperation operation);
  int dropRow() const { return dropRow_; }
  TableDropOperation dropOperation() const { return dropOperation_; }
  // A drag of a registered type over the table, then its drop: the delegate is asked as the platform does.
  unsigned draggingUpdated(const DraggingInfo& info, int row, TableDropOperation operation);
  bool performDrop(const DraggingInfo& info, int row, TableDropOperation operation);
  // The drag left the table without a drop.
  void draggingExited() { setDropRow(-1, TableDropOperation::Above); }

  // A key press. The base table handles the keys that move the selection (up, down, home and end; with Shift
  // they extend it); true when the key was used.
  virtual bool keyDown(const KeyEvent& event);

 private:
  Delegate* delegate_ = nullptr;
  ArrayController* contentController_ = nullptr;
  std::vector<std::string> draggedTypes_;
  int dropRow_ = -1;
  TableDropOperation dropOperation_ = TableDropOperation::Above;
  Observation selectionObservation_;
  Observation arrangedObservation_;
};

}  // namespace clipwave
