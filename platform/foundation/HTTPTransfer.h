// One request over http or https that libcurl carries out: how it is set up, what is sent, what came, and
// what went wrong. Internal to this room.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/HTTPClient.h"
#include "platform/foundation/HTTPHead.h"
#include "platform/foundation/WebAddress.h"

namespace clipwave {

// What a client's requests share.
struct HTTPClientState {
  HTTPClientOptions options;
  // The kind of authentication, one of libcurl's bits, that servers took last, by their origins.
  std::map<std::string, unsigned long> authentications;
};

// Sends once, either by perform() or by whoever drives easy(). Stays where it is: libcurl knows its address.
class HTTPTransfer {
 public:
  // `handle`: a CURL* that nobody else uses as long as this lives. `timeout`: for all of it; without one, the
  // options say how long nothing may move.
  HTTPTransfer(HTTPRequest request, std::shared_ptr<HTTPClientState> client, std::shared_ptr<void> handle,
               std::optional<Seconds> timeout);
  ~HTTPTransfer();
  HTTPTransfer(const HTTPTransfer&) = delete;
  HTTPTransfer& operator=(const HTTPTransfer&) = delete;

  // Null where the request is refused; result() tells why.
  void* easy() const { return refusal_ ? nullptr : handle_.get(); }
  // Blocks until the transfer has come to its end; answers its CURLcode.
  int perform();
  // What a transfer that ended with this CURLcode brought. To be asked once.
  Result<HTTPResponse> result(int curlCode);
  // Of the body, in the attempt that is under way.
  std::int64_t bytesSent() const { return offset_; }

 private:
  static int onRequest(void* self, char*, char*, int, int);
  static std::size_t onRead(char* buffer, std::size_t size, std::size_t count, void* self);
  static int onSeek(void* self, std::int64_t offset, int origin);
  static std::size_t onHead(char* bytes, std::size_t size, std::size_t count, void* self);
  static std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* self);
  static int onProgress(void* self, std::int64_t, std::int64_t received, std::int64_t, std::int64_t);

  std::optional<Error> findRefusal();
  void setUp(std::optional<Seconds> timeout);
  void setUpMethod();
  void setUpHeaders();
  void setUpCredentials();
  std::optional<std::size_t> read(char* buffer, std::size_t length);
  bool takeHead(std::string_view line);
  bool takeBody(std::string_view bytes);
  bool isAnswer(int curlCode, long status) const;
  void learnAuthentication(long status);

  HTTPRequest request_;
  std::shared_ptr<HTTPClientState> client_;
  std::shared_ptr<void> handle_;
  WebAddress address_;
  void* headers_ = nullptr;        // the list of those sent
  std::int64_t size_ = 0;          // of what is to be sent
  std::int64_t offset_ = 0;        // up to where libcurl has it
  bool isAwaitingAnswer_ = false;  // something has gone out
  bool isSourceBroken_ = false;
  bool isTooLong_ = false;  // the answer
  HTTPHead head_;
  HTTPResponse response_;
  std::optional<Error> refusal_;
};

}  // namespace clipwave
