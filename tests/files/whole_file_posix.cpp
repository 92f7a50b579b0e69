#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "files/input_file.h"
#include "files/replace_file.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;

class WholeFileTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = testing::TempDir() + "whole_fileXXXXXX";
    ASSERT_TRUE(::mkdtemp(name.data()));
    folder_ = name;
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string path(const char* name) const { return folder_ + "/" + name; }
  static std::string text_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  static int mode_of(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 0777 : -1;
  }
  std::size_t files() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

  std::string folder_;
};

TEST_F(WholeFileTest, ANewOneIsPrivateAndAReplacedOneKeepsItsModeAndItsLink) {
  ASSERT_TRUE(replace_file(path("a"), "one"));
  EXPECT_EQ(mode_of(path("a")), 0600);
  ::chmod(path("a").c_str(), 0644);
  fs::create_symlink("a", path("link"));
  ASSERT_EQ(*replace_file(path("link"), "another"), 7u);
  EXPECT_EQ(text_of(path("a")), "another");
  EXPECT_EQ(mode_of(path("a")), 0644);
  EXPECT_TRUE(fs::is_symlink(path("link")));
  // A reader of the old content keeps it.
  std::ifstream reader(path("a"));
  ASSERT_TRUE(replace_file(path("a"), "third"));
  std::string word;
  reader >> word;
  EXPECT_EQ(word, "another");
  EXPECT_TRUE(*create_whole_file(path("b"), "x"));
  EXPECT_FALSE(*create_whole_file(path("b"), "y"));
  EXPECT_EQ(text_of(path("b")), "x");
  EXPECT_EQ(files(), 3u) << "nothing temporary stays";
}

TEST_F(WholeFileTest, WhatIsNoPlaceForAFileIsRefusedByNameAndReason) {
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

TEST_F(WholeFileTest, APipeWithAReaderIsWrittenTo) {
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  const int reader = ::open(path("pipe").c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_TRUE(replace_file(path("pipe"), "through"));
  char bytes[16] = {};
  EXPECT_EQ(::read(reader, bytes, sizeof bytes), 7);
  EXPECT_TRUE(fs::is_fifo(path("pipe")));
  ::close(reader);
}

TEST_F(WholeFileTest, AFullDiskLeavesTheOldFile) {
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
  EXPECT_EQ(text_of(path("a")), "old");
  EXPECT_EQ(files(), 1u);
}

TEST_F(WholeFileTest, OnlyWhatADeadProcessOfOursLeftIsRemoved) {
  const auto leave = [&](const char* name, bool old) {
    std::ofstream(path(name)) << "x";
    const timespec times[2] = {{old ? 1 : ::time(nullptr), 0}, {old ? 1 : ::time(nullptr), 0}};
    ::utimensat(AT_FDCWD, path(name).c_str(), times, 0);
  };
  leave("a.part", true);
  leave(".orvello-aB3dEf.part", true);
  leave(".orvello-aB3dEf.part-journal", true);
  leave(".orvello-locked.part", true);
  leave(".orvello-recent.part", false);
  leave(".orvello-toolong.part", true);
  const int held = ::open(path(".orvello-locked.part").c_str(), O_RDONLY);
  ASSERT_EQ(::flock(held, LOCK_EX), 0);
  ASSERT_TRUE(replace_file(path("a"), "x"));
  EXPECT_FALSE(fs::exists(path(".orvello-aB3dEf.part")));
  EXPECT_EQ(files(), 5u);
  ::close(held);
}

TEST_F(WholeFileTest, OnlyRegularFilesOfASensibleSizeAreRead) {
  ASSERT_TRUE(replace_file(path("a"), "content\nof a file\n"));
  EXPECT_EQ(*read_whole_file(path("a"), 100), "content\nof a file\n");
  InputFile in(path("a"), 100);
  std::string line;
  EXPECT_TRUE(std::getline(in, line) && line == "content");
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  for (const std::string& bad : {path("pipe"), std::string("/dev/zero"), folder_, path("none")}) {
    InputFile refused(bad, 100);
    EXPECT_FALSE(refused) << bad;
    EXPECT_NE(refused.problem().find(bad), std::string::npos);
  }
  EXPECT_FALSE(read_whole_file(path("a"), 3));
}

}  // namespace
}  // namespace orvello
