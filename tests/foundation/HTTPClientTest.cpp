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

// Answers that leave the connection open for the next request.
std::string kept(int status, std::string_view body = "", const std::string& header = "X: y") {
  return "HTTP/1.1 " + std::to_string(status) + " Status\r\n" + header +
         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + std::string(body);
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
  void start(const HTTPRequest& request) {
    exchange_ = client().sendInBackground(request, [this](const auto& result) {
      told_ += text(result);
      if (inside_) inside_();
    });
  }
  std::string background(const HTTPRequest& request) {
    told_.clear();
    start(request);
    EXPECT_EQ(told_, "");
    for (int turns = 0; told_.empty() && turns < 3000; ++turns) loop_->runOnce(Seconds(0.01));
    return told_;
  }
  void runOn(int turns) {
    while (turns-- > 0) loop_->runOnce(Seconds(0.01));
  }
  HTTPRequest put(std::string_view path, const std::string& content) {
    path_ = folder_.write("file", content);
    HTTPRequest request{"PUT", server_.url(path)};
    request.file = files_->fileHandleForReadingAtPath(path_);
    return request;
  }
  // Asks for the password at the head of each request that brings none.
  void guard(std::string_view path, const std::string& challenge, int status = 201) {
    server_.answerHead(path, [challenge, status](LoopbackConnection& connection) {
      const std::string given = connection.request().header("Authorization");
      const bool isGiven = given.starts_with(challenge.substr(0, 5));
      if (isGiven || connection.request().header("Expect").empty()) connection.receiveBody();
      connection.keepOpen();
      connection.send(isGiven ? kept(status) : kept(401, "Who?", "WWW-Authenticate: " + challenge));
    });
  }

  TemporaryFolder folder_;
  LoopbackServer server_;
  SystemClock clock_;
  std::unique_ptr<RunLoop> loop_ = makeRunLoop(clock_);
  std::unique_ptr<FileManager> files_ = makeFileManager();
  HTTPClientOptions options_;
  std::string path_;
  std::string told_;
  std::function<void()> inside_;
  std::unique_ptr<HTTPClient> client_;
  std::unique_ptr<HTTPExchange> exchange_;
};

TEST_F(HTTPClientTest, AnyMethodIsSentWithItsHeadersAndItsBody) {
  server_.answer("/a", [](LoopbackConnection& connection) {
    connection.keepOpen();
    connection.send(connection.request().method() == "HEAD"
                        ? "HTTP/1.1 207 Multi\r\nContent-Length: 9999999999\r\n\r\n"
                        : kept(207, "<ok/>", "ETag: \"a\"\r\nEtag:  \"b\""));
  });
  const std::pair<const char*, std::string> kSent[] = {
      {"PROPFIND", "<x/>"}, {"MKCOL", ""}, {"HEAD", ""}, {"PUT", ""}, {"POST", std::string(200'000, 'x')}};
  for (const auto& [method, body] : kSent) {
    HTTPRequest request{method, server_.url("/a"), {{"Depth", "0"}, {"Empty", ""}}, body};
    for (const bool isBlocking : {true, false}) {
      EXPECT_EQ(isBlocking ? send(request) : background(request), method == "HEAD"s ? "207 " : "207 <ok/>");
      const LoopbackRequest sent = server_.requests().back();
      EXPECT_EQ(sent.method() + sent.header("Depth") + sent.body, method + "0"s + body);
      EXPECT_EQ(sent.header("Content-Length"),
                body.empty() && method != "PUT"s ? "" : std::to_string(body.size()));
      EXPECT_THAT(sent.head, AllOf(HasSubstr("\r\nEmpty:"), Not(HasSubstr("Content-Type"))));
      EXPECT_EQ(sent.connection, isBlocking ? 0 : 1) << method;
    }
  }
  EXPECT_EQ(client().send({"GET", server_.url("/a")}, Seconds(5))->headers.at("etag"), "\"b\"");
}

TEST_F(HTTPClientTest, WhatMustNotBeAskedIsRefusedBeforeAnybodyHearsOfIt) {
  const auto with = [this](std::string method, std::string name, std::string value,
                           HTTPCredentials credentials) {
    return HTTPRequest{std::move(method), server_.url("/a"), {{std::move(name), std::move(value)}}, "",
                       nullptr,           credentials};
  };
  const HTTPRequest kBad[] = {
      {"GET", "http://anna@127.0.0.1/"},
      {"GET", "http://127.0.0.1@b.invalid/"},
      {"GET", "http:///x"},
      {"GET", "http://127.0.0.1/\r\nX: y"},
      with("GET / HTTP/1.1\r\nX:", "A", "b", kAnna),
      with("GET", "A", "b\r\nX: y", kAnna),
      with("GET", "A", std::string("b\0c", 3), kAnna),
      with("GET", "A: b\nX", "c", kAnna),
      with("PUT", "content-length", "7", kAnna),
      with("GET", "A", "b", {"anna\r\nX: y", "p"}),
      with("GET", "A", "b", {"anna", std::string("p\0q", 3)}),
  };
  for (const HTTPRequest& request : kBad) {
    EXPECT_THAT(send(request), StartsWith("-1000 ")) << request.url;
    EXPECT_THAT(background(request), StartsWith("-1000 "));
  }
  EXPECT_THAT(send({"GET", "ftp://127.0.0.1/"}), StartsWith("-1002 "));
  EXPECT_THAT(server_.requests(), IsEmpty());
}

TEST_F(HTTPClientTest, APasswordGoesUnencryptedOnlyToThisMachine) {
  const EnvironmentVariable proxy("http_proxy", "http://127.0.0.1:1");
  const EnvironmentVariable noException("no_proxy", nullptr);
  const std::pair<const char*, const char*> kHosts[] = {
      {"127.0.0.1.b.invalid", "-1022 "},
      {"b.invalid", "-1022 "},
      {"128.0.0.1", "-1022 "},
      {"localhost.b.invalid", "-1022 "},
      {"[::2]", "-1022 "},
      {"127.0.0.1", "401 "},
      {"LOCALHOST", "401 "},
      {"127.1", "401 "},
      {"[::1]", "-1004 "},
  };
  server_.answer("/a", httpResponse(401, "", {"WWW-Authenticate: Basic realm=x"}));
  for (const auto& [host, text] : kHosts) {
    HTTPRequest request{"GET", "http://" + std::string(host) + ":" + std::to_string(server_.port()) + "/a"};
    request.credentials = kAnna;
    EXPECT_THAT(send(request), StartsWith(text)) << host;
    if (!std::string_view(text).starts_with("-1022")) continue;
    request.credentials->mayGoUnencrypted = true;
    EXPECT_THAT(send(request), StartsWith("-1004 ")) << host;  // the proxy is asked
  }
}

TEST_F(HTTPClientTest, TheServersWayOfAskingForThePasswordIsRemembered) {
  const std::string digest = "Digest realm=\"r\", nonce=\"n\", qop=\"auth\", algorithm=MD5";
  guard("/basic", "Basic realm=\"r\"", 404);
  guard("/digest", digest);
  const std::string content(300'000, 'x');
  for (const bool isBlocking : {true, false}) {
    client_.reset();
    // Each with the heads that the server sees, the answer, and what the last head brings.
    const std::tuple<const char*, std::size_t, const char*, const char*> kRequests[] = {
        {"/basic", 2, "404 ", "Basic YW46bmEgIngiOnNlOmNyZXQ="},
        {"/basic", 1, "404 ", "Basic "},
        {"/digest", 1, "401 Who?", "Basic "},
        {"/digest", 2, "201 ", "Digest username=\"an:na \\\"x\\\"\""},
        {"/digest", 2, "201 ", "Digest "},
        {"/basic", 1, "401 Who?", ""},
        {"/basic", 2, "404 ", "Basic "}};
    for (const auto& [path, heads, answer, authorization] : kRequests) {
      const std::size_t before = server_.requests().size();
      HTTPRequest request = put(path, content);
      request.credentials = kAnna;
      EXPECT_EQ(isBlocking ? send(request) : background(request), answer) << path;
      const auto requests = server_.requests();
      ASSERT_EQ(requests.size() - before, heads);
      EXPECT_THAT(requests.back().header("Authorization"), StartsWith(authorization));
      EXPECT_EQ(requests[before].body.size(),
                heads == 1 && *answer != '4' ? content.size() : requests[before].body.size());
      if (heads == 2) {
        EXPECT_EQ(requests[before].body + requests[before].header("Authorization"), "");
        EXPECT_EQ(requests.back().body.size(), content.size());
      }
    }
  }
}

TEST_F(HTTPClientTest, AnotherServerHearsOfNoPassword) {
  LoopbackServer other;
  server_.answer("/a", httpResponse(307, "", {"Location: " + other.url("/b")}));
  HTTPRequest request{"GET", server_.url("/a")};
  request.credentials = kAnna;
  EXPECT_EQ(send(request), "307 ");
  EXPECT_THAT(other.requests(), IsEmpty());
}

// The file handle of the system, whose reading something happens to.
TEST_F(HTTPClientTest, AFileIsSentAsLongAsItWasOrNotAtAll) {
  const std::string content(8'000'000, 'x');
  server_.answer("/a", httpResponse(201, ""));
  for (const std::size_t size : {std::size_t{0}, std::size_t{20}, content.size()}) {
    EXPECT_EQ(background(put("/a", content.substr(0, size))), "201 ");
    EXPECT_EQ(exchange_->bytesSent(), static_cast<std::int64_t>(size));
    EXPECT_EQ(server_.requests().back().body.size(), size);
  }
  const auto whileItIsSent = [&](off_t newSize, bool isBlocking) {
    const HTTPRequest request = put("/a", content);
    server_.answerHead("/a", [this, newSize](LoopbackConnection& connection) {
      EXPECT_EQ(::truncate(path_.c_str(), newSize), 0);
      if (connection.receiveBody()) connection.send(httpResponse(201, ""));
    });
    return isBlocking ? send(request) : background(request);
  };
  for (const bool isBlocking : {true, false}) {
    EXPECT_EQ(whileItIsSent(9'000'000, isBlocking), "201 ");
    EXPECT_EQ(server_.requests().back().body.size(), content.size());
    EXPECT_EQ(whileItIsSent(5'000'000, isBlocking),
              "-3001 The file for the server \u201c127.0.0.1\u201d could not be read to its end.");
  }
  HTTPRequest closed = put("/a", content);
  closed.file->closeFile();
  const std::size_t before = server_.requests().size();
  EXPECT_THAT(send(closed), StartsWith("-3001 "));
  EXPECT_EQ(server_.requests().size(), before);
}

TEST_F(HTTPClientTest, AWordOfRefusalInMidUploadIsHeardAndOneOfSuccessIsNotBelieved) {
  const std::string content(30'000'000, 'x');
  const std::pair<std::string, const char*> kAnswers[] = {{httpResponse(413, "Too much."), "413 Too much."},
                                                          {kept(507, "Full."), "507 Full."},
                                                          {"HTTP/1.1 403 No\r\n\r\nNo.", "403 No."},
                                                          {httpResponse(201, ""), "-1005 "},
                                                          {"HTTP/1.1 413 Too", "-1005 "},
                                                          {"", "-1005 "}};
  for (const auto& [answer, expected] : kAnswers) {
    server_.answerHead("/a", [answer = answer](LoopbackConnection& connection) {
      connection.send("HTTP/1.1 100 Continue\r\n\r\n");
      connection.pause(Seconds(0.05));
      connection.send(answer);
    });
    EXPECT_THAT(send(put("/a", content)), StartsWith(expected));
    EXPECT_THAT(background(put("/a", content)), StartsWith(expected));
  }
}

TEST_F(HTTPClientTest, AnAnswerWithoutEndIsCutOff) {
  options_.mostBytes = 100'000;
  const std::string kHeads[] = {
      "HTTP/1.1 200 OK\r\n\r\n",
      "HTTP/1.1 401 Who\r\nWWW-Authenticate: Basic realm=x\r\nTransfer-Encoding: chunked\r\n\r\n40000\r\n"};
  for (const std::string& head : kHeads) {
    server_.answer("/a", [head](LoopbackConnection& connection) {
      connection.send(head);
      while (connection.send(std::string(1000, 'x'))) {
      }
    });
    HTTPRequest request{"GET", server_.url("/a")};
    request.credentials = kAnna;
    EXPECT_EQ(background(request), "-1103 The data from \u201c127.0.0.1\u201d are larger than 100000 bytes.");
  }
  server_.answer("/a", [](LoopbackConnection& connection) {
    connection.send("HTTP/1.1 200 OK\r\n");
    while (connection.send("X: " + std::string(1000, 'x') + "\r\n")) {
    }
  });
  EXPECT_THAT(background({"GET", server_.url("/a")}), StartsWith("-1011 "));
}

TEST_F(HTTPClientTest, AServerThatDoesNotGoOnIsLeft) {
  options_.stallTimeout = Seconds(1);
  const std::string content(30'000'000, 'x');
  server_.answerHead("/a", [](LoopbackConnection& connection) {
    connection.send("HTTP/1.1 100 Continue\r\n\r\n");
    while (connection.pause(Seconds(0.1))) {
    }
  });
  const auto begun = clock_.uptime();
  EXPECT_EQ(send(put("/a", content), Seconds(0.5)),
            "-1001 The server \u201c127.0.0.1\u201d did not take everything in time.");
  EXPECT_LT(clock_.uptime() - begun, Seconds(2));
  EXPECT_THAT(background(put("/a", content)), StartsWith("-1001 "));
  EXPECT_LT(clock_.uptime() - begun, Seconds(12));
}

TEST_F(HTTPClientTest, AServerIsTrustedByItsCertificate) {
  const TLSServer secure(folder_);
  secure.answer("a", httpResponse(200, "secret"));
  HTTPRequest request{"GET", secure.url("/a")};
  request.credentials = kAnna;
  EXPECT_THAT(send(request), StartsWith("-1202 "));
  client_.reset();
  options_.certificateAuthorities = secure.certificate();
  EXPECT_EQ(send(request), "200 secret");
}

TEST_F(HTTPClientTest, AnExchangeOrItsClientMayEndAtAnyTime) {
  server_.answer("/a", httpResponse(200, "a"));
  const std::function<void()> kEnds[] = {[this] { exchange_.reset(); }, [this] { client_.reset(); },
                                         [this] { exchange_.reset(), client_.reset(); }};
  for (const auto& end : kEnds) {
    inside_ = end;
    EXPECT_EQ(background({"GET", server_.url("/a")}), "200 a");
    inside_ = nullptr;
    told_.clear();
    for (const int turns : {0, 1, 3}) {
      for (const char* url : {"http://b@c/", server_.url("/a").c_str()}) {
        start({"GET", url});
        runOn(turns > 0 && *url == 'x' ? 0 : turns);
        told_.clear();
        end();
        runOn(3);
      }
    }
    exchange_.reset();
    EXPECT_EQ(told_, "");
  }
}

}  // namespace
}  // namespace clipwave
