// Opening the device's own store: each step fails with its box, and leaves nothing behind.
#include "hosts/headless/headless_ports.h"
#include "store/store_session.h"

#include <objbase.h>

#include "store/pim/pim_store.h"
#include "tests/store/pim/pim_server.h"

namespace orvello::test {
namespace {

using Strings = std::vector<std::string>;

constexpr char kNoInstance[] =
    "|CoCreateInstance failed. See the 'Troubleshooting' section of the user guide.";
constexpr char kNoRegistration[] =
    "|RegisterFile failed. See the 'Troubleshooting' section of the user guide.";

class PimSession : public testing::Test {
 protected:
  // Of one opening: the boxes; whether it worked.
  Strings open() {
    StoreSession session(store_, boxes_);
    opened_ = session.Open(nullptr);
    EXPECT_EQ(session.logged_on(), opened_);
    EXPECT_EQ(session.app() != nullptr, opened_);
    Strings texts;
    for (const ShownBox& box : boxes_.shown) {
      texts.push_back(to_utf8(box.caption + u"|" + box.text));
      EXPECT_FALSE(box.owned);
    }
    boxes_.shown.clear();
    EXPECT_EQ(boxes_.beeps, 0);
    return texts;
  }
  static bool thread_is_ready() {
    APTTYPE type;
    APTTYPEQUALIFIER qualifier;
    return CoGetApartmentType(&type, &qualifier) == S_OK;
  }
  void expect_closed(const Strings& boxes) {
    EXPECT_EQ(open(), boxes);
    EXPECT_FALSE(opened_);
    EXPECT_FALSE(thread_is_ready());
  }

  HeadlessClock clock_;
  HeadlessBoxes boxes_;
  PimStore store_{clock_, {2, {}}};
  bool opened_ = false;
};

TEST_F(PimSession, EachStepFailsWithItsBoxAndLeavesNothing) {
  StandinControl& server = standin();
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);  // a window's host does, before
  EXPECT_EQ(open(), Strings());
  EXPECT_TRUE(thread_is_ready()) << "as the host left it";
  CoUninitialize();
  EXPECT_FALSE(thread_is_ready());
  server.fail_name(L"CreateInstance", E_FAIL);
  const int tries = server.calls_of(L"CreateInstance");
  expect_closed({kNoInstance});
  EXPECT_EQ(server.calls_of(L"CreateInstance") - tries, 2) << "no third try";
  EXPECT_EQ(server.calls_of(L"Register"), 1);
  server.fail_name(L"CreateInstance", E_FAIL, 1);
  EXPECT_EQ(open(), Strings());
  EXPECT_TRUE(opened_) << "after one registration";
  server.fail_name(L"CreateInstance", E_FAIL);
  server.fail_name(L"Register", E_FAIL);
  expect_closed({"|DllRegisterServer call failed", kNoRegistration});
  server.fail_name(L"CreateInstance", S_OK);
  for (const auto& [name, box] : {std::pair(L"Logon", "Error|Failure to logon to app object."),
                                  {L"GetDefaultFolder", "Error|Failure to Obtain Calendar Folder"}})
    for (const bool exceptions : {false, true}) {
      server.answer_exceptions(exceptions);
      server.fail_name(name, E_FAIL);
      const int left = server.calls_of(L"Logoff");
      const Strings boxes = open();
      ASSERT_EQ(boxes.size(), 1u);
      EXPECT_TRUE(boxes[0].starts_with(box)) << boxes[0];
      EXPECT_EQ(server.calls_of(L"Logoff") - left, std::wstring_view(name) == L"Logon" ? 0 : 1);
      EXPECT_FALSE(thread_is_ready());
      EXPECT_EQ(server.references(), 0) << server.report();
      server.fail_name(name, S_OK);
    }
  EXPECT_EQ(open(), Strings());
  EXPECT_TRUE(opened_) << "from scratch";
  EXPECT_FALSE(thread_is_ready());
}

// Whichever call of an opening fails, it is told with one box, and the next opening works.
TEST_F(PimSession, AnyCallOfAnOpeningMayFail) {
  StandinControl& server = standin();
  for (const HRESULT failure : {E_FAIL, E_OUTOFMEMORY})
    for (int number = 1;; ++number) {
      SCOPED_TRACE(number);
      server.fail_call(number, failure);
      const Strings boxes = open();
      if (!server.reached()) break;
      ASSERT_LT(number, 50);
      EXPECT_LE(boxes.size(), 1u);
      EXPECT_EQ(boxes.empty(), opened_);
      EXPECT_EQ(server.references(), 0) << server.report();
      EXPECT_FALSE(thread_is_ready());
    }
}

// A process that has not loaded the library yet: run by the test below, in this order.
TEST_F(PimSession, DISABLED_RegistrationInAFreshProcess) {
  constexpr wchar_t kClass[] = L"Software\\Classes\\CLSID\\{05058F23-20BE-11D2-8F18-0000F87A4335}";
  for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
    RegDeleteKeyW(root, (std::wstring(kClass) + L"\\InprocServer32").c_str());
    RegDeleteKeyW(root, kClass);
  }
  expect_closed({"|RegisterFile: (A) Failed to register pimstore.dll", kNoRegistration});
  SetDllDirectoryW(library_folder(L"pimstore_hollow").c_str());
  expect_closed({"|RegisterFile: DllRegisterServer is NULL", kNoRegistration});
  EXPECT_FALSE(GetModuleHandleW(L"pimstore.dll")) << "it is let go in every case";
  SetDllDirectoryW(library_folder(L"pimstore").c_str());
  EXPECT_EQ(open(), Strings());
  EXPECT_TRUE(opened_) << "registered at first use";
  standin();
}

TEST_F(PimSession, RegistersTheServerWhereNobodyHas) {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring command = L"\"" + std::wstring(path) +
                         L"\" --gtest_also_run_disabled_tests"
                         L" --gtest_filter=*RegistrationInAFreshProcess";
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION child{};
  ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                             &start, &child));
  WaitForSingleObject(child.hProcess, INFINITE);
  DWORD code = 1;
  GetExitCodeProcess(child.hProcess, &code);
  CloseHandle(child.hProcess);
  CloseHandle(child.hThread);
  EXPECT_EQ(code, 0u);
}

}  // namespace
}  // namespace orvello::test
