// A thread that reads one capture device, and what it has read until the main thread takes it. Internal to
// this room.
#pragma once

#include <memory>
#include <vector>

#include "platform/quicktime/CaptureInput.h"

namespace clipwave {

class CaptureSource {
 public:
  // Null where the device cannot be opened, or not within `seconds`: then its thread gives it up as soon as
  // the libraries let it.
  static std::unique_ptr<CaptureSource> open(const CaptureRequest& request, double seconds);
  // Closes the device; does not wait long for one that does not answer.
  ~CaptureSource();
  CaptureSource(const CaptureSource&) = delete;
  CaptureSource& operator=(const CaptureSource&) = delete;

  const CaptureFacts& facts() const { return facts_; }
  // Whether everything that comes is kept until it is taken, as far as there is room, or only the newest.
  void setKeepsAll(bool keepsAll);

  struct Delivery {
    std::vector<CapturedPicture> pictures;
    std::vector<CapturedSound> sounds;
    bool hasLostPictures = false;  // for want of room, since the last time
    bool hasEnded = false;         // the device is gone
  };
  Delivery take();
  bool hasEnded() const;

 private:
  struct Shared;
  explicit CaptureSource(std::shared_ptr<Shared> shared);
  static void run(const std::shared_ptr<Shared>& shared, const CaptureRequest& request);
  static void deliver(Shared& shared, std::vector<CaptureInput::Captured>& captured, bool isPaced);

  std::shared_ptr<Shared> shared_;
  CaptureFacts facts_;
};

}  // namespace clipwave
