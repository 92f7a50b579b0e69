#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "files/descriptor.h"
#include "files/file_lock.h"
#include "files/input_file.h"
#include "files/replace_file.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;

struct WholeFileTest : testing::Test {
  std::string path(const std::string& name) const { return path_in(folder.path(), name); }
  static void make_old(const std::string& path) {
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(9));
  }
  ScratchFolder folder;
};

TEST_F(WholeFileTest, IsThereAndWholeAtEveryMoment) {
  const std::string one(3000, 'a'), other(5000, 'b');
  EXPECT_EQ(*replace_file(path("a"), one), one.size());
  std::atomic<bool> done = false;
  int replaced = 0;  // on some systems who reads it at the moment stands in the way
  std::thread writer([&] {
    for (int i = 0; i < 20; ++i) replaced += replace_file(path("a"), i % 2 ? one : other) ? 1 : 0;
    done = true;
  });
  while (!done) {
    const auto read = read_whole_file(path("a"), 10000);
    EXPECT_TRUE(read && (*read == one || *read == other)) << read.reason();
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  writer.join();
  EXPECT_GT(replaced, 0);
  EXPECT_TRUE(*create_whole_file(path("b"), "x"));
  EXPECT_FALSE(*create_whole_file(path("b"), "y"));
  EXPECT_EQ(content_of(path("b")), "x");
  EXPECT_EQ(folder.files(), 2u) << "nothing temporary stays";
  EXPECT_FALSE(read_whole_file(path("b"), 0)) << "too large";
}

TEST_F(WholeFileTest, OnlyWhatADeadProcessOfOursLeftIsRemoved) {
  const std::pair<const char*, bool> left[] = {{"a.part", true},
                                               {".orvello-aB3dEf.part", true},
                                               {".orvello-aB3dEf.part-journal", true},
                                               {".orvello-locked.part", true},
                                               {".orvello-recent.part", false},
                                               {".orvello-toolong.part", true}};
  for (const auto& [name, old] : left) {
    put_content(path(name), "x");
    if (old) make_old(path(name));
  }
  const FileLock held(path(".orvello-locked.part"), FileLock::Kind::alone);
  make_old(path(".orvello-locked.part"));
  FileInTheMaking slow(path("slow"));
  ASSERT_TRUE(held.granted() && slow.exists());
  make_old(slow.path());
  ASSERT_TRUE(replace_file(path("a"), "x"));
  EXPECT_FALSE(fs::exists(path(".orvello-aB3dEf.part")));
  EXPECT_TRUE(slow.put_in_place(TakenName::keep)) << "its process lives";
  EXPECT_EQ(folder.files(), 6u);
}

// What a read or a write could not do is said, and the end of a file is no failure.
TEST_F(WholeFileTest, BytesAreReadToTheEndAndWrittenOrNot) {
  ASSERT_TRUE(replace_file(path("a"), "content"));
  const Descriptor file(open_file_to_read(path("a")));
  char bytes[16] = {};
  EXPECT_EQ(read_bytes_at(file.number(), bytes, sizeof bytes, 4), 3);
  for (const std::uint64_t behind : {std::uint64_t{7}, std::uint64_t{1} << 32})
    EXPECT_EQ(read_bytes_at(file.number(), bytes, sizeof bytes, behind), 0) << behind;
  EXPECT_FALSE(write_all(file.number(), "x")) << "it was opened to be read";
  EXPECT_EQ(content_of(path("a")), "content");
  EXPECT_LT(read_bytes(-1, bytes, sizeof bytes), 0);
}

}  // namespace
}  // namespace orvello
