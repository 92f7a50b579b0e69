#include <windows.h>

#include <aclapi.h>
#include <gtest/gtest.h>
#include <io.h>

#include "files/descriptor.h"
#include "files/file_lock.h"
#include "files/input_file.h"
#include "files/private_rights_windows.h"
#include "files/replace_file.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;

struct WindowsFileTest : testing::Test {
  std::string path(const std::string& name) const { return path_in(folder.path(), name); }
  // As another program opens it that lets nobody else write, or replace it.
  HANDLE opened_by_another(const std::string& name) const {
    return CreateFileA(path(name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                       nullptr);
  }
  ScratchFolder folder;
};

TEST_F(WindowsFileTest, MayHaveALongPathAndLettersOfEveryLanguage) {
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

TEST_F(WindowsFileTest, WhatIsNoPlaceForAFileIsRefusedByNameAndReason) {
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
}

TEST_F(WindowsFileTest, OneThatAnotherProgramHoldsIsWaitedForAndToldOf) {
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

bool let_everyone_read(PACL rights) {
  BYTE everyone[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof everyone;
  EXPECT_TRUE(rights && CreateWellKnownSid(WinWorldSid, nullptr, everyone, &size));
  for (DWORD i = 0; rights && i < rights->AceCount; ++i) {
    void* entry = nullptr;
    EXPECT_TRUE(GetAce(rights, i, &entry));
    auto* allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    if (EqualSid(&allowed->SidStart, everyone) && (allowed->Mask & FILE_READ_DATA) != 0)
      return true;
  }
  return false;
}

bool everyone_may_read(std::string path) {
  PACL rights = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  EXPECT_EQ(GetNamedSecurityInfoA(path.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                  nullptr, &rights, nullptr, &descriptor),
            DWORD{ERROR_SUCCESS});
  const bool may = let_everyone_read(rights);
  LocalFree(descriptor);
  return may;
}

TEST_F(WindowsFileTest, WhatIsMadeIsItsOwnersAloneAndWhatIsReplacedStaysWhoseItWas) {
  Descriptor(open_or_make_file(path("lock"))).close();
  Descriptor(open_file_to_append(path("log"))).close();
  ASSERT_TRUE(replace_file(path("new"), "x") && make_folder(path("folder")));
  for (const char* made : {"lock", "log", "new", "folder"})
    EXPECT_FALSE(everyone_may_read(path(made))) << made;
  for (const auto of : {PrivateRights::Of::file, PrivateRights::Of::folder}) {
    PrivateRights rights(of);
    ASSERT_NE(rights.attributes(), nullptr);
    void* const descriptor = rights.attributes()->lpSecurityDescriptor;
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    ASSERT_TRUE(GetSecurityDescriptorControl(descriptor, &control, &revision));
    EXPECT_TRUE(control & SE_DACL_PROTECTED) << "nothing comes from the folder around it";
    BOOL present = FALSE, defaulted = FALSE;
    PACL list = nullptr;
    ASSERT_TRUE(GetSecurityDescriptorDacl(descriptor, &present, &list, &defaulted));
    EXPECT_FALSE(let_everyone_read(list));
    for (DWORD i = 0; i < list->AceCount; ++i) {
      void* entry = nullptr;
      ASSERT_TRUE(GetAce(list, i, &entry));
      const BYTE passed_on = CONTAINER_INHERIT_ACE | OBJECT_INHERIT_ACE;
      EXPECT_EQ(static_cast<ACE_HEADER*>(entry)->AceFlags & passed_on,
                of == PrivateRights::Of::folder ? passed_on : 0);
    }
  }
  put_content(path("shared"), "x");
  ASSERT_TRUE(everyone_may_read(path("shared"))) << "as the folder has it";
  ASSERT_TRUE(replace_file(path("shared"), "y"));
  EXPECT_TRUE(everyone_may_read(path("shared")));
}

// A handle that stays open keeps others from a file for as long as the program runs.
TEST_F(WindowsFileTest, NothingStaysOpen) {
  put_content(path("a"), "x");
  const auto use = [&] {
    for (const std::string& file : {path("a"), path("none"), folder.path(), std::string("NUL")}) {
      Descriptor(open_file_to_read(file)).close();
      (void)status_of_file(file), (void)may_write_file(file), (void)names_in_folder(file);
      (void)replace_file(file, "y");
    }
  };
  DWORD before = 0, after = 0;
  use();
  GetProcessHandleCount(GetCurrentProcess(), &before);
  for (int i = 0; i < 5; ++i) use();
  GetProcessHandleCount(GetCurrentProcess(), &after);
  EXPECT_LE(after, before);
}

TEST_F(WindowsFileTest, APipeWhoseOtherEndHasGoneIsAtItsEnd) {
  HANDLE out = nullptr, in = nullptr;
  ASSERT_TRUE(CreatePipe(&out, &in, nullptr, 0));
  Descriptor reader(_open_osfhandle(reinterpret_cast<intptr_t>(out), 0));
  CloseHandle(in);
  char byte = 0;
  EXPECT_EQ(read_bytes(reader.number(), &byte, 1), 0);
}

}  // namespace
}  // namespace orvello
