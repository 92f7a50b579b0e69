#include "app/day_view.h"

#include <algorithm>
#include <utility>

#include "app/day_popups.h"
#include "app/own_messages.h"
#include "calendar/date_pictures.h"
#include "ports/messages.h"
#include "resources/dialog_templates.h"
#include "resources/ids.h"
#include "settings/profiles.h"
#include "settings/registry_access.h"
#include "store/wait_cursor.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr DayHeaderZone kZones[] = {DayHeaderZone::previous, DayHeaderZone::date,
                                    DayHeaderZone::next, DayHeaderZone::today,
                                    DayHeaderZone::style};

}  // namespace

void DayView::open(const RowKey& key) {
  close();
  opened_at_ = key;
  owned_ = c_.host.dialogs.open_modeless(day_view_dialog(c_.commands.language()), *this);
}

void DayView::close() {
  dialog_ = nullptr;
  owned_ = nullptr;
  stop_carrying();
  pointer_.let_go();
  pen_down_ = false;
}

void DayView::handle(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == Event::init) {
    dialog_ = &dialog;
    row_ = kNoRow;
    focused_zone_ = DayHeaderZone::none;
    pointer_.set_view(c_.state.layout.work.width, c_.state.dpi_x);
    {
      const WaitCursor waiting(c_.host.window);
      build_list();
    }
    stand_at(std::exchange(opened_at_, {}));
    tell_parts();
    focus_list();
  } else if (event.kind == Event::timer) {
    dialog.set_timer(event.control, 0);
    if (!c_.commands.is_free()) return;  // something opened above the list meanwhile
    if (event.control == kTimerMenu) act(pointer_.hold());
    if (event.control == kTimerNotes) open_notes(std::exchange(tapped_, {}));
  } else if (event.control == kControlDayHeader) {
    header_event(event);
  } else if (event.control == kControlDayList) {
    list_event(event);
  }
}

Day DayView::shown_day() const { return day_of(c_.state.current); }

// What was read of the day before is kept when it cannot be read now. Of another day there is
// nothing to keep, and the list says so: an empty one would mean that the day is free.
ReadOutcome DayView::read() {
  const auto items = c_.session.CalendarItems();
  DayAgenda agenda = full_agenda(items.get(), shown_day(), c_.settings, [this](TextView labels) {
    return profileAllowsCategory(c_.settings, labels);
  });
  ReadOutcome outcome = ReadOutcome::whole;
  if (!agenda.failed) {
    read_ = std::move(agenda);
    read_day_ = shown_day();
  } else if (read_day_ == shown_day()) {
    outcome = ReadOutcome::kept;
  } else {
    read_ = unreadable_agenda(load_string(StringId::unreadable, c_.commands.language()));
    read_day_ = std::nullopt;
    outcome = ReadOutcome::nothing;
  }
  c_.commands.note_read(outcome);
  return outcome;
}

void DayView::build_list() {
  read();
  show_list();
}

void DayView::show_list() {
  ReportList* list = dialog_ ? dialog_->report(kControlDayList) : nullptr;
  if (!list) return;
  built_day_ = shown_day();
  agenda_ = read_;
  CalendarDate now = 0;
  SystemTimeToVariantTime(c_.host.clock.local_time(), now);
  const DayListInput input{c_.settings, c_.state.layout, list->place(), now,
                           c_.commands.language()};
  ReportContent content = day_list_content(agenda_, input, c_.commands.measuring_canvas());
  times_width_ = content.columns[0].width;
  icons_x_ = times_width_ + content.columns[1].width / 2;
  list->set_content(std::move(content));
}

// Of the same day, the list stays where it was scrolled to and an appointment that is still there
// stays selected.
void DayView::rebuild() {
  if (!dialog_) return;
  read();
  renew_list();
}

void DayView::read_again() {
  if (dialog_ && read() == ReadOutcome::whole) renew_list();
}

void DayView::renew_list() {
  ReportList* list = dialog_ ? dialog_->report(kControlDayList) : nullptr;
  if (!list) return;
  const RowKey selected_before = selected();
  const int marker = row_;
  const bool same_day = built_day_ == shown_day();
  const int top = list->row_place(0).y;
  show_list();
  if (same_day) list->scroll_by(list->row_place(0).y - top);
  repaint_header();
  row_ = marker == kPasteTarget ? kPasteTarget : kNoRow;
  if (const int row = row_of(selected_before); row >= 0) select_row(row);
}

RowKey DayView::key_of(int row) const {
  if (row < 0 || row >= static_cast<int>(agenda_.rows.size())) return {};
  const DayRow& found = agenda_.rows[static_cast<std::size_t>(row)];
  return {std::max(found.oid, 0), found.start};
}

int DayView::row_of(const RowKey& key) const {
  int same_item = -1;
  for (int i = 0; key && i < static_cast<int>(agenda_.rows.size()); ++i) {
    const RowKey at = key_of(i);
    if (at == key) return i;
    if (at.oid == key.oid && same_item < 0) same_item = i;
  }
  return same_item;
}

void DayView::repaint_header() {
  if (!dialog_) return;
  dialog_->drawn(kControlDayHeader)->invalidate();
  tell_parts();
}

void DayView::focus_list() {
  if (dialog_) dialog_->focus(kControlDayList);
}

DayHeaderInput DayView::header_input() const {
  return day_header_input(c_.settings, c_.state.layout, c_.state.current);
}

void DayView::tell_parts() {
  const DayHeaderInput input = header_input();
  header_ =
      lay_out_day_header(input, c_.state.layout, c_.today_picture, c_.commands.measuring_canvas());
  const Language language = c_.commands.language();
  const auto part = [this](Text name, DayHeaderZone zone) {
    return AccessibleCell{std::move(name), zone_place(header_, zone), focused_zone_ == zone};
  };
  const Text number = input.day_number.empty() ? Text() : u", " + input.day_number;
  std::vector<AccessibleCell> parts = {
      part(load_string(StringId::day_before, language), DayHeaderZone::previous),
      part(input.date + number, DayHeaderZone::date),
      part(load_string(StringId::day_after, language), DayHeaderZone::next),
      part(load_string(StringId::today, language), DayHeaderZone::today),
      part(load_string(StringId::row_colors, language), DayHeaderZone::style)};
  std::erase_if(parts, [](const AccessibleCell& one) { return one.place.empty(); });
  dialog_->drawn(kControlDayHeader)->set_parts(parts);
}

void DayView::paint_header(const DialogEvent& event) {
  draw_day_header(*event.canvas, header_input(), header_, c_.state.layout, c_.settings.item_colors,
                  c_.today_picture, focused_zone_);
}

void DayView::move_header_focus(int step) {
  std::vector<DayHeaderZone> zones;
  for (const DayHeaderZone zone : kZones)
    if (!zone_place(header_, zone).empty()) zones.push_back(zone);
  const auto at = std::find(zones.begin(), zones.end(), focused_zone_) - zones.begin();
  const auto last = static_cast<std::ptrdiff_t>(zones.size()) - 1;
  focused_zone_ = zones[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(at + step, 0, last))];
  repaint_header();
}

void DayView::header_event(const DialogEvent& event) {
  switch (event.kind) {
    case Event::paint:
      return paint_header(event);
    case Event::pointer_down:
    case Event::double_tap:
      closed_ = {};
      pressed_zone_ = hit_day_header(header_, event.point);
      focused_zone_ = DayHeaderZone::none;  // a pen needs no frame
      repaint_header();
      break;
    case Event::pointer_up: {
      const DayHeaderZone pressed = std::exchange(pressed_zone_, DayHeaderZone::none);
      if (pressed == hit_day_header(header_, event.point)) use_zone(pressed);
      focus_list();  // where the keys are wanted next
      break;
    }
    case Event::wheel:
      return turn(-event.notches);
    case Event::focus_gained:
      focused_zone_ = DayHeaderZone::date;
      repaint_header();
      break;
    case Event::focus_lost:
      focused_zone_ = DayHeaderZone::none;
      repaint_header();
      break;
    case Event::key:
      if (event.key == kKeyLeft) return move_header_focus(-1);
      if (event.key == kKeyRight) return move_header_focus(1);
      if (event.key == kKeyDown) return focus_list();
      if (event.key == kKeyReturn || event.key == kKeySpace) return use_zone(focused_zone_);
      command_key(event);
      break;
    default:
      break;
  }
}

void DayView::use_zone(DayHeaderZone zone) {
  if (zone == DayHeaderZone::previous) turn(-1);
  if (zone == DayHeaderZone::next) turn(1);
  if (zone == DayHeaderZone::date) choose_date();
  if (zone == DayHeaderZone::today) go_to_today();
  if (zone == DayHeaderZone::style) next_color_style();
}

Point DayView::below_date() const { return {header_.date.x, header_.strip.height}; }

// The commands of the menu, and their keys.
void DayView::run_command(std::uint32_t command, const RowKey& key) {
  c_.operations.run(command, key, {c_.state.current, below_date()});
  focus_list();
}

void DayView::choose_date() {
  if (const auto date = c_.operations.ask_date(c_.state.current, below_date())) show_date(*date);
  focus_list();
}

void DayView::go_to_today() {
  show_date(TodayTriple(c_.host.clock.local_time()));
  focus_list();
}

void DayView::next_color_style() {
  c_.settings.rowcolorindex = (c_.settings.rowcolorindex + 1) % 4;
  WriteNumberSetting(c_.host.registry, u"rowcolorindex", c_.settings.rowcolorindex);
  FlushSettings(c_.host.registry);
  rebuild();
}

}  // namespace orvello
