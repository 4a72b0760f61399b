// A splitter whose dividers the user can drag only within limits that somebody else decides.
#pragma once

#include <QSplitter>
#include <functional>

namespace clipwave {

class SplitView final : public QSplitter {
  Q_OBJECT

 public:
  // Answers the coordinate to use instead of the proposed one, for the divider of that index (0: the first).
  using Limit = std::function<float(float proposed, int divider)>;

  explicit SplitView(QWidget* parent = nullptr) : QSplitter(parent) {}
  // Asked at every step of a drag. Proposed are the divider's neighbours: where the widget before it begins,
  // and the last place at which the widget after it still has room. A limit that is empty takes what is
  // proposed; where both cannot be kept, the smaller widget before the divider wins.
  void setConstraints(Limit min, Limit max);
  // The coordinate for a divider that the user drags to `wanted`.
  int constrained(int wanted, int divider) const;
  // Whether coordinates count from the right edge, as the reading direction has it.
  bool isMirrored() const;

 protected:
  QSplitterHandle* createHandle() override;

 private:
  int extent(int index, bool end) const;

  Limit min_;
  Limit max_;
};

}  // namespace clipwave
