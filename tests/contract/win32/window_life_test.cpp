// Where the main window stands, what has its keyboard, and what it is handed from outside.
#include <shlobj.h>

#include <gtest/gtest.h>

#include <cstring>

#include "hosts/win32/bar_window.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/win32_dialogs.h"
#include "hosts/win32/win32_menu_bar.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello {
namespace {

struct LiveWindow {
  explicit LiveWindow(Win32WindowOptions options = test::small_screen())
      : window(std::move(options)) {
    window.create(u"Orvello", u"Orvello", 320, heard);
    window.show();
    test::settle(window);
    heard.messages.clear();
  }
  HWND child() {
    return CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50, window.frame(),
                           nullptr, nullptr, nullptr);
  }
  Recorder heard;
  Win32Window window;
};

struct QuietProcedure : DialogProcedure {
  void handle(Dialog&, const DialogEvent&) override {}
};

TEST(Win32WindowPlace, IsKeptFromStartToStartAndStandsOnTheScreen) {
  std::optional<Rect> kept;
  Win32WindowOptions options;
  options.dpi = 120;
  options.fixed_look = true;
  options.load_place = [&] { return kept; };
  options.save_place = [&](const Rect& now) { kept = now; };
  {
    LiveWindow first(options);
    EXPECT_EQ(first.window.screen().resolution.width, 600) << "480 of a screen of 96 dpi";
    SetWindowPos(first.window.frame(), nullptr, 50, 60, 400, 500, SWP_NOZORDER);
    test::settle(first.window);
    first.window.destroy();
  }
  ASSERT_TRUE(kept);
  const Rect before = *kept;
  LiveWindow again(options);
  EXPECT_EQ(again.window.screen().resolution, (Size{before.width, before.height}));
  again.window.destroy();
  EXPECT_EQ(kept, before);
  kept = Rect{5000, -900, 600, 400};
  LiveWindow elsewhere(options);
  RECT place{};
  GetWindowRect(elsewhere.window.frame(), &place);
  const Rect screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  EXPECT_EQ(intersection(screen, from_native(place)), from_native(place));
}

TEST(Win32WindowFocus, GoesBackWhereItWasAndElseToWhatIsSeen) {
  LiveWindow live;
  Win32MenuBar bar(live.window);
  MenuBarContent content;
  content.buttons = {{MenuBarButton::Kind::text, 1, u"New", -1, {}, {}}};
  content.height = 30;
  ASSERT_TRUE(bar.create(content));
  SendMessageW(live.window.view(), WM_KEYDOWN, VK_TAB, 0);
  ASSERT_EQ(GetFocus(), bar.bar()->window());
  ModalCover cover;
  cover.window = live.child();
  live.window.covers().push(cover);
  SetFocus(cover.window);
  live.window.covers().drop(cover.window);
  EXPECT_EQ(GetFocus(), bar.bar()->window()) << "after what was modal";
  const HWND other = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 20, 20,
                                     nullptr, nullptr, nullptr, nullptr);
  SetActiveWindow(other);
  SetActiveWindow(live.window.frame());
  test::settle(live.window);
  EXPECT_EQ(GetFocus(), bar.bar()->window()) << "after another window";
  DestroyWindow(other);
  Win32Dialogs dialogs(live.window, english_locale());
  QuietProcedure quiet;
  DialogTemplate form;
  form.id = 590;
  form.controls = {{ControlTemplate::Kind::edit, 11, u"", {8, 8, 100, 24}},
                   {ControlTemplate::Kind::edit, 12, u"", {8, 600, 100, 24}}};
  auto dialog = dialogs.open_modeless(form, quiet);
  for (const int edit : {11, 12, 11}) {
    dialog->focus(edit);
    test::settle(live.window);
    EXPECT_TRUE(GetFocus() != bar.bar()->window() && GetFocus() != live.window.view());
    const Rect place = dialog->place(edit), seen{0, 0, 240, 290};
    EXPECT_EQ(intersection(place, seen), place) << "it comes into sight";
  }
  dialog.reset();
  test::settle(live.window);
  EXPECT_EQ(GetFocus(), live.window.view()) << "what had it is gone";
}

TEST(Win32WindowClose, AsksWhatStandsAboveFirst) {
  LiveWindow live;
  int asked = 0;
  ModalCover cover;
  cover.window = live.child();
  cover.close_wanted = [&] { ++asked; };
  live.window.covers().push(cover);
  SendMessageW(live.window.frame(), WM_CLOSE, 0, 0);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(live.heard.count(kMessageClose), 0);
  live.window.covers().drop(cover.window);
  SendMessageW(live.window.frame(), WM_CLOSE, 0, 0);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(live.heard.count(kMessageClose), 1);
}

TEST(Win32WindowDrop, HandsTheFilesOverLaterAndGivesTheirListBack) {
  LiveWindow live;
  std::vector<Text> files;
  live.window.on_files_dropped = [&](std::vector<Text> dropped) { files = std::move(dropped); };
  const Text names =
      Text(u"C:\\a b.ics").append(1, u'\0') + Text(u"C:\\\u0444.ics").append(2, u'\0');
  const HGLOBAL list =
      GlobalAlloc(GMEM_MOVEABLE, sizeof(DROPFILES) + names.size() * sizeof(char16_t));
  auto* head = static_cast<DROPFILES*>(GlobalLock(list));
  *head = {sizeof(DROPFILES), {}, FALSE, TRUE};
  std::memcpy(head + 1, names.data(), names.size() * sizeof(char16_t));
  GlobalUnlock(list);
  SendMessageW(live.window.frame(), WM_DROPFILES, reinterpret_cast<WPARAM>(list), 0);
  EXPECT_TRUE(files.empty()) << "not while the one who drops waits";
  test::settle(live.window);
  EXPECT_EQ(files, (std::vector<Text>{u"C:\\a b.ics", u"C:\\\u0444.ics"}));
  EXPECT_EQ(GlobalFlags(list), UINT{GMEM_INVALID_HANDLE});
}

}  // namespace
}  // namespace orvello
