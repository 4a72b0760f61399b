// The clocks that a grabber's time can follow, and the time bases that follow them. Internal to this room.
#pragma once

#include <functional>
#include <vector>

#include "platform/quicktime/SequenceGrabber.h"

namespace clipwave {

inline constexpr ComponentDescription kSystemClock = {kClockComponent, fourCharacterCode("mono"),
                                                      kPlatformManufacturer};
inline constexpr ComponentDescription kSoundClock = {kClockComponent, fourCharacterCode("soun"),
                                                     kPlatformManufacturer};

inline bool fits(const ComponentDescription& component, const ComponentDescription& wanted) {
  const auto isSame = [](OSType has, OSType wants) { return wants == 0 || wants == has; };
  return isSame(component.componentType, wanted.componentType) &&
         isSame(component.componentSubType, wanted.componentSubType) &&
         isSame(component.componentManufacturer, wanted.componentManufacturer);
}

class DescribedClock final : public ClockComponent {
 public:
  // `isThere` says whether the clock's device is.
  DescribedClock(const ComponentDescription& description, std::function<bool()> isThere)
      : description_(description), isThere_(std::move(isThere)) {}
  const ComponentDescription& description() const { return description_; }
  OSStatus componentInfo(ComponentDescription& description) const override {
    if (!isThere_()) return ioErr;
    description = description_;
    return noErr;
  }

 private:
  const ComponentDescription description_;
  const std::function<bool()> isThere_;
};

class ClockedTimeBase final : public TimeBase {
 public:
  explicit ClockedTimeBase(ClockComponent& clock) : clock_(&clock) {}
  ClockComponent* masterClock() const override { return clock_; }
  void setMasterClock(ClockComponent& clock) override { clock_ = &clock; }

 private:
  ClockComponent* clock_;
};

// All clocks that there are at the moment, the system's first.
struct ClockRegistry {
  DescribedClock system{kSystemClock, [] { return true; }};
  std::vector<DescribedClock*> devices;
};

}  // namespace clipwave
