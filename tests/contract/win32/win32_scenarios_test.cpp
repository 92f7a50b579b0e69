#include "tests/contract/mirrored_device.h"  // before the platform's headers, which have a TEXT, too

#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_record_databases.h"
#include "hosts/headless/memory_registry.h"
#include "hosts/win32/bar_window.h"
#include "hosts/win32/win32_boxes.h"
#include "hosts/win32/win32_clock.h"
#include "hosts/win32/win32_files.h"
#include "hosts/win32/win32_locale.h"
#include "hosts/win32/win32_menu_bar.h"
#include "hosts/win32/win32_surface.h"
#include "tests/contract/win32/win32_person.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

Win32WindowOptions screen_of(const LocaleData& locale) {
  Win32WindowOptions options = test::small_screen();
  options.right_to_left = locale.right_to_left;
  return options;
}

// The ports of the Windows host and the person in front of its window, who sends what the platform
// sends. What would reach the machine itself, its registry and its shell, is in memory.
class Win32Device : public ScenarioDevice {
 public:
  explicit Win32Device(const LocaleData& locale = english_locale())
      : locale_(to_utf8(locale.name), to_utf8(locale.name), ""), window_(screen_of(locale)) {
    put_content(folder_ / "settings.vol", "");  // not the first use: nobody answers its note
    attend_soon();
  }
  Host host() override {
    return {clock_,    locale_, registry_, files_, databases_, surfaces_, window_,
            menu_bar_, boxes_,  dialogs_,  store_, input_,     shell_};
  }
  MemoryStore& store() override { return store_; }

  void press(Point point) override { pointer(window_.view(), WM_LBUTTONDOWN, point); }
  void move(Point point) override { pointer(window_.view(), WM_MOUSEMOVE, point); }
  void release(Point point) override { pointer(window_.view(), WM_LBUTTONUP, point); }
  void hold(Point point) override {
    press(point);
    test::settle(window_, kHeld);
    release(point);
  }
  void key(std::uint32_t key_code) override { click_key(window_.view(), key_code, false); }
  void wheel(Point point, int notches) override {
    POINT at{point.x, point.y};
    ClientToScreen(window_.view(), &at);
    SendMessageW(window_.view(), WM_MOUSEWHEEL,
                 MAKEWPARAM(0, static_cast<WORD>(notches * WHEEL_DELTA)), MAKELPARAM(at.x, at.y));
  }
  void choose(std::uint32_t command) override {
    const auto& buttons = menu_bar_.bar()->buttons();
    for (std::size_t i = 0; i < buttons.size(); ++i)
      if (buttons[i].content.command == command && !buttons[i].place.empty())
        return click(menu_bar_.bar()->window(), menu_bar_.bar()->place_on_window(i).center());
    ADD_FAILURE() << "no button for command " << command;
  }
  void turn(Size screen) override {
    RECT outside{}, inside{};
    GetWindowRect(window_.frame(), &outside);
    GetClientRect(window_.frame(), &inside);
    SetWindowPos(
        window_.frame(), nullptr, 0, 0, outside.right - outside.left - inside.right + screen.width,
        outside.bottom - outside.top - inside.bottom + screen.height, SWP_NOMOVE | SWP_NOZORDER);
    test::settle(window_, 120);  // the window waits for the last of a row
  }

  void list_press(Point point) override { pointer(list(), WM_LBUTTONDOWN, point); }
  void list_move(Point point) override { pointer(list(), WM_MOUSEMOVE, point); }
  void list_release(Point point) override { pointer(list(), WM_LBUTTONUP, point); }
  void list_key(std::uint32_t key_code, bool control_held) override {
    EXPECT_EQ(GetFocus(), list());
    click_key(list(), key_code, control_held);
  }
  void header_tap(Point point) override {
    const HWND header = control_of(window_.frame(), kControlDayHeader);
    ASSERT_NE(header, nullptr);
    click(header, point);
  }
  Point row_center(int row) override {
    const Point center = report(window_.frame())->row_place(row).center();
    return {center.x, center.y - top_in_frame(list())};
  }
  void let_timer_fire(int) override { test::settle(window_, kHeld); }

  void answer(Answer answer) override { answer_ = answer; }
  void pick(std::uint32_t command) override { pick_ = command; }
  void meanwhile(std::function<void()> happens) override { happens_ = std::move(happens); }
  void key_anywhere(std::uint32_t key_code) override { click_key(GetFocus(), key_code, false); }
  Text notice() override {
    const HWND shown = window_.notice_window();
    if (!shown || !IsWindowVisible(shown)) return {};
    wchar_t text[400] = {};
    GetWindowTextW(shown, text, 400);
    return from_wide(text);
  }
  int boxes() override { return shown_boxes_; }
  std::vector<int> opened() override { return opened_; }
  void settle() override { test::settle(window_); }

 private:
  static constexpr DWORD kHeld = 700;    // milliseconds: longer than any hold or second tap
  static constexpr UINT kGlances = 20;   // between two looks at what is modal
  static constexpr int kPatience = 250;  // looks

  void attend_soon() {
    person_.in(kGlances, [this] {
      attend_soon();
      attend();
    });
  }
  // The person in front of what is modal: those windows and menus run a loop of their own.
  void attend() {
    if (const HMENU menu = test::open_menu()) return attend_menu(menu);
    attended_menu_ = nullptr;
    const ModalCover* cover = window_.covers().top();
    const HWND modal = cover ? cover->window : nullptr;
    if (modal && (modal == attended_ || !IsWindowVisible(modal))) return wait_for_its_end();
    attended_ = modal;
    glances_ = 0;
    if (!modal) return;
    const FormWindow* form = test::form_in(modal);
    if (form)
      opened_.push_back(form->shown_template().id);
    else
      ++shown_boxes_;
    let_go();
    if (const auto happens = std::exchange(happens_, nullptr)) happens();
    if (!form) return (void)SendMessageW(modal, WM_CLOSE, 0, 0);
    const HWND ok = control_of(modal, kControlOk);
    if (answer_ == Answer::first_row && report(modal))
      tap_first_row(modal);
    else if (answer_ == Answer::accept && ok)
      click(ok, {5, 5});
    else
      click_key(GetFocus(), VK_ESCAPE, false);
  }
  // One that no key or press has closed would hold the tests for ever.
  void wait_for_its_end() {
    if (++glances_ < kPatience) return;
    ADD_FAILURE() << "what is modal did not hear its answer";
    window_.post_quit(1);
  }
  void attend_menu(HMENU menu) {
    if (std::exchange(attended_menu_, menu) == menu) return;
    if (!test::choose_in_menu(menu, pick_)) EndMenu();
  }

  static FormControl* control(HWND above, int id) {
    const FormWindow* form = test::form_in(above);
    return form ? form->control(id) : nullptr;
  }
  static HWND control_of(HWND above, int id) {
    const FormControl* found = control(above, id);
    return found ? found->window() : nullptr;
  }
  static ReportList* report(HWND above) {
    FormControl* found = control(above, kControlDayList);
    return found ? found->report() : nullptr;
  }
  int top_in_frame(HWND window) const {
    POINT corner{};
    MapWindowPoints(window, window_.frame(), &corner, 1);
    return static_cast<int>(corner.y);
  }
  // Rows are as wide as their list.
  void tap_first_row(HWND modal) {
    const HWND rows = control_of(modal, kControlDayList);
    const Point center = report(modal)->row_place(0).center();
    RECT inside{};
    GetClientRect(rows, &inside);
    click(rows, {static_cast<int>(inside.right) / 2, center.y - top_in_frame(rows)});
  }
  HWND list() const { return control_of(window_.frame(), kControlDayList); }

  // As the platform does: to what holds the pointer, else to what lies under it.
  void pointer(HWND window, UINT id, Point at) {
    POINT screen{at.x, at.y};
    ClientToScreen(window, &screen);
    const HWND holder = GetCapture();
    const HWND target = holder ? holder : WindowFromPoint(screen);
    if (!target) return;
    if (id == WM_LBUTTONDOWN) pressed_ = screen;
    if (id == WM_LBUTTONUP && !std::exchange(pressed_, {})) return;  // was let go meanwhile
    post_pointer(target, id, screen);
  }
  void post_pointer(HWND target, UINT id, POINT screen) {
    ScreenToClient(target, &screen);
    PostMessageW(target, id, id == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(screen.x, screen.y));
    window_.loop().deliver();
  }
  void click(HWND window, Point at) {
    pointer(window, WM_LBUTTONDOWN, at);
    pointer(window, WM_LBUTTONUP, at);
  }
  // A person sees what a hold has opened and lets go, before anything else.
  void let_go() {
    if (const auto held = std::exchange(pressed_, {}); held && GetCapture())
      post_pointer(GetCapture(), WM_LBUTTONUP, *held);
  }
  // Keys come from the queue, as their letters are made on the way.
  void click_key(HWND window, std::uint32_t code, bool control_held) {
    const test::HeldKeys held(control_held ? kControlHeld : 0);
    PostMessageW(window, WM_KEYDOWN, code, 1);
    PostMessageW(window, WM_KEYUP, code, 0xC0000001);
    window_.loop().deliver();
  }

  ScratchFolder folder_;
  MemoryRegistry registry_;
  MemoryRecordDatabases databases_;
  HeadlessClock store_clock_;
  MemoryStore store_{store_clock_};
  Win32Clock clock_{midnight_of(day_of(2026, 11, 21)) + 36000};
  Win32Locale locale_;
  Win32Files files_{{folder_.path(), folder_.path(), folder_.path()}};
  HeadlessInput input_;
  HeadlessShell shell_;
  Win32Window window_;
  Win32Surfaces surfaces_{window_.fonts(), window_.right_to_left()};
  Win32MenuBar menu_bar_{window_};
  Win32Boxes boxes_{window_, u"en"};
  Win32Dialogs dialogs_{window_, locale_.data()};
  test::Soon person_;
  std::optional<POINT> pressed_;  // a place of the screen
  HWND attended_ = nullptr;
  HMENU attended_menu_ = nullptr;
  Answer answer_ = Answer::dismiss;
  std::uint32_t pick_ = 0;
  std::vector<int> opened_;
  int shown_boxes_ = 0, glances_ = 0;
  std::function<void()> happens_;
};

using Win32ScenarioDevices = testing::Types<Win32Device, MirroredDevice<Win32Device>>;
INSTANTIATE_TYPED_TEST_SUITE_P(Win32, Scenarios, Win32ScenarioDevices);

}  // namespace
}  // namespace orvello
