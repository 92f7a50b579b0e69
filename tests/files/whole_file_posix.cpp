#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "files/input_file.h"
#include "files/replace_file.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;

struct PosixFileTest : testing::Test {
  std::string path(const char* name) const { return folder / name; }
  std::size_t files() const { return folder.files(); }
  ScratchFolder folder;
};

TEST_F(PosixFileTest, ANewOneIsPrivateAndAReplacedOneKeepsItsModeAndItsLink) {
  ASSERT_TRUE(replace_file(path("a"), "one"));
  EXPECT_EQ(mode_of(path("a")), 0600u);
  ::chmod(path("a").c_str(), 0644);
  fs::create_symlink("a", path("link"));
  ASSERT_EQ(*replace_file(path("link"), "another"), 7u);
  EXPECT_EQ(content_of(path("a")), "another");
  EXPECT_EQ(mode_of(path("a")), 0644u);
  EXPECT_TRUE(fs::is_symlink(path("link")));
  // A reader of the old content keeps it.
  std::ifstream reader(path("a"));
  ASSERT_TRUE(replace_file(path("a"), "third"));
  std::string word;
  reader >> word;
  EXPECT_EQ(word, "another");
  EXPECT_EQ(files(), 2u) << "nothing temporary stays";
}

TEST_F(PosixFileTest, WhatIsNoPlaceForAFileIsRefusedByNameAndReason) {
  fs::create_directory(path("folder"));
  fs::create_symlink("nowhere", path("dangling"));
  fs::create_symlink("loop", path("loop"));
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  const std::pair<const char*, const char*> cases[] = {{"folder", "it is a folder"},
                                                       {"dangling", "leads to no file"},
                                                       {"pipe", "nobody reads"},
                                                       {"no/file", "no such file or folder"},
                                                       {"loop", "no file"}};
  for (const auto& [name, why] : cases) {
    const auto refused = replace_file(path(name), "x");
    ASSERT_FALSE(refused) << name;
    EXPECT_NE(refused.reason().find(path(name)), std::string::npos) << refused.reason();
    EXPECT_NE(refused.reason().find(why), std::string::npos) << refused.reason();
  }
  const auto full = replace_file("/dev/full", "x");
  EXPECT_NE(full.reason().find("disk is full"), std::string::npos) << full.reason();
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
  EXPECT_TRUE(fs::is_fifo(path("pipe")));
  EXPECT_EQ(files(), 4u);
}

TEST_F(PosixFileTest, APipeWithAReaderIsWrittenTo) {
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  const int reader = ::open(path("pipe").c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_TRUE(replace_file(path("pipe"), "through"));
  char bytes[16] = {};
  EXPECT_EQ(::read(reader, bytes, sizeof bytes), 7);
  EXPECT_TRUE(fs::is_fifo(path("pipe")));
  ::close(reader);
}

TEST_F(PosixFileTest, AFullDiskLeavesTheOldFile) {
  ASSERT_TRUE(replace_file(path("a"), "old"));
  const pid_t child = ::fork();
  if (child == 0) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1000, 1000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const auto written = replace_file(path("a"), std::string(5000, 'x'));
    ::_exit(!written && written.reason().find("disk is full") != std::string::npos ? 0 : 1);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(content_of(path("a")), "old");
  EXPECT_EQ(files(), 1u);
}

TEST_F(PosixFileTest, OnlyRegularFilesOfASensibleSizeAreRead) {
  ASSERT_TRUE(replace_file(path("a"), "content\nof a file\n"));
  EXPECT_EQ(*read_whole_file(path("a"), 100), "content\nof a file\n");
  InputFile in(path("a"), 100);
  std::string line;
  EXPECT_TRUE(std::getline(in, line) && line == "content");
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  for (const std::string& bad :
       {path("pipe"), std::string("/dev/zero"), folder.path(), path("none")}) {
    InputFile refused(bad, 100);
    EXPECT_FALSE(refused) << bad;
    EXPECT_NE(refused.problem().find(bad), std::string::npos);
  }
}

}  // namespace
}  // namespace orvello
