// What the table of commands says to others than the dispatch: the shells' completion, the help, the manual.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

#include "tests/ctl/CompanionProcess.h"

namespace clipwave {
namespace {
using namespace ::testing;
using namespace testing;

constexpr const char* kOdd = "It's \"a\" $HOME `b`";

// Whether there is such a program here.
bool canRun(const std::string& program) {
  return std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
}

class CompletionTest : public Test {
 protected:
  void SetUp() override {
    for (const char* title : {"Bread", kOdd, "Twice", "Twice"}) library.done({"new", title});
    library.done("new");
    library.done("set 5 vcTitle=--odd");
  }
  std::string candidates(Arguments line) const {
    line.insert(line.begin(), "--complete");
    return "\n" + library.done(line);
  }
  // What a shell's script prints, which finds the companion in $PATH, the line in $LINE and the file of the
  // completions in $FILE.
  std::string shell(const std::string& program, const std::string& file, const std::string& line,
                    const std::string& script) const {
    const std::string path = std::filesystem::path(CLIPWAVECTL).parent_path().string() + ":";
    const EnvironmentVariable home("HOME", library.folder.path().c_str());
    const EnvironmentVariable data("XDG_DATA_HOME", (library.folder / "data").c_str());
    const EnvironmentVariable folders("PATH", (path + std::getenv("PATH")).c_str());
    const EnvironmentVariable typed("LINE", line.c_str());
    const EnvironmentVariable completions("FILE", (std::string(CLIPWAVE_COMPLETIONS "/") + file).c_str());
    const std::string output = library.folder / "printed";
    const std::string command = program + " " + library.folder.write("script", script) + " >" + output;
    return std::system(command.c_str()) == 0 ? readFile(output) : "failed";
  }
  const Library library;
};

TEST_F(CompletionTest, WhatCouldComeNextFollowsFromTheTableAndTheLibrary) {
  const std::pair<Arguments, std::string> kLines[] = {
      {{"pub"}, "\npublish\tPublish every channel marked for it\n"},
      {{"-"}, "\n--version\tshow the version\n"},
      {{"publish", ""}, "\n--replace\treplace files that exist at the destination\n--keep\t"},
      {{"show", ""}, std::string("\n5\t--odd\nBread\n") + kOdd + "\n3\tTwice\n4\tTwice\n"},
      {{"set", "1", "vcT"}, "\nvcTitle=\tBread\n"},
      {{"set", "1", "vcTitle="}, "\nvcTitle=Bread\n"},
      {{"set", "1", "language=x", "vcPublish="}, "\nvcPublish=0\n"},
      {{"set", "1", "mediaPath=a"}, "\n\tmediaPath=\n"},
      {{"add", "Bread", ""}, "\n\t\n"},
      {{"defaults", "noConfirm"}, "\nnoConfirm=\n"},
      {{"defaults", "noConfirm="}, "\nnoConfirm=1\n"}};
  for (const auto& [line, expected] : kLines)
    EXPECT_THAT(candidates(line), HasSubstr(expected)) << line.front() << " " << line.back();
  EXPECT_THAT(candidates({"publish", "--keep", "--r"}), MatchesRegex("\n--subscribe\t[^\n]*\n"));
  const Arguments kNothing[] = {{"record", "1", "--name", ""},
                                {"feed", "Bread", ""},
                                {"set", "nobody", ""},
                                {"bake", ""},
                                {"publish", "--", "--k"}};
  for (const Arguments& line : kNothing) EXPECT_EQ(candidates(line), "\n") << line.front();
  library.folder.write("data/Clipwave/Clipwave.xml", "no library");
  EXPECT_EQ(candidates({"show", ""}), "\n");
}

TEST_F(CompletionTest, BashGetsTheRestOfTheWordQuotedAsItWasBegun) {
  const std::pair<const char*, const char*> kLines[] = {
      {"clipwavectl pub", "publish\n"},
      {"clipwavectl feed It", "It\\'s\\ \\\"a\\\"\\ \\$HOME\\ \\`b\\`\n"},
      {"clipwavectl feed It\\'s\\ ", "It\\'s\\ \\\"a\\\"\\ \\$HOME\\ \\`b\\`\n"},
      {"clipwavectl feed 'It", "It'\\''s \"a\" $HOME `b`\n"},
      {"clipwavectl feed \"It", "It's \\\"a\\\" \\$HOME \\`b\\`\n"},
      {"clipwavectl set \"Bread\" vcT", "-o nospace\nvcTitle=\n"},
      {"clipwavectl set Bread vcTitle=Br", "Bread\n"},
      {"clipwavectl set Bread mediaPath=~/", "-o default\n"},
      {"clipwavectl feed $(touch $HOME/ran)", ""}};
  for (const auto& [line, expected] : kLines)
    EXPECT_EQ(shell("bash", "clipwavectl", line,
                    ". $FILE; COMP_LINE=$LINE COMP_POINT=${#LINE} COMP_WORDBREAKS=$' \"\\'=:'\n"
                    "compopt() { echo \"$*\"; }; _clipwavectl\n"
                    "[ ${#COMPREPLY[@]} = 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\""),
              expected)
        << line;
  EXPECT_FALSE(std::filesystem::exists(library.folder / "ran"));
}

TEST_F(CompletionTest, FishGetsTheCandidates) {
  if (!canRun("fish")) GTEST_SKIP() << "fish is not installed";
  const std::string script = "source $FILE; complete -C $LINE";
  EXPECT_EQ(shell("fish --no-config", "clipwavectl.fish", "clipwavectl pub", script),
            "publish\tPublish every channel marked for it\n");
  EXPECT_EQ(shell("fish --no-config", "clipwavectl.fish", "clipwavectl feed 'It", script),
            std::string(kOdd) + "\n");
}

TEST(Manual, DescribesEveryCommandAndIsWellFormed) {
  const Library library;
  const std::string page = readFile(CLIPWAVE_MANUAL "/clipwavectl.1");
  const std::string help = library.done("--help");
  std::istringstream commands(library.done({"--complete", ""}));
  for (std::string line; std::getline(commands, line);) {
    const std::string command = line.substr(0, line.find('\t'));
    EXPECT_THAT(page, HasSubstr("\n\\fB" + command + "\\fR"));
    EXPECT_THAT(help, HasSubstr("\n  " + command + " "));
    EXPECT_THAT(library.done({command, "--help"}), StartsWith("Usage: clipwavectl " + command));
  }
  if (!canRun("groff")) GTEST_SKIP() << "groff is not installed";
  const std::string output = library.folder / "groff";
  EXPECT_EQ(std::system(("groff -man -ww -Tutf8 -z " CLIPWAVE_MANUAL "/*.1 >" + output + " 2>&1").c_str()),
            0);
  EXPECT_EQ(readFile(output), "");
}

}  // namespace
}  // namespace clipwave
