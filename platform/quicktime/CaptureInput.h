// A capture device opened with FFmpeg's libraries: what it delivers, decoded. Internal to this room.
#pragma once

#include <atomic>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/quicktime/FourCharacterCode.h"
#include "platform/quicktime/MovieInput.h"

struct AVBufferPool;

namespace clipwave {

// What a device is opened by.
struct CaptureRequest {
  OSType mediaType = 0;
  std::string format;  // as the library calls the kind of device
  std::string url;
  std::vector<std::pair<std::string, std::string>> options;
  // For what is computed rather than captured: it is delivered as time goes on, its first moment at `epoch`
  // (captureTime(); without one when it is opened).
  bool isPaced = false;
  std::optional<double> epoch;
};

// Times are those of captureTime().
struct CapturedPicture {
  MovieFrame frame;
  double time = 0;        // of arrival
  double deviceTime = 0;  // as the device says; that of arrival where it does not
};
struct CapturedSound {
  std::vector<float> samples;  // left and right in turn
  double time = 0;             // when the last one had arrived
  double deviceTime = 0;
};

struct CaptureFacts {
  int width = 0;  // of a picture
  int height = 0;
  double framesPerSecond = 0;
  int sampleRate = 0;
};

// Used by one thread; waits for nothing but what the libraries wait for.
class CaptureInput {
 public:
  using Captured = std::variant<CapturedPicture, CapturedSound>;

  // Null where it cannot be opened. The libraries give up when `isAbandoned` becomes true, as far as they
  // can; it must stay as long as the input does.
  static std::unique_ptr<CaptureInput> open(const CaptureRequest& request,
                                            const std::atomic<bool>& isAbandoned);
  ~CaptureInput();

  const CaptureFacts& facts() const { return facts_; }

  enum class Outcome { Captured, NothingYet, Ended };
  // Adds to `captured` what has come in, and says how that went.
  Outcome read(std::vector<Captured>& captured);

 private:
  explicit CaptureInput(const CaptureRequest& request) : request_(request) {}
  bool prepare(const std::atomic<bool>& isAbandoned);
  bool prepareDecoder();
  bool prepareConverter();
  bool detachPacket();
  void decode(std::vector<Captured>& captured);
  void addPicture(std::vector<Captured>& captured);
  void addSound(std::vector<Captured>& captured);
  double deviceTimeOf(double seconds, double arrival) const;
  double pacedTimeOf(double seconds);

  const CaptureRequest request_;
  CaptureFacts facts_;
  double epoch_ = 0;
  int stream_ = 0;
  MovieInput input_;
  MovieDecoder decoder_;
  MoviePacket packet_;
  MovieFrame frame_;
  std::unique_ptr<SwrContext, FreeLibraryObject> converter_;  // to interleaved floats of two channels
  AVBufferPool* pool_ = nullptr;
  std::size_t pooledSize_ = 0;
};

}  // namespace clipwave
