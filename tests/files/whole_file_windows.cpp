#include <windows.h>

#include <aclapi.h>
#include <gtest/gtest.h>

#include "files/file_lock.h"
#include "files/input_file.h"
#include "files/replace_file.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;

struct WholeFileTest : testing::Test {
  std::string path(const std::string& name) const { return path_in(folder.path(), name); }
  // As another program opens it that lets nobody else write, or replace it.
  HANDLE opened_by_another(const std::string& name) const {
    return CreateFileA(path(name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                       nullptr);
  }
  ScratchFolder folder;
};

TEST_F(WholeFileTest, IsReplacedWholeAndOthersAreLeftAlone) {
  EXPECT_EQ(*replace_file(path("a"), "one"), 3u);
  EXPECT_EQ(*replace_file(path("a"), "another"), 7u);
  EXPECT_EQ(content_of(path("a")), "another");
  EXPECT_TRUE(*create_whole_file(path("b"), "x"));
  EXPECT_FALSE(*create_whole_file(path("b"), "y"));
  EXPECT_EQ(content_of(path("b")), "x");
  // One that this program reads at the moment: the old content or a reason, never half.
  InputFile reader(path("a"), 100);
  const bool replaced = static_cast<bool>(replace_file(path("a"), "third"));
  EXPECT_EQ(content_of(path("a")), replaced ? "third" : "another");
  EXPECT_EQ(folder.files(), 2u) << "nothing temporary stays";
}

TEST_F(WholeFileTest, MayHaveALongPathAndLettersOfEveryLanguage) {
  std::string deep = folder.path();
  for (int i = 0; i < 8; ++i) deep = path_in(deep, "Папка " + std::string(40, 'x'));
  ASSERT_GT(deep.size(), 300u);
  ASSERT_TRUE(make_folders(deep)) << errno;
  const std::string name = path_in(deep, "Встреча.ics");
  ASSERT_TRUE(replace_file(name, "content"));
  EXPECT_EQ(*read_whole_file(name, 100), "content");
  EXPECT_EQ(names_in_folder(deep), std::vector<std::string>{"Встреча.ics"});
  EXPECT_EQ(status_of_file(name)->size, 7u);
  ASSERT_TRUE(remove_file(name));
  for (; deep.size() > folder.path().size(); deep = folder_of(deep))
    RemoveDirectoryW(
        fs::path(std::u8string(u8"\\\\?\\") + std::u8string(deep.begin(), deep.end())).c_str());
}

TEST_F(WholeFileTest, WhatIsNoPlaceForAFileIsRefusedByNameAndReason) {
  fs::create_directory(path("folder"));
  ASSERT_TRUE(replace_file(path("kept"), "x"));
  SetFileAttributesA(path("kept").c_str(), FILE_ATTRIBUTE_READONLY);
  const std::pair<std::string, const char*> cases[] = {
      {path("folder"), "it is a folder"},       {path("kept"), "permission denied"},
      {path("no\\file"), "no such file"},       {path("a?b"), "no such file"},
      {path("NUL"), "it is no file"},           {"con", "it is no file"},
      {"\\\\.\\pipe\\orvello", "it is no file"}};
  for (const auto& [name, why] : cases) {
    const auto refused = replace_file(name, "y");
    ASSERT_FALSE(refused) << name;
    EXPECT_NE(refused.reason().find(name), std::string::npos) << refused.reason();
    EXPECT_NE(refused.reason().find(why), std::string::npos) << refused.reason();
  }
  SetFileAttributesA(path("kept").c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(folder.files(), 2u);
  for (const std::string& bad : {path("folder"), path("none"), path("aux"), std::string("COM1")}) {
    InputFile refused(bad, 100);
    EXPECT_FALSE(refused) << bad;
    EXPECT_NE(refused.problem().find(bad), std::string::npos) << refused.problem();
  }
  EXPECT_FALSE(read_whole_file(path("kept"), 0)) << "too large";
}

TEST_F(WholeFileTest, OneThatAnotherProgramHoldsIsWaitedForAndToldOf) {
  ASSERT_TRUE(replace_file(path("a"), "old"));
  const HANDLE other = opened_by_another("a");
  const auto refused = replace_file(path("a"), "new");
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.reason(), path("a") + " cannot be written: another program has it locked.");
  EXPECT_EQ(folder.files(), 1u);
  CloseHandle(other);
  EXPECT_TRUE(replace_file(path("a"), "new"));
  {
    const FileLock one(path("lock"), FileLock::Kind::shared),
        two(path("lock"), one.granted() ? FileLock::Kind::shared : FileLock::Kind::alone);
    EXPECT_TRUE(one.granted() && two.granted());
    EXPECT_FALSE(FileLock(path("lock"), FileLock::Kind::alone).granted());
  }
  EXPECT_TRUE(FileLock(path("lock"), FileLock::Kind::alone).granted());
}

// Of whoever may read a new file: the owner, the system and who looks after the machine.
TEST_F(WholeFileTest, ANewOneIsItsOwnersAlone) {
  ASSERT_TRUE(replace_file(path("a"), "x"));
  PACL rights = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  std::string name = path("a");
  ASSERT_EQ(GetNamedSecurityInfoA(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                  nullptr, &rights, nullptr, &descriptor),
            DWORD{ERROR_SUCCESS});
  BYTE everyone[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof everyone;
  ASSERT_TRUE(CreateWellKnownSid(WinWorldSid, nullptr, everyone, &size));
  ASSERT_TRUE(rights);
  for (DWORD i = 0; i < rights->AceCount; ++i) {
    void* entry = nullptr;
    ASSERT_TRUE(GetAce(rights, i, &entry));
    auto* allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    EXPECT_FALSE(EqualSid(&allowed->SidStart, everyone) && (allowed->Mask & FILE_READ_DATA) != 0);
  }
  LocalFree(descriptor);
}

TEST_F(WholeFileTest, OnlyWhatADeadProcessOfOursLeftIsRemoved) {
  const auto leave = [&](const char* name, bool old) {
    put_content(path(name), "x");
    if (old)
      fs::last_write_time(path(name), fs::file_time_type::clock::now() - std::chrono::hours(9));
  };
  leave("a.part", true);
  leave(".orvello-aB3dEf.part", true);
  leave(".orvello-aB3dEf.part-journal", true);
  leave(".orvello-locked.part", true);
  leave(".orvello-recent.part", false);
  const FileLock held(path(".orvello-locked.part"), FileLock::Kind::alone);
  fs::last_write_time(path(".orvello-locked.part"),
                      fs::file_time_type::clock::now() - std::chrono::hours(9));
  ASSERT_TRUE(held.granted() && replace_file(path("a"), "x"));
  EXPECT_FALSE(fs::exists(path(".orvello-aB3dEf.part")));
  EXPECT_EQ(folder.files(), 4u);
}

}  // namespace
}  // namespace orvello
