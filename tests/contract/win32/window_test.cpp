// What the main window does beyond its contract.
#include <oleacc.h>

#include <gtest/gtest.h>

#include "hosts/win32/win32_surface.h"
#include "tests/contract/cell_view.h"
#include "tests/contract/win32/native_objects.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello {
namespace {

struct ShownWindow {
  explicit ShownWindow(Win32WindowOptions options = test::small_screen())
      : window(std::move(options)) {
    window.create(u"Orvello", u"Orvello", 320, heard);
    window.show();
    test::settle(window);
    heard.messages.clear();
  }
  Recorder heard;
  Win32Window window;
  test::Soon person;
};

// One has no name, and the last one is a button.
CellView view_with_a_button() {
  CellView view;
  view.nameless = view.buttons = 1;
  return view;
}

// A screen reader: it asks the window for its object, and that for its children by number.
struct ScreenReader {
  explicit ScreenReader(HWND window) {
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                               reinterpret_cast<void**>(&object));
  }
  ~ScreenReader() {
    if (object) object->Release();
  }
  static VARIANT numbered(long part) {
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = part;
    return child;
  }
  using Ask = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);
  Text text(Ask ask, long part) const {
    BSTR told = nullptr;
    (object->*ask)(numbered(part), &told);
    const Text text = told ? from_wide(told) : Text();
    SysFreeString(told);
    return text;
  }
  Text name(long part) const { return text(&IAccessible::get_accName, part); }
  long number(HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, VARIANT*), long part) const {
    VARIANT told{};
    (object->*ask)(numbered(part), &told);
    return told.lVal;
  }
  IAccessible* object = nullptr;
};

TEST(Win32WindowAccessible, TheViewIsATableOfItsNamedCellsAskedOnceSomebodyListens) {
  CellView view = view_with_a_button();
  ShownWindow shown;
  shown.window.set_accessible_view(&view);
  shown.window.accessible_changed();
  EXPECT_EQ(view.asked, 0);
  const ScreenReader reader(shown.window.view());
  ASSERT_NE(reader.object, nullptr);
  long count = 0;
  reader.object->get_accChildCount(&count);
  EXPECT_EQ(count, 5) << "one has no name";
  EXPECT_EQ(reader.name(0), u"November 2026");
  EXPECT_EQ(reader.name(4), u"Day 4");
  EXPECT_EQ(reader.text(&IAccessible::get_accDescription, 4), u"Dentist; Lunch");
  EXPECT_EQ(reader.number(&IAccessible::get_accRole, 4), ROLE_SYSTEM_CELL);
  EXPECT_EQ(reader.number(&IAccessible::get_accRole, 5), ROLE_SYSTEM_PUSHBUTTON);
  EXPECT_TRUE(reader.number(&IAccessible::get_accState, 2) & STATE_SYSTEM_SELECTED);
  EXPECT_EQ(view.asked, 1);
  long x = 0, y = 0, width = 0, height = 0;
  reader.object->accLocation(&x, &y, &width, &height, ScreenReader::numbered(4));
  POINT corner{80, 100};
  ClientToScreen(shown.window.view(), &corner);
  EXPECT_TRUE(x == corner.x && y == corner.y && width == 80 && height == 100);
  reader.object->accDoDefaultAction(ScreenReader::numbered(4));
  test::settle(shown.window);
  EXPECT_EQ(view.chosen, 4);
  view.selected = 3;
  shown.window.accessible_changed();
  EXPECT_TRUE(reader.number(&IAccessible::get_accState, 3) & STATE_SYSTEM_SELECTED);
  shown.window.set_accessible_view(nullptr);
  EXPECT_EQ(reader.name(4), u"");
}

TEST(Win32WindowAccessible, WhatStandsAboveTheViewIsToldInItsPlace) {
  CellView view = view_with_a_button();
  ShownWindow shown;
  shown.window.set_accessible_view(&view);
  const ScreenReader reader(shown.window.view());
  const HWND form = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50,
                                    shown.window.frame(), nullptr, nullptr, nullptr);
  ModalCover cover;
  cover.window = form;
  shown.window.covers().push(cover);
  EXPECT_EQ(reader.name(4), u"");
  EXPECT_FALSE(IsWindowEnabled(shown.window.view()));
  shown.window.covers().drop(form);
  EXPECT_EQ(reader.name(4), u"Day 4");
  EXPECT_TRUE(IsWindowEnabled(shown.window.view()));
  EXPECT_EQ(GetFocus(), shown.window.view());
}

TEST(Win32WindowCovers, TheFrameIsTakenHoldOfWhateverStandsInIt) {
  ShownWindow shown;
  ModalCover cover;
  cover.window = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50,
                                 shown.window.frame(), nullptr, nullptr, nullptr);
  int beside = 0;
  cover.pressed_beside = [&](POINT) { ++beside; };
  shown.window.covers().push(cover);
  MSG press{};
  press.hwnd = shown.window.frame();
  press.message = WM_NCLBUTTONDOWN;
  EXPECT_FALSE(shown.window.covers().take_pointer(press));
  press.message = WM_LBUTTONDOWN;
  EXPECT_TRUE(shown.window.covers().take_pointer(press));
  EXPECT_EQ(beside, 2);
}

// A popup that is opened by a press hears of its release, and of the next press beside it.
TEST(Win32WindowCovers, APopupHearsTheReleaseAndThePressBesideIt) {
  for (const bool goes_on : {false, true}) {
    ShownWindow shown;
    const HWND view = shown.window.view();
    SendMessageW(view, WM_LBUTTONDOWN, MK_LBUTTON, test::packed_point({10, 20}));
    const HWND popup = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 100, 100, 50, 50,
                                       shown.window.frame(), nullptr, nullptr, nullptr);
    int released = 0, beside = 0;
    ModalCover cover;
    cover.window = popup;
    cover.lets_presses_through = goes_on;
    cover.released = [&](POINT) { ++released; };
    cover.pressed_beside = [&](POINT) { ++beside; };
    shown.window.covers().push(cover);
    EXPECT_FALSE(shown.window.pen_is_down());
    PostMessageW(shown.window.frame(), WM_LBUTTONUP, 0, test::packed_point({12, 20}));
    test::settle(shown.window);
    EXPECT_EQ(released, 1);
    EXPECT_EQ(shown.heard.count(kMessageButtonUp), 0);
    shown.heard.messages.clear();
    PostMessageW(view, WM_LBUTTONDOWN, MK_LBUTTON, test::packed_point({10, 20}));
    test::settle(shown.window);
    EXPECT_EQ(beside, 1);
    EXPECT_EQ(shown.heard.count(kMessageButtonDown), goes_on ? 1 : 0);
  }
}

TEST(Win32WindowMirrored, EverythingCountsFromWhereLinesBegin) {
  Win32WindowOptions options = test::small_screen();
  options.right_to_left = true;
  ShownWindow shown(options);
  const HWND view = shown.window.view();
  test::click(view, {10, 20});
  EXPECT_EQ(shown.heard.of(kMessageButtonDown).at(0).point, (Point{229, 20}));
  SendMessageW(view, WM_KEYDOWN, VK_LEFT, 0);
  EXPECT_EQ(shown.heard.of(kMessageKeyDown).at(0).wparam, kKeyRight);
  shown.window.show_label({{20, 30, 100, 40}, u"x", {12, 400, false}, kBlack, kWhite});
  RECT place{};
  GetWindowRect(shown.window.label_window(), &place);
  MapWindowPoints(nullptr, view, reinterpret_cast<POINT*>(&place), 2);
  EXPECT_EQ(place.right, 220);
}

TEST(Win32WindowInstance, TheSecondHandsItsFilesToTheFirstOfTheSameCalendarOnly) {
  Win32WindowOptions options = test::small_screen();
  options.identity = u"C:\\Users\\A\\calendar";
  Win32Window first(options);
  ASSERT_FALSE(first.activate_other_instance(u"Orvello", u"Orvello"));
  std::vector<InstanceCall> calls;
  first.on_call = [&](const InstanceCall& call) { calls.push_back(call); };
  options.call = {{u"C:\\a b.ics", u"\\\\server\\share\\\u0444.ics", u"plain.ics"}, true};
  Win32Window second(options);
  EXPECT_TRUE(second.activate_other_instance(u"Orvello", u"Orvello"));
  EXPECT_TRUE(second.call_answered());
  EXPECT_TRUE(calls.empty()) << "later: the second waits for the answer";
  test::settle(first);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_TRUE(calls[0].new_appointment);
  ASSERT_EQ(calls[0].files.size(), 3u);
  EXPECT_EQ(calls[0].files[1], options.call.files[1]);
  EXPECT_EQ(calls[0].files[2].substr(1, 2), u":\\") << "whole, as the first may stand elsewhere";
  options.identity = u"C:\\Users\\A\\other";
  Win32Window other(options);
  EXPECT_FALSE(other.activate_other_instance(u"Orvello", u"Orvello"));
}

TEST(Win32WindowInstance, OnlyAWholeCallIsBelieved) {
  const InstanceCall call{{u"C:\\x.ics"}, false};
  EXPECT_EQ(unpacked(packed(call)), call);
  EXPECT_EQ(unpacked(packed({})), InstanceCall());
  const Text end(1, u'\0');
  for (const Text& bad : {Text(), Text(u"2"), Text(u"1C:\\x.ics"), u"1x.ics" + end, u"1" + end,
                          u"0C:\\x" + end + end, Text(u"1").append(2 << 20, u'\0')})
    EXPECT_EQ(unpacked(bad), std::nullopt);
}

TEST(Win32Window, ComesAndGoesWithoutATrace) {
  const auto live = [] {
    ShownWindow shown;
    shown.window.show_label({{20, 30, 100, 40}, u"x", {12, 400, false}, kBlack, kWhite});
    shown.window.show_notice({{20, 90, 100, 40}, u"y", {12, 400, false}, kBlack, kWhite});
    test::choose_in_next_menu(shown.person, 5);
    shown.window.track_menu({{5, u"One", true, true}, {}, {6, u"Two"}}, {10, 10});
    test::settle(shown.window);
  };
  live();
  const int objects = drawing_objects(), windows = thread_windows();
  for (int i = 0; i < 5; ++i) live();
  EXPECT_LE(drawing_objects(), objects);
  EXPECT_LE(thread_windows(), windows);
}

TEST(Win32Window, TheWheelTurnsWhatLiesBelowThePointer) {
  ShownWindow shown;
  const HWND field = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 200, 50, 50,
                                     shown.window.frame(), nullptr, nullptr, nullptr);
  SetFocus(field);
  POINT at{30, 30};
  ClientToScreen(shown.window.view(), &at);
  PostMessageW(field, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), MAKELPARAM(at.x, at.y));
  test::settle(shown.window);
  EXPECT_EQ(shown.heard.count(kMessageMouseWheel), 1);
}

}  // namespace
}  // namespace orvello
