#include "platform/foundation/Inflater.h"

#include <gmock/gmock.h>

namespace clipwave {
namespace {

using namespace std::string_literals;

const std::string kGzip =
    "\x1F\x8B\x08\0\0\0\0\0\x02\x03\xB3\x29\x2A\x2E\xD6\xB7\x03\0\x67\x29\x28\xBD\x06\0\0\0"s;
const std::string kZlib = "\x78\x9C\xB3\x29\x2A\x2E\xD6\xB7\x03\0\x07\x69\x02\x02"s;
const std::string kRaw = kZlib.substr(2, kZlib.size() - 6);

// The text with one bit of the byte `fromEnd` before its end turned over.
std::string spoilt(std::string text, std::size_t fromEnd) {
  text[text.size() - fromEnd] ^= 1;
  return text;
}

TEST(Inflater, UnpacksWhatComesInPiecesAndTellsWhetherItIsWhole) {
  enum Outcome { Whole, Cut, Corrupt };
  const auto Gzip = Inflater::Format::Gzip, Deflate = Inflater::Format::Deflate;
  const struct {
    const char* what;
    Inflater::Format format;
    std::string packed;
    Outcome outcome;
    std::string text = "<rss/>";
  } rows[] = {
      {"one member", Gzip, kGzip, Whole},
      {"two members", Gzip, kGzip + kGzip, Whole, "<rss/><rss/>"},
      {"a member and what begins like one", Gzip, kGzip + "\x1F", Whole},
      {"a member and half of one", Gzip, kGzip + kGzip.substr(0, 9), Cut},
      {"all but the length", Gzip, kGzip.substr(0, kGzip.size() - 1), Cut},
      {"a wrong check-sum", Gzip, spoilt(kGzip, 8), Corrupt},
      {"a second member of another check-sum", Gzip, kGzip + spoilt(kGzip, 8), Corrupt, "<rss/><rss/>"},
      {"plain text", Gzip, "<rss/>", Corrupt, ""},
      {"zlib's wrapping", Deflate, kZlib + "and more", Whole},
      {"no wrapping", Deflate, kRaw + "and more", Whole},
      {"half of it wrapped", Deflate, kZlib.substr(0, kZlib.size() - 1), Cut},
  };
  for (const auto& [what, format, packed, outcome, text] : rows) {
    for (const std::size_t pieceSize : {packed.size(), std::size_t{1}}) {
      Inflater inflater(format);
      std::string unpacked;
      bool isRight = true;
      for (std::size_t at = 0; at < packed.size(); at += pieceSize)
        isRight = inflater.unpack(packed.substr(at, pieceSize), [&](std::string_view part) {
          unpacked += part;
          return true;
        });
      EXPECT_EQ(!isRight ? Corrupt : inflater.hasEnded() ? Whole : Cut, outcome) << what;
      EXPECT_EQ(unpacked, text) << what << " in pieces of " << pieceSize;
    }
  }
}

}  // namespace
}  // namespace clipwave
