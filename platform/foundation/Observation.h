// Ends an observation when it is destroyed; the shape of every registration in the platform layer.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace clipwave {

// Movable, not copyable. An empty one observes nothing. It may outlive what it observed.
class [[nodiscard]] Observation {
 public:
  Observation() = default;
  explicit Observation(std::function<void()> end) : end_(std::move(end)) {}
  Observation(Observation&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Observation& operator=(Observation&& other) noexcept {
    if (this != &other) {
      cancel();
      end_ = std::exchange(other.end_, nullptr);
    }
    return *this;
  }
  ~Observation() { cancel(); }
  void cancel() {
    if (auto end = std::exchange(end_, nullptr)) end();
  }

 private:
  std::function<void()> end_;
};

// The observers of one thing. Observers may end their own or another's observation, or begin new ones, while
// they are being called: an ended one is not called any more, a new one is called from the next time on. The
// list itself may be destroyed inside such a call.
template <class... Arguments>
class Observers {
 public:
  using Function = std::function<void(Arguments...)>;

  Observation add(Function function) {
    if (!state_) state_ = std::make_shared<State>();
    auto entry = std::make_shared<Function>(std::move(function));
    state_->push_back(entry);
    return Observation([weak = std::weak_ptr<State>(state_), entry] {
      *entry = nullptr;
      if (auto state = weak.lock()) std::erase(*state, entry);
    });
  }
  void call(Arguments... arguments) const {
    if (!state_ || state_->empty()) return;
    const State copy = *state_;
    for (const auto& entry : copy) {
      if (*entry) {
        const Function function = *entry;
        function(arguments...);
      }
    }
  }
  bool empty() const { return !state_ || state_->empty(); }

 private:
  using State = std::vector<std::shared_ptr<Function>>;
  std::shared_ptr<State> state_;
};

}  // namespace clipwave
