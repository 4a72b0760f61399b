// Undo and redo of changes, grouped by the event that made them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Observation.h"
#include "platform/foundation/RunLoop.h"

namespace clipwave {

// The first change in a pass of the run loop opens a group, which is closed at the end of that pass. Undoing
// one group takes all of its changes back, the last first.
class UndoManager {
 public:
  using Function = std::function<void()>;
  // Names a group for as long as it is on a stack.
  using GroupID = std::uint64_t;

  explicit UndoManager(RunLoop& runLoop) : runLoop_(runLoop) {}
  UndoManager(const UndoManager&) = delete;
  UndoManager& operator=(const UndoManager&) = delete;

  // Adds the step that takes a change back to the open group (opening one when needed). While undoing, it
  // becomes a redo step. A new step outside undo and redo forgets what could be redone. Ignored while
  // registration is disabled.
  void registerUndo(Function function);
  void disableUndoRegistration() { ++disabled_; }
  void enableUndoRegistration() { --disabled_; }
  bool isUndoRegistrationEnabled() const { return disabled_ == 0; }

  // An explicit group, also when it stays empty: begin closes the event's open group first. Nested calls join
  // the outer group.
  void beginUndoGrouping();
  void endUndoGrouping();
  // The open group (opened when there is none).
  GroupID openGroup();
  // The group that undo would take back; 0 for none.
  GroupID groupToUndo() const {
    if (open_) return open_->id;
    return undoStack_.empty() ? 0 : undoStack_.back().id;
  }
  // Runs `function` with its steps added to the end of that group, when it can still be undone; otherwise
  // they are not recorded.
  void performInGroup(GroupID group, const Function& function);

  // Closes the open group first. Nothing happens when there is nothing to undo.
  void undo();
  void redo();
  // Undoes a group that cannot be redone afterwards; what could be redone before still can.
  void undoAndForget();
  bool canUndo() const {
    return !undoStack_.empty() || (open_ && (open_->isExplicit || !open_->steps.empty()));
  }
  bool canRedo() const { return !redoStack_.empty(); }
  bool isUndoing() const { return state_ == State::Undoing; }
  bool isRedoing() const { return state_ == State::Redoing; }
  void removeAllActions();

  // Names the open group for the Edit menu ("Delete Episode"); the name follows the group from undo to redo.
  void setActionName(std::string_view name);
  std::string undoActionName() const;
  std::string redoActionName() const;

  // Called when what can be undone or redone has changed.
  Observation observe(Function function) { return observers_.add(std::move(function)); }

 private:
  enum class State { Idle, Undoing, Redoing };
  struct Group {
    GroupID id = 0;
    std::string name;
    std::vector<Function> steps;
    bool isExplicit = false;
  };
  void open(bool isExplicit);
  void closeOpenGroup();
  void replay(std::vector<Group>& from, std::vector<Group>& onto, State state);
  Group* undoableGroup(GroupID group);

  RunLoop& runLoop_;
  std::vector<Group> undoStack_;
  std::vector<Group> redoStack_;
  std::unique_ptr<Group> open_;    // what the current event or the caller is adding to
  std::unique_ptr<Group> mirror_;  // while undoing or redoing: the group that takes that back
  GroupID nextID_ = 1;
  GroupID target_ = 0;  // of performInGroup; 0 for none
  State state_ = State::Idle;
  int disabled_ = 0;
  int explicitDepth_ = 0;
  Observers<> observers_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  // what a deferred closing looks at first
};

}  // namespace clipwave
