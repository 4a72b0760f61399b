#include "platform/coredata/UndoManager.h"

#include <algorithm>
#include <iterator>

namespace clipwave {

void UndoManager::open(bool isExplicit) {
  open_ = std::make_unique<Group>();
  open_->id = nextID_++;
  open_->isExplicit = isExplicit;
  if (isExplicit) return;
  // The loop may outlive this object, and the group may be closed and followed by another before the call
  // comes.
  runLoop_.performLater([this, weak = std::weak_ptr<bool>(alive_), id = open_->id] {
    if (!weak.expired() && open_ && open_->id == id) closeOpenGroup();
  });
}

void UndoManager::closeOpenGroup() {
  if (!open_) return;
  const std::unique_ptr<Group> group = std::move(open_);
  explicitDepth_ = 0;
  if (!group->isExplicit && group->steps.empty()) return;
  undoStack_.push_back(std::move(*group));
  observers_.call();
}

UndoManager::Group* UndoManager::undoableGroup(GroupID group) {
  if (open_ && open_->id == group) return open_.get();
  const auto found = std::find_if(undoStack_.rbegin(), undoStack_.rend(),
                                  [group](const Group& candidate) { return candidate.id == group; });
  return found == undoStack_.rend() ? nullptr : &*found;
}

void UndoManager::registerUndo(Function function) {
  if (disabled_ > 0) return;
  if (state_ != State::Idle) {
    mirror_->steps.push_back(std::move(function));
    return;
  }
  if (target_ == 0 && !open_) open(false);
  Group* const group = target_ == 0 ? open_.get() : undoableGroup(target_);
  if (group == nullptr) return;
  group->steps.push_back(std::move(function));
  const bool hadRedo = !redoStack_.empty();
  // The steps may hold the last reference to records whose going calls back here.
  const std::vector<Group> forgotten = std::move(redoStack_);
  redoStack_.clear();
  if (hadRedo || group->steps.size() == 1) observers_.call();
}

void UndoManager::beginUndoGrouping() {
  if (state_ != State::Idle) return;
  if (explicitDepth_ == 0) {
    closeOpenGroup();
    open(true);
  }
  ++explicitDepth_;
}

void UndoManager::endUndoGrouping() {
  if (state_ != State::Idle || explicitDepth_ == 0) return;
  if (--explicitDepth_ == 0) closeOpenGroup();
}

UndoManager::GroupID UndoManager::openGroup() {
  if (!open_) open(false);
  return open_->id;
}

void UndoManager::performInGroup(GroupID group, const Function& function) {
  const GroupID before = std::exchange(target_, group);
  function();
  target_ = before;
}

void UndoManager::undo() {
  if (state_ != State::Idle) return;
  closeOpenGroup();
  replay(undoStack_, redoStack_, State::Undoing);
}

void UndoManager::redo() {
  if (state_ != State::Idle) return;
  closeOpenGroup();
  replay(redoStack_, undoStack_, State::Redoing);
}

void UndoManager::undoAndForget() {
  if (state_ != State::Idle) return;
  closeOpenGroup();
  std::vector<Group> forgotten;
  replay(undoStack_, forgotten, State::Undoing);
}

void UndoManager::replay(std::vector<Group>& from, std::vector<Group>& onto, State state) {
  if (from.empty()) return;
  const Group group = std::move(from.back());
  from.pop_back();
  mirror_ = std::make_unique<Group>(Group{group.id, group.name, {}, group.isExplicit});
  state_ = state;
  for (auto step = group.steps.rbegin(); step != group.steps.rend(); ++step) (*step)();
  state_ = State::Idle;
  onto.push_back(std::move(*mirror_));
  mirror_.reset();
  observers_.call();
}

void UndoManager::removeAllActions() {
  const std::vector<Group> undo = std::move(undoStack_);
  const std::vector<Group> redo = std::move(redoStack_);
  undoStack_.clear();
  redoStack_.clear();
  if (mirror_) mirror_->steps.clear();
  if (open_) open_->steps.clear();
  observers_.call();
}

void UndoManager::setActionName(std::string_view name) {
  if (state_ == State::Idle && open_) {
    open_->name = name;
    observers_.call();
  }
}

std::string UndoManager::undoActionName() const {
  if (open_ && canUndo() && (open_->isExplicit || !open_->steps.empty())) return open_->name;
  return undoStack_.empty() ? std::string() : undoStack_.back().name;
}

std::string UndoManager::redoActionName() const {
  return redoStack_.empty() ? std::string() : redoStack_.back().name;
}

}  // namespace clipwave
