#include "hosts/win32/custom_control.h"

#include <oleacc.h>

#include <algorithm>

#include "draw/mirrored.h"

namespace orvello {
namespace {

constexpr wchar_t kCustomClass[] = L"OrvelloCustom";
constexpr UINT kPressPart = WM_APP + 1;  // a screen reader's, posted

}  // namespace

bool CustomControl::create(HWND parent) {
  Creation creation;
  creation.window_class = kCustomClass;
  creation.style = WS_CHILD | WS_CLIPSIBLINGS;
  creation.place = {};
  creation.parent = parent;
  creation.id = id();
  return create_own(creation) != nullptr;
}

void CustomControl::set_parts(const std::vector<AccessibleCell>& parts) {
  parts_ = parts;
  if (GetFocus() == window())
    AccessibleWindow::tell(window(), EVENT_OBJECT_FOCUS, accessible_focus());
}

void CustomControl::paint() {
  PAINTSTRUCT painting{};
  const HDC screen = BeginPaint(window(), &painting);
  const Size size = client_size();
  Win32Surface surface(look().canvas_fonts(), size, look().right_to_left());
  DialogEvent told = event_of(DialogEvent::Kind::paint);
  told.canvas = &surface.canvas();
  const std::weak_ptr<void> alive = this->alive();
  guarded([&] { sink().report(told); });
  if (alive.expired()) return;  // and with it what was begun
  surface.publish();
  surface.paint(screen, size);
  EndPaint(window(), &painting);
}

LRESULT CustomControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SETFOCUS:
      AccessibleWindow::tell(window(), EVENT_OBJECT_FOCUS, accessible_focus());
      [[fallthrough]];
    case WM_KILLFOCUS:
    case WM_SIZE:
      invalidate();
      return 0;
    case WM_GETOBJECT:
      if (const auto answer = accessible_.answer(window(), wparam, lparam)) return *answer;
      break;
    case kPressPart:
      if (wparam < parts_.size()) tap(parts_[wparam].place.center());
      return 0;
    default:
      break;
  }
  if (const auto taken = take_input(message, wparam, lparam)) return *taken;
  return by_default(message, wparam, lparam);
}

AccessiblePart CustomControl::accessible_self() {
  AccessiblePart self;
  self.name = name();
  const Size size = client_size();
  self.place = place_on_screen(window(), {0, 0, size.width, size.height});
  self.role = ROLE_SYSTEM_GROUPING;
  self.state = STATE_SYSTEM_FOCUSABLE;
  if (GetFocus() == window()) self.state |= STATE_SYSTEM_FOCUSED;
  if (!IsWindowEnabled(window())) self.state |= STATE_SYSTEM_UNAVAILABLE;
  return self;
}

AccessiblePart CustomControl::accessible_part(int part) {
  const AccessibleCell& cell = parts_[static_cast<std::size_t>(part)];
  AccessiblePart told;
  told.name = cell.name;
  told.place = place_on_screen(
      window(), look().right_to_left() ? mirrored(cell.place, client_size().width) : cell.place);
  told.role = ROLE_SYSTEM_PUSHBUTTON;
  told.state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  if (cell.selected) told.state |= STATE_SYSTEM_SELECTED;
  if (cell.selected && GetFocus() == window()) told.state |= STATE_SYSTEM_FOCUSED;
  if (!IsWindowEnabled(window())) told.state |= STATE_SYSTEM_UNAVAILABLE;
  told.action = u"Press";
  return told;
}

int CustomControl::accessible_focus() {
  const auto chosen = std::find_if(parts_.begin(), parts_.end(),
                                   [](const AccessibleCell& cell) { return cell.selected; });
  return chosen == parts_.end() ? -1 : static_cast<int>(chosen - parts_.begin());
}

void CustomControl::press_accessible(int part) {
  if (IsWindowEnabled(window())) PostMessageW(window(), kPressPart, static_cast<WPARAM>(part), 0);
}

}  // namespace orvello
