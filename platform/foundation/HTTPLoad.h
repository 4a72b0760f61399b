// One http or https URL that is loaded with libcurl: how the transfer is set up, what came, and what went
// wrong. Internal to this room.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/HTTPHead.h"
#include "platform/foundation/Inflater.h"
#include "platform/foundation/URLErrors.h"
#include "platform/foundation/URLLoading.h"

namespace clipwave {

// Owns its handle. Loads once, either by perform() or by whoever drives easy(). Stays where it is: libcurl
// knows its address.
class HTTPLoad {
 public:
  enum class Purpose {
    Data,     // the resource as it is now, past all caches
    Arrival,  // only that it comes whole: caches may serve, nothing is kept
  };

  HTTPLoad(std::string_view url, Purpose purpose, Seconds timeout, const URLLoadingOptions& options);
  ~HTTPLoad();
  HTTPLoad(const HTTPLoad&) = delete;
  HTTPLoad& operator=(const HTTPLoad&) = delete;

  void* easy() const { return easy_; }
  // Blocks until the load has come to its end; answers its CURLcode.
  int perform();
  // What a load that ended with this CURLcode brought. To be asked once.
  Result<LoadedData> result(int curlCode);

 private:
  static int onRequest(void* self, char*, char*, int, int);
  static std::size_t onHead(char* bytes, std::size_t size, std::size_t count, void* self);
  static std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* self);

  bool takeBody(std::string_view bytes);
  bool beginBody();
  bool keep(std::string_view bytes);
  long status() const;
  std::string host() const;
  std::vector<std::string> values(const char* name) const;
  std::string charset() const;
  std::vector<std::string> codings() const;

  std::string url_;
  bool keepsBody_;
  std::int64_t mostBytes_;
  void* easy_;
  void* headers_ = nullptr;  // the list of those sent
  bool hasBody_ = false;
  std::unique_ptr<Inflater> inflater_;  // of a body that is packed
  std::string body_;
  std::int64_t bodySize_ = 0;  // unpacked
  bool hasNoRoom_ = false;     // the memory was too small for it
  HTTPHead head_;
};

}  // namespace clipwave
