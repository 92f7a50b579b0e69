#include <fcntl.h>
#include <sys/file.h>

#include <set>

#include "hosts/shared/file_registry.h"
#include "tests/contract/registry_contract.h"
#include "tests/processes.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

struct FilePlace : RegistryPlace {
  Registry& open() override {
    open_ones.push_back(std::make_unique<FileRegistry>(folder / "config/orvello/registry"));
    return *open_ones.back();
  }
  void close_all() override { open_ones.clear(); }
  ScratchFolder folder;
  std::vector<std::unique_ptr<FileRegistry>> open_ones;
};

INSTANTIATE_TEST_SUITE_P(File, RegistryContract,
                         ::testing::Values(RegistryCase{
                             "file", [] { return std::make_unique<FilePlace>(); }}));

constexpr TextView kKey = u"Brindlewick\\Orvello";

class FileRegistryTest : public ::testing::Test {
 protected:
  bool write(TextView name, const RegistryValue& value) {
    FileRegistry registry(path);
    const auto key = registry.create(kClasses, kKey);
    return key && key->set(name, value) && key->flush();
  }
  std::string read(TextView name) {
    FileRegistry registry(path);
    return value_of(registry, kClasses, kKey, name);
  }
  ScratchFolder folder;
  std::string path = folder / "registry";
};

TEST_F(FileRegistryTest, IsALegibleFileForItsOwnerAlone) {
  path = folder / "a/b/registry";
  ASSERT_TRUE(write(u"startmode", number_value(30)));
  ASSERT_TRUE(write(u"activeprofilename", text_value(u"Дом \"1\"\n")));
  EXPECT_EQ(content_of(path),
            "[HKEY_CLASSES_ROOT\\Brindlewick\\Orvello]\n"
            "startmode=dword:0000001e\n"
            "activeprofilename=\"Дом \\\"1\\\"\\n\"\n");
  EXPECT_EQ(mode_of(path), 0600u);
  EXPECT_EQ(mode_of(folder / "a"), 0700u);
  EXPECT_EQ(mode_of(folder / "a/b"), 0700u);
}

TEST_F(FileRegistryTest, WhatItDoesNotUnderstandStaysInPlace) {
  const std::string head = "; by hand\r\n\xFF\xFE\n[HKEY_CLASSES_ROOT\\Brindlewick\\Orvello]\n";
  const std::string damaged =
      "timeA=dword:zz\ntimeB=dword:\ntimeC=\"open\nname\n=\ntimeD=\"a\"b\nescape=\"\\u12\"\n"
      "long=dword:123456789\n";
  const std::string tail = "\n[HKEY_LOCAL_MACHINE\\Other\ntimeA=dword:00000009\n";
  put_content(path, head + "SHOWDAYS=dword:1\r\n" + damaged + tail);
  EXPECT_EQ(read(u"showdays"), "1");
  for (const TextView name : {u"timeA", u"timeB", u"timeC", u"timeD", u"escape", u"long", u"name"})
    EXPECT_EQ(read(name), "missing") << to_utf8(name);
  ASSERT_TRUE(write(u"showdays", number_value(0)));
  ASSERT_TRUE(write(u"timeA", number_value(2)));
  EXPECT_EQ(content_of(path),
            head + "showdays=dword:00000000\n" + damaged + "timeA=dword:00000002\n" + tail);
  EXPECT_EQ(read(u"timeA"), "2");
}

TEST_F(FileRegistryTest, AnUnreadableFileIsNotReplaced) {
  std::filesystem::create_directory(path);
  EXPECT_FALSE(write(u"x", number_value(1)));
  EXPECT_TRUE(std::filesystem::is_directory(path));
  std::filesystem::remove(path);
  std::filesystem::create_symlink("elsewhere", path);
  put_content(folder / "elsewhere", "");
  EXPECT_TRUE(write(u"x", number_value(1)));
  EXPECT_TRUE(std::filesystem::is_symlink(path)) << "the link is the person's";
  EXPECT_EQ(read(u"x"), "1");
}

TEST_F(FileRegistryTest, AFlushGivesUpWhileAnotherHoldsTheLock) {
  ASSERT_TRUE(write(u"x", number_value(1)));
  const int lock = ::open((path + ".lock").c_str(), O_RDWR);
  ASSERT_EQ(::flock(lock, LOCK_EX), 0);
  FileRegistry registry(path);
  const auto key = registry.open(kClasses, kKey);
  EXPECT_TRUE(key->set(u"x", number_value(2)));
  EXPECT_FALSE(key->flush());
  EXPECT_EQ(read(u"x"), "1");
  ::close(lock);
  EXPECT_TRUE(key->flush()) << "the change is still to be written";
  EXPECT_EQ(read(u"x"), "2");
}

TEST_F(FileRegistryTest, TellsOfWhatOthersWroteOnce) {
  ASSERT_TRUE(write(u"x", number_value(1)));
  FileRegistry registry(path);
  const auto key = registry.open(kClasses, kKey);
  key->set(u"x", number_value(2));
  EXPECT_TRUE(key->flush());
  EXPECT_FALSE(registry.changed_outside()) << "its own";
  ASSERT_TRUE(write(u"x", number_value(3)));
  EXPECT_EQ(value_of(registry, kClasses, kKey, u"x"), "3") << "looking does not hide it";
  EXPECT_TRUE(registry.changed_outside());
  EXPECT_FALSE(registry.changed_outside());
}

// Whatever keeps the file from being written: what was set holds, the reason names the file, and
// once it can be written everything is.
TEST_F(FileRegistryTest, WhatCannotBeWrittenHoldsUntilItCan) {
  const auto no_folder = folder / "file/registry", a_folder = folder / "taken";
  put_content(folder / "file", "");
  std::filesystem::create_directory(a_folder);
  for (const std::string& at : {std::string(no_folder), std::string(a_folder)}) {
    FileRegistry registry(at);
    const auto key = registry.create(kClasses, kKey);
    ASSERT_TRUE(key) << at;
    EXPECT_TRUE(key->set(u"abcbarshow", number_value(1)));
    for (int time = 0; time < 2; ++time) {
      EXPECT_FALSE(key->flush());
      EXPECT_NE(to_utf8(registry.trouble()).find(at == a_folder ? at : folder / "file"),
                std::string::npos)
          << to_utf8(registry.trouble());
      EXPECT_EQ(value_of(registry, kClasses, kKey, u"abcbarshow"), "1");
    }
    std::filesystem::remove(at == a_folder ? at : folder / "file");
    EXPECT_TRUE(key->flush());
    EXPECT_EQ(registry.trouble(), u"");
    path = at;
    EXPECT_EQ(read(u"abcbarshow"), "1");
  }
}

// The content of a value shows which round wrote it: all texts of a file must be of one round.
std::string rounds_in(const std::string& path) {
  const RegistryText file = RegistryText::parse(content_of(path));  // read at one time
  std::string rounds;
  for (int i = 0; i < 20; ++i) {
    const std::string round = shown(file.query(kClasses, kKey, format(u"t%d", i))).substr(0, 8);
    if (i == 0) rounds = round;
    if (round != rounds) return rounds + " and " + round;
  }
  return rounds;
}

bool write_round(const std::string& path, int round, std::size_t length) {
  FileRegistry registry(path);
  const auto key = registry.create(kClasses, kKey);
  for (int i = 0; key && i < 20; ++i)
    key->set(format(u"t%d", i), text_value(format(u"%.7d", round) + Text(length, u'x')));
  return key && key->flush();
}

TEST_F(FileRegistryTest, AReaderAndAKilledWriterMeetTheOldFileOrTheNewOne) {
  ASSERT_TRUE(write_round(path, 0, 500));
  std::set<std::string> seen;
  for (int kill_after = 0; kill_after < 40; ++kill_after) {
    ToldProcess child([&](auto tell) {
      for (int round = (kill_after + 1) * 1000; write_round(path, round, 500); ++round)
        if (!tell()) break;
      return 1;
    });
    ASSERT_TRUE(child.told()) << "the child wrote nothing";
    for (int reads = 0; reads < 10; ++reads)
      ASSERT_EQ(rounds_in(path).size(), 8u) << "half a file seen";
    ::usleep(static_cast<useconds_t>(kill_after * 137));
    child.kill();
    const std::string rounds = rounds_in(path);
    ASSERT_EQ(rounds.size(), 8u) << rounds;
    seen.insert(rounds);
  }
  EXPECT_EQ(seen.size(), 40u) << "a child's finished round is lost";
  EXPECT_TRUE(write_round(path, 1, 1)) << "a dead writer's leavings are in the way";
}

}  // namespace
}  // namespace orvello
