// How things leave the program on this system, and how it is made the one that opens calendars.
#include <windows.h>

#include "hosts/shared/draft_mail.h"
#include "hosts/shared/saved_files.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_command.h"
#include "hosts/win32/win32_departures.h"
#include "hosts/win32/win32_shell.h"
#include "tests/contract/device_shell_contract.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

struct Win32ShellDevice : ShellDevice {
  ~Win32ShellDevice() override { RegDeleteTreeW(HKEY_CURRENT_USER, wide(place)); }
  DeviceShell& shell() override { return port; }
  void choose(const std::string& program) override {
    put(place + u"\\classes\\.ics", L"", program);
  }
  std::string chosen() override {
    wchar_t text[256] = {};
    DWORD size = sizeof text;
    const Text key = place + u"\\classes\\.ics";
    RegGetValueW(HKEY_CURRENT_USER, wide(key), L"", RRF_RT_REG_SZ, nullptr, text, &size);
    return to_utf8(from_wide(text));
  }
  void fail_reading() override { port = Win32Shell(u"C:\\o.exe", nullptr); }
  static void put(const Text& key, const wchar_t* name, const std::string& text) {
    const Text value = to_utf16(text);
    RegSetKeyValueW(HKEY_CURRENT_USER, wide(key), name, REG_SZ, wide(value),
                    static_cast<DWORD>((value.size() + 1) * 2));
  }
  Text place = format(u"Software\\Orvello-shell-%d", GetCurrentProcessId());
  Win32Shell port{u"C:\\My Programs\\orvello.exe", HKEY_CURRENT_USER, place + u"\\classes",
                  place + u"\\choices"};
};
INSTANTIATE_TEST_SUITE_P(Win32, DeviceShellContract,
                         ::testing::Values(ShellCase{
                             "system", [] { return std::make_unique<Win32ShellDevice>(); }}));

// Nobody but the person may change that, and nobody is told otherwise.
TEST(Win32Shell, WhatWasChosenByHandStandsAboveIt) {
  Win32ShellDevice device;
  const Text choice = device.place + u"\\choices\\.ics\\UserChoice";
  Win32ShellDevice::put(choice, L"ProgId", "Other.ics");
  EXPECT_FALSE(device.shell().start_this_program(true));
  EXPECT_EQ(device.shell().starts_this_program(), false);
  EXPECT_EQ(device.chosen(), "");
  Win32ShellDevice::put(choice, L"ProgId", "Orvello.Calendar");
  EXPECT_EQ(device.shell().starts_this_program(), true) << "it was in the list to choose from";
  EXPECT_FALSE(device.shell().start_this_program(false));
}

TEST(Win32Departures, LeaveAsFilesOfAllowedNamesThatReplaceNone) {
  ScratchFolder folder;
  const Win32Departures departures(folder / "out");
  const auto first = departures.hand_over(u"con", "one"),
             second = departures.hand_over(u"con", "2");
  ASSERT_TRUE(first && second) << first.reason() << second.reason();
  EXPECT_FALSE(first->mailed);
  EXPECT_NE(first->path, second->path);
  EXPECT_EQ(content_of(first->path), "one");
  for (const TextView name : {u"NUL", u"Com1.x", u"aux "}) EXPECT_EQ(safe_file_name(name)[0], '_');
  EXPECT_EQ(safe_file_name(u"Conference"), "Conference");
}

TEST(Win32Departures, ADraftSaysToWhomItGoesAndCarriesTheCalendar) {
  std::vector<std::string> left_out;
  const std::string mail = draft_mail(
      u"Встреча\r\nBcc: x@example.org", "a", "BEGIN:VCALENDAR\r\nMETHOD:REQUEST\r\n",
      {"ann@example.org", "bad,one@example.org", "x\r\nBcc: y@z", "bob@example.org"}, left_out);
  EXPECT_NE(mail.find("\r\nTo: ann@example.org,\r\n bob@example.org\r\n"), std::string::npos)
      << mail;
  EXPECT_EQ(left_out.size(), 2u);
  EXPECT_EQ(mail.find("\nBcc"), std::string::npos) << mail;
  EXPECT_NE(mail.find("method=REQUEST"), std::string::npos);
  EXPECT_EQ(mail.find("X-Unsent: 1\r\n"), 0u);
}

TEST(Win32Command, TellsHowAProgramEnded) {
  using std::chrono::milliseconds;
  const milliseconds kLong{20000};
  EXPECT_EQ(run_command_line("cmd /c exit 0", "x", kLong), "");
  EXPECT_EQ(run_command_line("cmd /c exit 3", std::string(1 << 20, 'x'), kLong),
            "cmd /c exit 3 ended with 3.");
  EXPECT_NE(run_command_line("no-such-program -t", "", kLong).find("could not be started"),
            std::string::npos);
  int turns = 0;
  EXPECT_NE(run_command_line("cmd /c for /l %i in (1,0,2) do rem", "", milliseconds(300),
                             [&] { ++turns; })
                .find("was ended."),
            std::string::npos);
  EXPECT_GT(turns, 0);
  EXPECT_NE(run_command_line("cmd /c echo no such address 1>&2 & exit 5", "", kLong)
                .find("ended with 5: no such address"),
            std::string::npos);
}

}  // namespace
}  // namespace orvello
