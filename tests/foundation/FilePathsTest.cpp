#include <gmock/gmock.h>

#include "platform/foundation/FileManager.h"

namespace clipwave {
namespace {
using namespace ::testing;

TEST(FilePaths, TheLastComponentComesOffAndOnAgain) {
  struct Case {
    const char *path, *last, *rest;
  };
  for (const Case& c :
       {Case{"/a/b", "b", "/a"}, Case{"/a/b/", "b", "/a"}, Case{"/a", "a", "/"}, Case{"/", "/", "/"},
        Case{"a", "a", ""}, Case{"", "", ""}, Case{"/a//b", "b", "/a"}}) {
    EXPECT_EQ(lastPathComponent(c.path), c.last) << c.path;
    EXPECT_EQ(stringByDeletingLastPathComponent(c.path), c.rest) << c.path;
  }
  EXPECT_EQ(stringByAppendingPathComponent("/", "a"), "/a");
  EXPECT_EQ(stringByAppendingPathComponent("/a/", "/b/"), "/a/b");
  EXPECT_EQ(stringByAppendingPathComponent("", "b"), "b");
  EXPECT_EQ(stringByAppendingPathComponent("/a", ""), "/a");
}

TEST(FilePaths, AnExtensionStandsBehindTheLastDotOfTheLastComponent) {
  struct Case {
    const char *path, *extension, *without;
  };
  for (const Case& c : {Case{"/x/show.one.mov", "mov", "/x/show.one"}, Case{"/x.y/show", "", "/x.y/show"},
                        Case{".mov", "", ".mov"}, Case{"/x/.mov", "", "/x/.mov"}, Case{"show.", "", "show."},
                        Case{"show.mov/", "mov", "show"}, Case{"/", "", "/"}, Case{"..", "", ".."},
                        Case{"a..mov", "mov", "a."}}) {
    EXPECT_EQ(pathExtension(c.path), c.extension) << c.path;
    EXPECT_EQ(stringByDeletingPathExtension(c.path), c.without) << c.path;
  }
}

}  // namespace
}  // namespace clipwave
