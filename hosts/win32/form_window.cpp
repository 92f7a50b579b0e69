#include "hosts/win32/form_window.h"

#include <algorithm>
#include <utility>

#include "draw/form_layout.h"
#include "draw/mirrored.h"
#include "hosts/shared/spoken_names.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/make_control.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

constexpr int kHeading = 12;  // design units

// Of the shape and the line around it, which is drawn on its points: the platform's own leaves out
// what lies on the right and the lower edge.
HRGN outline_region(const std::vector<POINT>& points, int line) {
  const HRGN all = CreateRectRgn(0, 0, 0, 0);
  const OwnedGdi inside(CreatePolygonRgn(points.data(), static_cast<int>(points.size()), WINDING));
  for (int x = -(line / 2); x <= line - line / 2; ++x)
    for (int y = -(line / 2); y <= line - line / 2; ++y) {
      OffsetRgn(static_cast<HRGN>(inside.get()), x, y);
      CombineRgn(all, all, static_cast<HRGN>(inside.get()), RGN_OR);
      OffsetRgn(static_cast<HRGN>(inside.get()), -x, -y);
    }
  return all;
}

}  // namespace

Rect edged_place(const Rect& place, const FormLook& look, Size room) {
  const int edge = std::max(1, look.scaled(1));
  return popup_place(
      {place.x - edge, place.y - edge, place.width + 2 * edge, place.height + 2 * edge}, room);
}

bool FormGround::create(HWND parent) {
  Creation creation;
  creation.window_class = L"OrvelloFormGround";
  creation.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN;
  creation.extended_style = WS_EX_CONTROLPARENT;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  return create_own(creation) != nullptr;
}

LRESULT FormGround::message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_ERASEBKGND || message == WM_PRINTCLIENT) {
    RECT room{};
    GetClientRect(window(), &room);
    fill_room(reinterpret_cast<HDC>(wparam), room, look_.colors().ground);
    return 1;
  }
  if (message == WM_NCCREATE || message == WM_NCDESTROY) return by_default(message, wparam, lparam);
  return form_.ground_message(*this, message, wparam, lparam);
}

FormWindow::FormWindow(const FormLook& look, const DialogTemplate& dialog, bool titled)
    : look_(look),
      template_(dialog),
      titled_(titled),
      generation_(look.generation()),
      view_(*this, look),
      body_(*this, look),
      bar_(look),
      close_(look, FrameButton::Face::cross, u"Close"),
      focus_([this](Event kind, int control) { tell_of(kind, control); }) {}

// Its controls go before the windows that they stand on.
FormWindow::~FormWindow() = default;

void FormWindow::make_sink() {
  sink_.tell = [this](Event kind, int id) { tell_of(kind, id); };
  sink_.report = [this](const DialogEvent& event) {
    if (event.kind == Event::paint && painted) painted();
    if (report) report(event);
  };
  sink_.focused = [this](int id) {
    focus_.move(id);
    if (const int at = index_of(id); at >= 0) left_ = at;
  };
  sink_.key_left = [this](int id, UINT key) { return take_key(id, key); };
  sink_.letter_left = [this](int id, wchar_t letter) { return take_letter(id, letter); };
  sink_.covered = [this] { return covered && covered(); };
  sink_.track_menu = [this](const std::vector<MenuItem>& items, POINT screen) {
    return track_menu ? track_menu(window(), items, screen) : 0u;
  };
  sink_.pen = system_pen_reader();
  sink_.scroll_form = [this](int pixels) { scroll_to(scrolled_.x, scrolled_.y + pixels); };
}

bool FormWindow::create(HWND parent) {
  make_sink();
  Creation creation;
  creation.window_class = L"OrvelloForm";
  creation.title = wide(template_.title);
  creation.style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
  creation.extended_style = WS_EX_CONTROLPARENT;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  if (!create_own(creation) || !view_.create(window()) || !body_.create(view_.window()))
    return false;
  if (!bar_.create(window())) return false;
  bar_.moved = [this](int position) { scroll_to(scrolled_.x, position); };
  if (titled_ && !close_.create(window())) return false;
  close_.pressed = [this] {
    if (close_wanted) close_wanted();
  };
  Text label;
  for (const ControlTemplate& made : template_.controls) {
    if (!make(made, label)) return false;
    pass_label(made, label);
  }
  keep_seen();
  return true;
}

bool FormWindow::make(const ControlTemplate& made, const Text& label) {
  auto control = make_form_control(made, look_, sink_);
  if (control && !control->create(body_.window())) return false;
  if (control && is_named_by_label(made.kind))
    control->set_name(spoken_name(made, label, template_.title));
  made_.push_back({std::move(control), !made.hidden, true, false});
  return true;
}

void FormWindow::tell_of(Event kind, int id) {
  if (kind == Event::changed) focus_.leave_changed(id, is_choice(id));
  if (kind == Event::command) {
    // A radio button is chosen, and then it is told.
    const FormControl* pressed = control(id);
    if (pressed && pressed->kind() == Kind::radio_button) set_checked(id, true);
  }
  if (kind == Event::taken) {
    // A slider that was let go where it stood.
    const FormControl* taken = control(id);
    const bool slider = taken && taken->kind() == Kind::slider;
    if (slider && !focus_.is_left_changed(id)) return;
    focus_.leave_changed(id, false);
  }
  if (tell) tell(kind, id);
}

int FormWindow::index_of(int id) const {
  for (std::size_t i = 0; i < made_.size(); ++i)
    if (template_.controls[i].id == id) return static_cast<int>(i);
  return -1;
}

FormControl* FormWindow::control(int id) const {
  const int at = index_of(id);
  return at < 0 ? nullptr : made_[static_cast<std::size_t>(at)].control.get();
}

void FormWindow::set_title(const Text& title) {
  template_.title = title;
  SetWindowTextW(window(), wide(template_.title));
  InvalidateRect(window(), nullptr, FALSE);
}

int FormWindow::title_height() const { return titled_ ? look_.scaled(kTouchHeight + 1) : 0; }

// A popup's edge; one with an outline of its own draws that by itself. A sheet in the middle of a
// large window has one too.
int FormWindow::border() const {
  const bool edged = template_.popup ? template_.outline.empty() : framed_;
  return edged ? std::max(1, look_.scaled(1)) : 0;
}

bool FormWindow::press_default() {
  for (std::size_t i = 0; i < made_.size(); ++i) {
    if (made_as(i).kind != Kind::default_button || !made_[i].control) continue;
    if (!is_on_step(i) || !made_[i].enabled) continue;
    made_[i].control->press();
    return true;
  }
  return false;
}

void FormWindow::put(const Rect& place, bool framed) {
  framed_ = framed;
  if (std::exchange(generation_, look_.generation()) != look_.generation())
    for (const Made& made : made_)
      if (made.control) made.control->look_changed();
  SetWindowPos(window(), nullptr, place.x, place.y, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  lay_out();
  InvalidateRect(window(), nullptr, TRUE);
}

void FormWindow::lay_out() {
  if (!window()) return;
  RECT whole{};
  GetClientRect(window(), &whole);
  const int top = title_height(), edge = border(), bar = look_.scaled(kScrollBarWidth);
  const bool rtl = look_.right_to_left();
  const Rect inside{edge, top + edge, std::max(0L, whole.right - 2 * edge),
                    std::max(0L, whole.bottom - top - 2 * edge)};
  const FormLayout layout =
      lay_out_form(template_, look_.unit(), {inside.width, inside.height}, bar, step_);
  const bool scrolls = layout.body.height > inside.height;
  const int room = inside.width - (scrolls ? bar : 0);
  SetWindowPos(view_.window(), nullptr, rtl && scrolls ? inside.x + bar : inside.x, inside.y, room,
               inside.height, SWP_NOZORDER | SWP_NOACTIVATE);
  bar_place_ = {rtl ? inside.x : inside.right() - bar, inside.y, bar, inside.height};
  body_size_ = {std::max(layout.body.width, room), std::max(layout.body.height, inside.height)};
  for (std::size_t i = 0; i < made_.size(); ++i) {
    if (!made_[i].control) continue;
    const Rect& place = layout.places[i];
    made_[i].control->put(rtl ? mirrored(place, layout.body.width) : place);
  }
  if (titled_) {
    const int x = rtl ? edge : whole.right - top;
    const int high = std::max(0, top - edge - std::max(1, look_.scaled(1)));
    close_.put({x, edge, top - edge, high}, true);
  }
  scroll_to(scrolled_.x, scrolled_.y);
}

void FormWindow::scroll_to(int x, int y) {
  RECT room{};
  GetClientRect(view_.window(), &room);
  x = std::clamp<int>(x, 0, std::max<int>(0, body_size_.width - room.right));
  y = std::clamp<int>(y, 0, std::max<int>(0, body_size_.height - room.bottom));
  scrolled_ = {x, y};
  const int left = look_.right_to_left() ? room.right - body_size_.width + x : -x;
  SetWindowPos(body_.window(), nullptr, left, -y, body_size_.width, body_size_.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  bar_.put(bar_place_, body_size_.height, room.bottom, y);
}

void FormWindow::set_seen(bool seen) {
  if (seen == std::exchange(seen_, seen)) return;
  HRGN shape = nullptr;
  if (!seen) {
    shape = CreateRectRgn(0, 0, 0, 0);
  } else if (!template_.outline.empty()) {
    std::vector<POINT> points;
    for (const Point& point : template_.outline) {
      const Point at = look_.right_to_left() ? mirrored(point, template_.place.width) : point;
      points.push_back({at.x, at.y});
    }
    shape = outline_region(points, std::max(1, look_.scaled(1)));
  }
  SetWindowRgn(window(), shape, TRUE);  // which takes the region
}

void FormWindow::set_place(int id, const Rect& place) {
  const int at = index_of(id);
  if (at < 0 || made_as(static_cast<std::size_t>(at)).place == place) return;
  template_.controls[static_cast<std::size_t>(at)].place = place;
  lay_out();
}

void FormWindow::show() {
  if (std::exchange(shown_, true)) return;
  if (!template_.outline.empty() && seen_) {
    seen_ = false;
    set_seen(true);
  }
  ShowWindow(window(), SW_SHOWNA);
}

void FormWindow::hide() {
  shown_ = false;
  ShowWindow(window(), SW_HIDE);
}

// Of a popup that one control covers.
void FormWindow::release_at(POINT screen) {
  for (const Made& made : made_)
    if (made.control && made.control->kind() == Kind::custom)
      return made.control->release_at(screen);
}

std::optional<LRESULT> FormWindow::reflect(UINT message, WPARAM wparam, LPARAM lparam) {
  HWND from = nullptr;
  switch (message) {
    case WM_COMMAND:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
      from = reinterpret_cast<HWND>(lparam);
      break;
    case WM_NOTIFY:
      from = reinterpret_cast<const NMHDR*>(lparam)->hwndFrom;
      break;
    case WM_DRAWITEM:
      from = reinterpret_cast<const DRAWITEMSTRUCT*>(lparam)->hwndItem;
      break;
    default:
      return {};
  }
  if (!from) return {};
  for (const Made& made : made_)
    if (made.control && made.control->window() == from)
      return made.control->reflected(message, wparam, lparam);
  return {};
}

LRESULT FormWindow::ground_message(FormGround& ground, UINT message, WPARAM wparam, LPARAM lparam) {
  const bool is_body = &ground == &body_;
  if (is_body)
    if (const auto answer = reflect(message, wparam, lparam)) return *answer;
  switch (message) {
    case WM_PAINT:
      // Controls that cover the form leave nothing of it to paint.
      if (painted) painted();
      break;
    case WM_SETFOCUS:
      if (is_body) focus_.move(0);
      return 0;
    case WM_KEYDOWN:
      if (is_body) take_key(0, static_cast<UINT>(wparam));
      return 0;
    case WM_LBUTTONDOWN:
      for (const Made& made : made_)
        if (made.control) made.control->close_drop();
      return 0;
    case WM_MOUSEWHEEL: {
      const int turned = static_cast<short>(HIWORD(wparam));
      scroll_to(scrolled_.x, scrolled_.y - MulDiv(turned, 3 * look_.line_height(), WHEEL_DELTA));
      return 0;
    }
    default:
      break;
  }
  return DefWindowProcW(ground.window(), message, wparam, lparam);
}

void FormWindow::paint(HDC given) {
  const BufferedPaint paint(window(), given);
  const LookColors& colors = look_.colors();
  const RECT whole = paint.room();
  const int edge = border(), top = title_height();
  fill_room(paint.dc(), whole, edge > 0 ? colors.dim_text : colors.ground);
  fill_room(paint.dc(), shrunk(whole, edge, edge), colors.ground);
  if (!titled_) return;
  const int line = std::max(1, look_.scaled(1)), side = look_.scaled(2 * kGrid);
  fill_room(paint.dc(), {edge, edge, whole.right - edge, top}, colors.field);
  fill_room(paint.dc(), {edge, top - line, whole.right - edge, top}, colors.accent);
  TextPaint how;
  how.font = look_.font(static_cast<int>(kHeading * look_.unit()), true);
  how.color = colors.accent;
  paint_text(
      paint.dc(),
      turned_room({side, edge, whole.right - top, top - line}, whole.right, look_.right_to_left()),
      template_.title, how, look_);
}

LRESULT FormWindow::message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SETFOCUS: {
      // What stood above is gone, or the window came forward.
      const FormControl* had = control(focus_.control());
      SetFocus(had ? had->focus_target() : body_.window());
      return 0;
    }
    case WM_QUERYENDSESSION:
      if (session_ending) session_ending();
      return TRUE;
    case WM_TIMER:
      if (ticked) ticked(static_cast<int>(wparam));
      return 0;
    default:
      return by_default(message, wparam, lparam);
  }
}

}  // namespace orvello
