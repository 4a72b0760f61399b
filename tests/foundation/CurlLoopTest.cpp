#include "platform/foundation/CurlLoop.h"

#include <curl/curl.h>
#include <gmock/gmock.h>

#include "tests/support/LoopbackServer.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

// A load that calls the test from within libcurl.
class Load {
 public:
  explicit Load(const std::string& url) : easy(curl_easy_init()) {
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(
        easy, CURLOPT_WRITEFUNCTION, +[](char*, std::size_t, std::size_t count, void* self) {
          ++static_cast<Load*>(self)->writes;
          if (static_cast<Load*>(self)->onWrite) static_cast<Load*>(self)->onWrite();
          return count;
        });
    curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(easy, CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(
        easy, CURLOPT_XFERINFOFUNCTION, +[](void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
          if (static_cast<Load*>(self)->onProgress) static_cast<Load*>(self)->onProgress();
          return 0;
        });
  }
  ~Load() { curl_easy_cleanup(easy); }
  Load(const Load&) = delete;
  Load& operator=(const Load&) = delete;

  CURL* easy;
  int writes = 0;
  std::function<void()> onWrite, onProgress;
};

class CurlLoopTest : public Test {
 protected:
  CurlLoopTest() {
    server_.answer("/a", [](LoopbackConnection& connection) {
      connection.send("HTTP/1.1 200 OK\r\n\r\n");
      while (connection.send("x") && connection.pause(Seconds(0.02))) {
      }
    });
    for (const auto& load : loads_) {
      observations_.push_back(curl_->add(load, load->easy, [this](int code) { codes_.push_back(code); }));
    }
  }
  template <class Condition>
  void turnUntil(Condition condition) {
    for (int turns = 0; !condition() && turns < 500; ++turns) loop_->runOnce(Seconds(0.01));
  }

  LoopbackServer server_;
  SystemClock clock_;
  std::unique_ptr<RunLoop> loop_ = makeRunLoop(clock_);
  std::unique_ptr<CurlLoop> curl_ = std::make_unique<CurlLoop>(*loop_);
  std::shared_ptr<Load> loads_[2] = {std::make_shared<Load>(server_.url("/a")),
                                     std::make_shared<Load>(server_.url("/a"))};
  std::vector<Observation> observations_;
  std::vector<int> codes_;
};

TEST_F(CurlLoopTest, TransfersMayBeEndedByTheirOwnCallbacks) {
  const std::weak_ptr<Load> one = loads_[0], other = loads_[1];
  loads_[0]->onWrite = [&] { observations_.clear(); };
  loads_[0].reset();
  loads_[1].reset();
  turnUntil([&] { return one.expired() && other.expired(); });
  EXPECT_TRUE(one.expired() && other.expired()) << "nothing holds what was ended";
  EXPECT_THAT(codes_, IsEmpty());
}

TEST_F(CurlLoopTest, ATransferThatIsEndedReportsNoLastProgress) {
  turnUntil([&] { return loads_[0]->writes > 0; });
  int reports = 0;
  loads_[0]->onProgress = loads_[1]->onProgress = [&] {
    ++reports;
    observations_[1].cancel();  // in the midst of ending the other one
  };
  observations_[0].cancel();
  curl_.reset();
  EXPECT_EQ(reports, 0);
}

TEST_F(CurlLoopTest, TheLoopMayGoWithinACallbackAndTakesItsTransfersWithIt) {
  loads_[0]->onWrite = [&] { curl_.reset(); };
  turnUntil([&] { return loads_[0].use_count() == 1 && loads_[1].use_count() == 1; });
  EXPECT_EQ(loads_[0]->writes, 1);
  observations_.clear();
  EXPECT_EQ(loads_[0].use_count(), 1);
  EXPECT_THAT(codes_, IsEmpty());
}

TEST_F(CurlLoopTest, WhatCannotBeStartedIsToldAsWell) {
  observations_.push_back(curl_->add(nullptr, loads_[0]->easy, [this](int code) { codes_.push_back(code); }));
  EXPECT_THAT(codes_, IsEmpty());
  turnUntil([&] { return !codes_.empty(); });
  EXPECT_THAT(codes_, ElementsAre(CURLE_FAILED_INIT)) << "the handle is under way already";
}

}  // namespace
}  // namespace clipwave
