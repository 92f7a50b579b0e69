// The message boxes' contract on the platform's dialogs.
#include "hosts/win32/win32_boxes.h"
#include "tests/contract/message_boxes_contract.h"
#include "tests/contract/win32/native_objects.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello {
namespace {

struct NativeBoxDevice : BoxDevice {
  MessageBoxes& boxes() override { return port; }
  void make_window() override {
    window.create(u"Orvello", u"Orvello", 320, heard);
    window.show();
    test::settle(window);
  }
  void person(std::optional<int> button) override {
    soon.in(40, [this, button] {
      const HWND box = window.covers().top()->window;
      if (!button) return (void)SendMessageW(box, WM_CLOSE, 0, 0);
      HWND pressed = nullptr;
      for (int i = 0; i <= *button; ++i) pressed = FindWindowExW(box, pressed, L"BUTTON", nullptr);
      test::click(pressed, {5, 5});
    });
  }
  void press_return() override {
    soon.in(40, [] { PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0); });
  }
  Recorder heard;
  Win32Window window{test::small_screen()};
  Win32Boxes port{window, u"en"};
  test::Soon soon;
};
INSTANTIATE_TEST_SUITE_P(Win32, MessageBoxesContract,
                         ::testing::Values(BoxCase{
                             "win32", [] { return std::make_unique<NativeBoxDevice>(); }}));

struct BoxFace {
  bool behind_is_on = true, text_scrolls = false;
  Rect place;
};

BoxFace face_of(NativeBoxDevice& device, std::size_t letters) {
  BoxFace face;
  device.soon.in(40, [&] {
    const HWND box = device.window.covers().top()->window;
    RECT place{};
    GetWindowRect(box, &place);
    face.place = {place.left, place.top, place.right - place.left, place.bottom - place.top};
    face.behind_is_on = IsWindowEnabled(device.window.frame()) != FALSE;
    face.text_scrolls = FindWindowExW(box, nullptr, L"EDIT", nullptr) != nullptr;
    SendMessageW(box, WM_CLOSE, 0, 0);
  });
  Text text;
  while (text.size() < letters) text += u"letters ";
  device.port.show(text, u"Error", BoxIcon::error, BoxButtons::yes_no_cancel, true);
  return face;
}

TEST(Win32Boxes, StandOnTheScreenWhateverTheySayAndGiveTheWindowBack) {
  NativeBoxDevice device;
  device.make_window();
  for (const std::size_t letters : {0u, 1u, 200u, 5000u}) {
    const BoxFace face = face_of(device, letters);
    EXPECT_FALSE(face.behind_is_on);
    EXPECT_EQ(face.text_scrolls, letters == 5000u);
    const Rect screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    EXPECT_EQ(intersection(face.place, screen), face.place);
    EXPECT_TRUE(IsWindowEnabled(device.window.frame()));
  }
  const int objects = drawing_objects(), windows = thread_windows();
  for (int i = 0; i < 3; ++i) face_of(device, 5000);
  EXPECT_LE(drawing_objects(), objects);
  EXPECT_LE(thread_windows(), windows);
}

TEST(Win32Boxes, TheEndOfTheProgramAnswersCarefully) {
  NativeBoxDevice device;
  device.soon.in(40, [&] { device.window.post_quit(3); });
  EXPECT_EQ(device.port.show(u"Go on?", u"Orvello", BoxIcon::none, BoxButtons::yes_no, false),
            BoxAnswer::no);
  EXPECT_EQ(device.window.run(), 3);
}

}  // namespace
}  // namespace orvello
