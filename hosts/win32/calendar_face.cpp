#include "hosts/win32/calendar_face.h"

#include <oleacc.h>

#include <algorithm>
#include <string>

#include "calendar/short_names.h"
#include "draw/mirrored.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/pointed_control.h"

namespace orvello {
namespace {

constexpr int kCalendarHeading = 12;  // design units

Text digits_of(int number) {
  const std::string digits = std::to_string(number);
  return Text(digits.begin(), digits.end());
}

Size client_size_of(HWND window) {
  RECT room{};
  GetClientRect(window, &room);
  return {static_cast<int>(room.right), static_cast<int>(room.bottom)};
}

// The first names that fit, else the last.
WeekNames names_within(const LocaleData& locale, HFONT font, int room) {
  const std::vector<WeekNames> choices = abbreviated_day_names(locale);
  const auto found = std::find_if(choices.begin(), choices.end(), [&](const WeekNames& names) {
    return std::all_of(names.begin(), names.end(),
                       [&](const Text& name) { return measured_text(font, name).width <= room; });
  });
  return found == choices.end() ? choices.back() : *found;
}

}  // namespace

void CalendarFace::set_windows(HWND shown, HWND owner) {
  shown_ = shown;
  owner_ = owner;
}

void CalendarFace::set_calendar(const MonthDayYear& today, bool monday_first) {
  today_ = today;
  pad_.set_monday_first(monday_first);
}

RECT CalendarFace::turned(const Rect& place) const {
  return turned_room(to_rect(place), pad_.size().width, look_.right_to_left());
}

RECT CalendarFace::place(int part) const { return turned(pad_.place(part)); }

int CalendarFace::part_at(POINT at) const {
  const Point point{static_cast<int>(at.x), static_cast<int>(at.y)};
  return pad_.part_at(look_.right_to_left() ? mirrored(point, pad_.size().width) : point);
}

int CalendarFace::release(POINT at) {
  const int part = part_at(at), pressed = pressed_;
  pressed_ = -1;
  return part == pressed ? part : -1;
}

int CalendarFace::selected_part() const {
  for (int part = MonthPad::kArrows; part < MonthPad::kParts; ++part)
    if (pad_.day(part) == pad_.date()) return part;
  return -1;
}

void CalendarFace::paint(HDC dc, bool focused) const {
  const Size size = pad_.size();
  fill_room(dc, {0, 0, size.width, size.height}, look_.colors().field);
  paint_heading(dc);
  paint_names(dc);
  for (int part = MonthPad::kArrows; part < MonthPad::kParts; ++part) paint_day(dc, part, focused);
}

void CalendarFace::paint_heading(HDC dc) const {
  for (int arrow = 0; arrow < MonthPad::kArrows; ++arrow) paint_arrow(dc, arrow);
  const LocaleData& locale = look_.locale();
  const auto month = static_cast<std::size_t>(pad_.date().month - 1);
  TextPaint how;
  how.font = look_.font(look_.scaled(kCalendarHeading), true);
  how.color = look_.colors().accent;
  how.centered = true;
  const RECT room = turned(pad_.month_room());
  const bool fits =
      measured_text(how.font, locale.month_names[month]).width <= room.right - room.left;
  paint_text(dc, room, fits ? locale.month_names[month] : locale.short_month_names[month], how,
             look_);
  paint_text(dc, turned(pad_.year_room()), digits_of(pad_.date().year), how, look_);
}

void CalendarFace::paint_arrow(HDC dc, int arrow) const {
  const RECT room = place(arrow);
  if (pressed_ == arrow) fill_room(dc, room, look_.colors().accent_tint);
  const bool forward = (arrow % 2 == 1) != look_.right_to_left();
  const LONG half = look_.scaled(4), depth = forward ? half / 2 : -half / 2;
  const LONG x = (room.left + room.right) / 2, y = (room.top + room.bottom) / 2;
  const POINT points[] = {{x - depth, y - half}, {x + depth, y}, {x - depth, y + half}};
  paint_strokes(dc, points, 3, look_.colors().accent, std::max(2, look_.scaled(2)));
}

void CalendarFace::paint_names(HDC dc) const {
  TextPaint how;
  how.font = look_.font(look_.scaled(kTextSize - 1), false);
  how.color = look_.colors().dim_text;
  how.centered = true;
  const int room = pad_.names_room(0).width - look_.scaled(2);
  const WeekNames names = names_within(look_.locale(), how.font, room);
  for (int column = 0; column < MonthPad::kColumns; ++column)
    paint_text(dc, turned(pad_.names_room(column)),
               names[static_cast<std::size_t>(pad_.weekday(column))], how, look_);
  const LONG line = std::max(1, look_.scaled(1)), below = pad_.names_room(0).bottom();
  fill_room(dc, {0, below - line, pad_.size().width, below}, look_.colors().line);
}

void CalendarFace::paint_day(HDC dc, int part, bool focused) const {
  const LookColors& colors = look_.colors();
  const MonthDayYear day = pad_.day(part);
  const int line = std::max(1, look_.scaled(1)), round = look_.scaled(3);
  const RECT box = shrunk(place(part), line, line);
  const bool selected = day == pad_.date();
  if (selected || pressed_ == part) {
    const Color ground = selected ? colors.accent : colors.accent_tint;
    paint_round_box(dc, box, ground, ground, line, round);
  }
  const RECT inner = shrunk(box, 2 * line, 2 * line);
  const Color ink = selected ? colors.accent_text : colors.accent;
  if (day == today_)
    paint_round_edge(dc, inner, ink, look_.scaled(1.5), round);
  else if (selected && focused)
    paint_round_edge(dc, inner, ink, line, round);
  TextPaint how;
  how.font = look_.font();
  how.centered = true;
  how.color = selected                         ? colors.accent_text
              : day.month != pad_.date().month ? colors.dim_text
                                               : colors.text;
  paint_text(dc, place(part), digits_of(day.day), how, look_);
}

AccessiblePart CalendarFace::accessible_self() {
  AccessiblePart self;
  self.name = name_;
  const Size size = client_size_of(shown_);
  self.place = place_on_screen(shown_, {0, 0, size.width, size.height});
  self.role = ROLE_SYSTEM_GROUPING;
  self.state = STATE_SYSTEM_FOCUSABLE;
  if (GetFocus() == owner_) self.state |= STATE_SYSTEM_FOCUSED;
  if (!IsWindowEnabled(owner_)) self.state |= STATE_SYSTEM_UNAVAILABLE;
  return self;
}

AccessiblePart CalendarFace::accessible_part(int part) {
  AccessiblePart told;
  told.name = pad_.name(part, look_.locale());
  told.place = place_on_screen(shown_, from_rect(place(part)));
  told.role = ROLE_SYSTEM_PUSHBUTTON;
  told.state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  if (part == selected_part()) told.state |= STATE_SYSTEM_SELECTED;
  if (part == selected_part() && GetFocus() == owner_) told.state |= STATE_SYSTEM_FOCUSED;
  told.action = u"Press";
  return told;
}

void CalendarFace::press_accessible(int part) {
  if (IsWindowEnabled(owner_)) PostMessageW(owner_, kPressPart, static_cast<WPARAM>(part), 0);
}

}  // namespace orvello
