#include "tests/contract/win32/win32_person.h"

#include <commctrl.h>

#include <algorithm>

#include "hosts/win32/sheet_tab_bar.h"

namespace orvello::test {
namespace {

constexpr int kTries = 100;
constexpr UINT kPause = 10, kPatience = 300;  // milliseconds

std::wstring class_of(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

std::wstring title_of(HWND window) {
  wchar_t title[200] = {};
  GetWindowTextW(window, title, 200);
  return title;
}

// The object that a window of the host belongs to.
template <typename Kind>
Kind* object_of(HWND window) {
  return dynamic_cast<Kind*>(NativeWindow::of(window));
}

// The first seen one, the window itself or below it, that something is true of.
HWND find_window(HWND window, const std::function<bool(HWND)>& wanted) {
  if (!window || !IsWindowVisible(window)) return nullptr;
  if (wanted(window)) return window;
  for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    if (const HWND found = find_window(child, wanted)) return found;
  return nullptr;
}

POINT middle(const RECT& place) {
  return {(place.left + place.right - 1) / 2, (place.top + place.bottom - 1) / 2};
}

RECT on_screen(HWND window, RECT place) {
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

}  // namespace

FormWindow* form_in(HWND window) {
  const HWND found = find_window(window, [](HWND one) { return class_of(one) == L"OrvelloForm"; });
  return found ? object_of<FormWindow>(found) : nullptr;
}

Win32Person::Win32Person(Win32WindowOptions options, const LocaleData& locale)
    : window_(std::move(options)), dialogs_(window_, locale) {
  window_.create(u"OrvelloTest", u"Test", 320, told_);
  window_.show();
  settle();
}

HWND Win32Person::top() {
  const ModalCover* cover = window_.covers().top();
  return cover ? cover->window : window_.frame();
}

FormWindow* Win32Person::form() { return form_in(top()); }

void Win32Person::in_front(std::function<void()> person) {
  const ModalCover* below = window_.covers().top();
  in_front_of(below ? below->window : nullptr, std::move(person), kTries);
}

void Win32Person::in_front_of(HWND below, std::function<void()> person, int tries) {
  soon_.in(kPause, [this, below, person, tries] {
    const ModalCover* cover = window_.covers().top();
    if (!cover || cover->window == below || !form()) {
      if (tries > 0) in_front_of(below, person, tries - 1);
      return;
    }
    const HWND mine = cover->window;
    const auto stands = [this, mine] {
      settle();
      const ModalCover* now = window_.covers().top();
      return now && now->window == mine;
    };
    settle();
    person();
    if (stands()) press_close();
    // A list that is down takes the first; what no press closes would hold the tests for ever.
    if (stands())
      soon_.in(kPatience, [this, stands] {
        if (!stands()) return;
        ADD_FAILURE() << "what is modal stays open";
        window_.post_quit(1);
      });
  });
}

// Until nothing is due: what is told later is posted, too.
void Win32Person::settle() {
  for (int quiet = 0; quiet < 2; ++quiet) {
    window_.loop().deliver();
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 1, QS_ALLINPUT);
  }
  window_.loop().deliver();
}

void Win32Person::wait(int timer_id) {
  bool fired = false;
  const int watch = window_.loop().add_filter([&](const MSG& message) {
    const FormWindow* shown = form();
    fired = fired || (message.message == WM_TIMER && shown && message.hwnd == shown->window() &&
                      message.wParam == static_cast<WPARAM>(timer_id));
    return false;
  });
  const ULONGLONG end = GetTickCount64() + kPatience;
  while (!fired && GetTickCount64() < end) settle();
  window_.loop().remove_filter(watch);
  settle();
}

bool Win32Person::seen(int control) {
  FormWindow* shown = form();
  if (!shown || !shown->is_seen(control)) return false;
  RECT box{};
  return GetWindowRgnBox(shown->window(), &box) != NULLREGION;
}

FormWindow* Win32Person::reach(int control) {
  settle();
  FormWindow* shown = form();
  if (!shown || !shown->is_seen(control) || !shown->is_enabled(control)) return nullptr;
  shown->bring_in_sight(control);
  return shown;
}

// As the platform does: to what holds the pointer, else to what lies under it.
HWND Win32Person::post_mouse(UINT id, POINT screen) {
  const HWND holder = GetCapture();
  const HWND target = holder ? holder : WindowFromPoint(screen);
  if (!target) return nullptr;
  POINT at = screen;
  ScreenToClient(target, &at);
  const WPARAM keys = id == WM_LBUTTONDOWN || (id == WM_MOUSEMOVE && holder) ? MK_LBUTTON : 0;
  PostMessageW(target, id, keys, MAKELPARAM(at.x, at.y));
  return target;
}

void Win32Person::mouse(UINT id, POINT screen) {
  post_mouse(id, screen);
  window_.loop().deliver();
}

// Quicker than what the press brings about is told: a box of the platform's would end the press.
void Win32Person::click(POINT screen) {
  const HWND target = post_mouse(WM_LBUTTONDOWN, screen);
  if (!target) return;
  ScreenToClient(target, &screen);
  PostMessageW(target, WM_LBUTTONUP, 0, MAKELPARAM(screen.x, screen.y));
  settle();
}

void Win32Person::tap(int control) {
  if (FormWindow* shown = reach(control)) click(middle(shown->place_on_screen(control)));
}

void Win32Person::tap_row(int control, int row) {
  FormWindow* shown = reach(control);
  if (!shown) return;
  FormControl* list = shown->control(control);
  RECT place{};
  if (ReportList* report = list->report()) {
    report->show_row(row);
    const Rect at = report->row_place(row);
    const Rect content = window_.content_area();
    const RECT whole = shown->place_on_screen(control);
    RECT room{at.x + content.x, at.y + content.y, at.right() + content.x, at.bottom() + content.y};
    room = on_screen(window_.frame(), room);
    IntersectRect(&place, &room, &whole);
  } else {
    list->list()->show_row(row);
    SendMessageW(list->window(), LB_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&place));
    place = on_screen(list->window(), place);
  }
  click(middle(place));
}

void Win32Person::choose_row(int control, int row) {
  FormWindow* shown = reach(control);
  if (!shown) return;
  if (dropped_down() != control) {
    const RECT place = shown->place_on_screen(control);
    click({place.right - 8, (place.top + place.bottom) / 2});
  }
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  if (!GetComboBoxInfo(shown->control(control)->window(), &parts)) return;
  SendMessageW(parts.hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(row), 0);
  RECT place{};
  SendMessageW(parts.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(row),
               reinterpret_cast<LPARAM>(&place));
  const POINT at = middle(on_screen(parts.hwndList, place));
  mouse(WM_MOUSEMOVE, at);
  click(at);
}

void Win32Person::type(TextView text) {
  settle();
  for (const char16_t letter : text) {
    PostMessageW(GetFocus(), WM_CHAR, letter, 1);
    window_.loop().deliver();
  }
  settle();
}

void Win32Person::key(std::uint32_t code, bool control_held, bool shift_held) {
  settle();
  const HeldKeys held((control_held ? kControlHeld : 0) | (shift_held ? kShiftHeld : 0));
  const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC)) << 16;
  for (const UINT id : {static_cast<UINT>(WM_KEYDOWN), static_cast<UINT>(WM_KEYUP)}) {
    PostMessageW(GetFocus(), id, code, scan | (id == WM_KEYUP ? 0xC0000001 : 1));
    window_.loop().deliver();
  }
  settle();
}

// Turns by the arrows and taps the day.
void Win32Person::pick_in(const DatedControl& dated, const MonthDayYear& date) {
  const auto tap_part = [&](int part) {
    if (dated.face()) click(middle(on_screen(dated.face_window(), dated.face()->place(part))));
  };
  for (int turns = 0; turns < 60 && dated.face(); ++turns) {
    const MonthDayYear& shown = dated.face()->date();
    const int by = (date.year - shown.year) * 12 + date.month - shown.month;
    if (by == 0) break;
    tap_part((by > 0 ? 1 : 0) + (by >= 12 || by <= -12 ? 2 : 0));
  }
  for (int part = MonthPad::kArrows; part < MonthPad::kParts && dated.face(); ++part)
    if (dated.face()->pad().day(part) == date) return tap_part(part);
}

void Win32Person::pick_date(int control, const MonthDayYear& date) {
  FormWindow* shown = reach(control);
  auto* dated = shown ? dynamic_cast<DatedControl*>(shown->control(control)) : nullptr;
  if (!dated) return;
  const RECT place = shown->place_on_screen(control);
  if (!dated->face()) click({place.right - 8, (place.top + place.bottom) / 2});
  pick_in(*dated, date);
}

void Win32Person::slide(int control, int position) {
  FormWindow* shown = reach(control);
  if (!shown) return;
  FormControl* slider = shown->control(control);
  RECT thumb{}, room{};
  SendMessageW(slider->window(), TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
  GetClientRect(slider->window(), &room);
  thumb = on_screen(slider->window(), thumb);
  room = on_screen(slider->window(), room);
  POINT at = middle(thumb);
  mouse(WM_LBUTTONDOWN, at);
  for (at.x = room.left; at.x < room.right && slider->range()->position() != position; ++at.x)
    mouse(WM_MOUSEMOVE, at);
  mouse(WM_LBUTTONUP, at);
  settle();
}

void Win32Person::pen(UINT id, int control, Point point) {
  FormWindow* shown = form();
  if (!shown || (!shown->is_seen(control) && !GetCapture())) return;
  const RECT place = shown->place_on_screen(control);
  mouse(id, {place.left + point.x, place.top + point.y});
  settle();
}

void Win32Person::pen_down(int control, Point point) {
  if (reach(control)) pen(WM_LBUTTONDOWN, control, point);
}

void Win32Person::press_other_button(int control, Point point) {
  if (!reach(control)) return;
  pen(WM_RBUTTONDOWN, control, point);
  pen(WM_RBUTTONUP, control, point);
}

void Win32Person::turn_wheel(int control, Point point, int notches, bool sideways) {
  FormWindow* shown = reach(control);
  if (!shown) return;
  const RECT place = shown->place_on_screen(control);
  const POINT at{place.left + point.x, place.top + point.y};
  const int turned = (sideways ? -WHEEL_DELTA : WHEEL_DELTA) * notches;
  PostMessageW(WindowFromPoint(at), sideways ? WM_MOUSEHWHEEL : WM_MOUSEWHEEL,
               MAKEWPARAM(0, static_cast<WORD>(turned)), MAKELPARAM(at.x, at.y));
  settle();
}

void Win32Person::draw(int notes, const std::vector<Point>& stroke) {
  FormWindow* shown = reach(notes);
  if (!shown) return;
  // The letters stand in a view of the page, inside of its margin.
  POINT corner{};
  ClientToScreen(GetParent(shown->control(notes)->focus_target()), &corner);
  const auto at = [&](Point point) { return POINT{corner.x + point.x, corner.y + point.y}; };
  mouse(WM_LBUTTONDOWN, at(stroke.front()));
  for (const Point& point : stroke) mouse(WM_MOUSEMOVE, at(point));
  mouse(WM_LBUTTONUP, at(stroke.back()));
  settle();
}

void Win32Person::select_text(int notes, int start, int length) {
  if (FormWindow* shown = form())
    SendMessageW(shown->control(notes)->focus_target(), EM_SETSEL, static_cast<WPARAM>(start),
                 start + length);
  settle();
}

void Win32Person::press_beside() {
  POINT corner{2, 2};
  ClientToScreen(window_.frame(), &corner);
  // What lies below is off: the platform would give the press to the frame.
  const HWND target = WindowFromPoint(corner);
  ScreenToClient(target, &corner);
  PostMessageW(target, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(corner.x, corner.y));
  PostMessageW(target, WM_LBUTTONUP, 0, MAKELPARAM(corner.x, corner.y));
  settle();
}

bool Win32Person::press(const wchar_t* title) {
  settle();
  const HWND button = find_window(top(), [title](HWND one) {
    return class_of(one) == L"Button" && title_of(one) == title &&
           object_of<FrameButton>(one) != nullptr;
  });
  if (button) {
    RECT place{};
    GetWindowRect(button, &place);
    click(middle(place));
  } else if (std::wstring(title) == L"Cancel") {
    return press(L"Close");  // a handheld's sheet is cancelled by the button in its title
  }
  return button != nullptr;
}

void Win32Person::press_close() {
  if (!press(L"Close")) key(VK_ESCAPE, false, false);
}

void Win32Person::show_page(int page) {
  settle();
  const HWND bar =
      find_window(top(), [](HWND one) { return class_of(one) == L"OrvelloSheetTabs"; });
  auto* tabs = bar ? object_of<SheetTabBar>(bar) : nullptr;
  if (!tabs) return;
  const auto tab = [&] { return middle(on_screen(tabs->tabs(), tabs->tab_place(page))); };
  // One that is out of sight comes with the arrow at that end.
  for (int taps = 0; taps < 8 && WindowFromPoint(tab()) != tabs->tabs(); ++taps) {
    RECT whole{};
    GetWindowRect(bar, &whole);
    press(tab().x < middle(whole).x ? L"Previous tabs" : L"Next tabs");
  }
  click(tab());
}

int Win32Person::focused() {
  FormWindow* shown = form();
  const HWND focus = GetFocus();
  if (!shown || !focus) return 0;
  for (const ControlTemplate& made : shown->shown_template().controls) {
    const FormControl* control = shown->control(made.id);
    if (control && (control->window() == focus || IsChild(control->window(), focus)))
      return made.id;
  }
  return 0;
}

Text Win32Person::title() {
  const HWND sheet = find_window(top(), [](HWND one) { return class_of(one) == L"OrvelloSheet"; });
  if (sheet) return from_wide(title_of(sheet));
  return form() ? form()->title() : Text();
}

int Win32Person::dropped_down() {
  FormWindow* shown = form();
  if (!shown) return 0;
  for (const ControlTemplate& made : shown->shown_template().controls) {
    const FormControl* control = shown->control(made.id);
    if (control && control->is_dropped_down()) return made.id;
  }
  return 0;
}

}  // namespace orvello::test
