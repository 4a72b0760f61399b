#include "platform/foundation/HTTPClient.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include "platform/foundation/URLLoading.h"
#include "tests/support/LoopbackServer.h"
#include "tests/support/TLSServer.h"
#include "tests/support/TemporaryFolder.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;
using namespace std::string_literals;

const HTTPCredentials kAnna{"an:na \"x\"", "se:cret"};

// An answer that leaves the connection open for the next request.
std::string kept(int status, const std::string& body = "", const std::string& header = "X: y") {
  return "HTTP/1.1 " + std::to_string(status) + " Status\r\n" + header +
         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

class HTTPClientTest : public Test {
 protected:
  HTTPClient& client() {
    if (!client_) client_ = makeHTTPClient(*loop_, options_);
    return *client_;
  }
  // What an answer reads as: its status and body, or the code and the description of the error.
  static std::string text(const Result<HTTPResponse>& result) {
    if (result) return std::to_string(result->status) + " " + result->body;
    EXPECT_EQ(result.error().domain, NSURLErrorDomain);
    EXPECT_THAT(result.error().localizedDescription, Not(HasSubstr("se:cret")));
    return std::to_string(result.error().code) + " " + result.error().localizedDescription;
  }
  std::string send(const HTTPRequest& request, Seconds timeout = Seconds(10)) {
    return text(client().send(request, timeout));
  }
  std::string background(const HTTPRequest& request) {
    told_.clear();
    start(request);
    EXPECT_EQ(told_, "");
    for (int turns = 0; told_.empty() && turns < 3000; ++turns) loop_->runOnce(Seconds(0.01));
    return told_;
  }
  std::string both(const HTTPRequest& request) {
    std::string answer = send(request);
    EXPECT_EQ(background(request), answer);
    return answer;
  }
  void start(const HTTPRequest& request) {
    exchange_ = client().sendInBackground(request, [this](const auto& result) {
      told_ += text(result);
      if (inside_) inside_();
    });
  }
  HTTPRequest put(std::size_t size) {
    HTTPRequest request{"PUT", server_.url("/a")};
    request.file = files_->fileHandleForReadingAtPath(folder_.write("file", std::string(size, 'x')));
    return request;
  }
  // Asks for the password at the head of each request that brings none.
  void guard(std::string_view path, const std::string& challenge) {
    server_.answerHead(path, [challenge](LoopbackConnection& connection) {
      const std::string given = connection.request().header("Authorization");
      const bool isGiven = given.starts_with(challenge.substr(0, 5));
      if (isGiven) connection.receiveBody();
      connection.keepOpen();
      connection.send(isGiven ? kept(404) : kept(401, "", "WWW-Authenticate: " + challenge));
    });
  }

  TemporaryFolder folder_;
  LoopbackServer server_;
  SystemClock clock_;
  std::unique_ptr<RunLoop> loop_ = makeRunLoop(clock_);
  std::unique_ptr<FileManager> files_ = makeFileManager();
  HTTPClientOptions options_;
  std::string told_;
  std::function<void()> inside_;
  std::unique_ptr<HTTPClient> client_;
  std::unique_ptr<HTTPExchange> exchange_;
};

TEST_F(HTTPClientTest, WhatMustNotBeAskedIsRefusedBeforeAnybodyHearsOfIt) {
  const std::string url = server_.url("/a");
  const HTTPRequest kBad[] = {{"GET", "http://anna@127.0.0.1/"},
                              {"GET", "http://127.0.0.1@b.invalid/"},
                              {"GET", "http:///x"},
                              {"GET", url + "\r\nX: y"},
                              {"GET / HTTP/1.1\r\nX:", url},
                              {"GET", url, {{"A", "b\r\nX: y"}}},
                              {"GET", url, {{"A", "b\0c"s}}},
                              {"GET", url, {{"A: b\nX", "c"}}},
                              {"PUT", url, {{"content-length", "7"}}},
                              {"GET", url, {}, "", nullptr, HTTPCredentials{"anna\r\nX: y", "p"}},
                              {"GET", url, {}, "", nullptr, HTTPCredentials{"anna", "p\0q"s}}};
  for (const HTTPRequest& request : kBad) EXPECT_THAT(both(request), StartsWith("-1000 ")) << request.url;
  EXPECT_THAT(both({"GET", "ftp://127.0.0.1/"}), StartsWith("-1002 "));
  EXPECT_THAT(server_.requests(), IsEmpty());
}

TEST_F(HTTPClientTest, APasswordGoesUnencryptedOnlyToThisMachine) {
  const EnvironmentVariable proxy("http_proxy", "http://127.0.0.1:1");
  const EnvironmentVariable noException("no_proxy", nullptr);
  const std::pair<std::string, std::string> kHosts[] = {{"127.0.0.1.b.invalid", "-1022 "},
                                                        {"128.0.0.1", "-1022 "},
                                                        {"localhost.b.invalid", "-1022 "},
                                                        {"[::2]", "-1022 "},
                                                        {"127.0.0.1", "302 "},
                                                        {"LOCALHOST", "302 "},
                                                        {"127.1", "302 "},
                                                        {"[::1]", "-1004 "}};
  server_.answer("/a", httpRedirect("http://b.invalid/"));  // goes nowhere
  for (const auto& [host, answer] : kHosts) {
    HTTPRequest request{"GET", "http://" + host + ":" + std::to_string(server_.port()) + "/a"};
    request.credentials = kAnna;
    EXPECT_THAT(send(request), StartsWith(answer)) << host;
    request.credentials->mayGoUnencrypted = true;
    // Then the proxy is asked.
    EXPECT_THAT(send(request), StartsWith(answer == "-1022 " ? "-1004 " : answer)) << host;
  }
}

TEST_F(HTTPClientTest, TheServersWayOfAskingForThePasswordIsRememberedAndAsksForNoBody) {
  guard("/basic", "Basic realm=\"r\"");
  guard("/digest", "Digest realm=\"r\", nonce=\"n\", qop=\"auth\", algorithm=MD5");
  // Each with the number of heads that the server sees, and what the last of them brings.
  const std::tuple<std::string, std::size_t, const char*> kRequests[] = {
      {"/basic", 2, "Basic YW46bmEgIngiOnNlOmNyZXQ="},
      {"/basic", 1, "Basic "},
      {"/digest", 1, "Basic "},
      {"/digest", 2, "Digest username=\"an:na \\\"x\\\"\""},
      {"/digest", 2, "Digest "},
      {"/basic", 1, ""},
      {"/basic", 2, "Basic "}};
  for (const bool isBlocking : {true, false}) {
    client_.reset();
    for (const auto& [path, heads, authorization] : kRequests) {
      const std::size_t before = server_.requests().size();
      HTTPRequest request = put(300'000);
      request.url = server_.url(path);
      request.credentials = kAnna;
      const std::string answer = isBlocking ? send(request) : background(request);
      const auto requests = server_.requests();
      ASSERT_EQ(requests.size() - before, heads);
      EXPECT_THAT(requests.back().header("Authorization"), StartsWith(authorization));
      EXPECT_EQ(requests.back().body.size(), answer == "404 " ? 300'000 : 0);
      EXPECT_TRUE(heads == 1 || (requests[before].body + requests[before].header("Authorization")).empty());
    }
  }
}

TEST_F(HTTPClientTest, AFileIsSentAsLongAsItWasOrNotAtAll) {
  // Each with its size, what it becomes while it is sent, and the answer.
  const std::tuple<std::size_t, off_t, std::string> kFiles[] = {
      {0, 0, "201 "},
      {20, 20, "201 "},
      {8'000'000, 9'000'000, "201 "},
      {8'000'000, 5'000'000,
       "-3001 The file for the server \u201c127.0.0.1\u201d could not be read to its end."}};
  for (const auto& [size, newSize, answer] : kFiles) {
    server_.answerHead("/a", [this, to = newSize](LoopbackConnection& connection) {
      EXPECT_EQ(::truncate((folder_ / "file").c_str(), to), 0);
      if (connection.receiveBody()) connection.send(httpResponse(201, ""));
    });
    EXPECT_EQ(send(put(size)), answer);
    EXPECT_EQ(background(put(size)), answer);
    if (answer != "201 ") continue;
    EXPECT_EQ(exchange_->bytesSent(), static_cast<std::int64_t>(size));
    EXPECT_EQ(server_.requests().back().body.size(), size);
  }
  const HTTPRequest closed = put(20);
  closed.file->closeFile();
  EXPECT_THAT(both(closed), StartsWith("-3001 "));
  HTTPRequest device = put(0);
  device.file = files_->fileHandleForReadingAtPath("/dev/zero");
  EXPECT_THAT(both(device), StartsWith("-3001 "));
}

TEST_F(HTTPClientTest, AWordOfRefusalInMidUploadIsHeardAndOneOfSuccessIsNotBelieved) {
  const std::pair<std::string, const char*> kAnswers[] = {{httpResponse(413, "Too much."), "413 Too much."},
                                                          {kept(507, "Full."), "507 Full."},
                                                          {"HTTP/1.1 403 No\r\n\r\nNo.", "403 No."},
                                                          {httpResponse(201, ""), "-1005 "},
                                                          {"HTTP/1.1 413 Too", "-1005 "},
                                                          {"220 ready\r\n", "-1011 "},
                                                          {"", "-1005 "}};
  const HTTPRequest request = put(30'000'000);
  for (const auto& [answer, expected] : kAnswers) {
    server_.answerHead("/a", [answer = answer](LoopbackConnection& connection) {
      connection.send("HTTP/1.1 100 Continue\r\n\r\n");
      connection.pause(Seconds(0.05));
      connection.send(answer);
    });
    EXPECT_THAT(both(request), StartsWith(expected));
  }
}

TEST_F(HTTPClientTest, AnAnswerWithoutEndIsCutOff) {
  options_.mostBytes = 100'000;
  const std::string xs(1000, 'x');
  const std::tuple<std::string, std::string, const char*> kAnswers[] = {
      {"200 OK\r\n\r\n", xs, "-1103 "},
      {"401 Who\r\nWWW-Authenticate: Basic realm=x\r\nTransfer-Encoding: chunked\r\n\r\n40000\r\n", xs,
       "-1103 "},
      {"200 OK\r\n", "X: " + xs + "\r\n", "-1011 "}};
  for (const auto& [head, rest, expected] : kAnswers) {
    server_.answer("/a", [head = head, rest = rest](LoopbackConnection& connection) {
      for (connection.send("HTTP/1.1 " + head); connection.send(rest);) {
      }
    });
    EXPECT_THAT(both({"GET", server_.url("/a"), {}, "", nullptr, kAnna}), StartsWith(expected));
  }
}

TEST_F(HTTPClientTest, AServerIsTrustedByItsCertificate) {
  const TLSServer secure(folder_);
  secure.answer("a", httpResponse(200, "secret"));
  const HTTPRequest request{"GET", secure.url("/a"), {}, "", nullptr, kAnna};
  EXPECT_THAT(both(request), StartsWith("-1202 "));
  client_.reset();
  options_.certificateAuthorities = secure.certificate();
  EXPECT_EQ(both(request), "200 secret");
}

TEST_F(HTTPClientTest, AnExchangeOrItsClientMayEndAtAnyTime) {
  server_.answer("/a", httpResponse(201, "a"));
  const HTTPRequest kRequests[] = {{"GET", "http://b@c/"}, {"GET", server_.url("/a")}, put(8'000'000)};
  const std::function<void()> kEnds[] = {[this] { exchange_.reset(); }, [this] { client_.reset(); }};
  for (const auto& end : kEnds) {
    for (const HTTPRequest& request : kRequests) {
      for (const int turns : {0, 1, 3, 5}) {
        start(request);
        for (int i = 0; i < turns; ++i) loop_->runOnce(Seconds(0.01));
        told_.clear();
        end();
        for (int i = 0; i < 3; ++i) loop_->runOnce(Seconds(0));
        EXPECT_EQ(told_, "");
      }
    }
    inside_ = end;
    EXPECT_EQ(background(kRequests[1]), "201 a");
    inside_ = nullptr;
  }
}

}  // namespace
}  // namespace clipwave
