#include "app/day_popups.h"

#include <algorithm>

#include "draw/fit_text.h"
#include "draw/readable.h"
#include "draw/report_paint.h"
#include "draw/wrap_text.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "store/item_operations.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kPadding = 4, kFinger = 27;  // at 96 dpi

}  // namespace

void NotesProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      dialog.drawn(kControlNotes)
          ->set_parts({{spoken_, {0, 0, bubble_.place.width, bubble_.place.height}, true}});
      dialog.focus(kControlNotes);
      break;
    case Event::paint:
      draw_notes_bubble_at({}, *event.canvas, bubble_, screen_, colors_);
      break;
    case Event::focus_lost:
    case Event::pointer_up:
      if (!hold_) dialog.close(event.kind == Event::focus_lost ? kPopupLeft : kPopupClosed);
      hold_ = false;
      break;
    case Event::context_menu:
    case Event::key:
    case Event::close:
      dialog.close(kPopupClosed);
      break;
    default:
      break;
  }
}

int DayPopupProcedure::row_height() const {
  const int font = font_of(input_.settings.dvfontsize, 400, input_.screen).height;
  return std::max(font * 13 / 10, 20 * input_.screen.dpi_y / 96);
}

int DayPopupProcedure::header_height() const { return kFinger * input_.screen.dpi_y / 96; }

Rect DayPopupProcedure::place(const Rect& beside) const {
  const Size work = input_.screen.work;
  const int unit = input_.screen.dpi_y;
  const int gap = kPadding * unit / 96;
  const int rows = static_cast<int>(input_.rows.size());
  // As wide as its rows are, within reason.
  const int width =
      std::min(work.width - 2 * gap, std::clamp(natural_width(), 200 * unit / 96, 420 * unit / 96));
  const int height = std::min(
      {work.height * 3 / 4, 260 * unit / 96, header_height() + rows * row_height() + 2 * gap});
  const int x = std::clamp(beside.center().x - width / 2, gap, work.width - gap - width);
  // Below the cell where there is room, else above it, else as low as the window allows.
  int y = beside.bottom() + gap;
  if (y + height > work.height - gap) y = beside.y - gap - height;
  if (y < gap) y = work.height - gap - height;
  return {x, y, width, height};
}

int DayPopupProcedure::time_width() const {
  const int points = input_.settings.dvfontsize;
  int width = 0;
  for (const CompactRow& row : input_.rows) {
    const FontSpec font = font_of(points, row.is_appointment() ? 400 : 700, input_.screen);
    width = std::max(width, input_.measure.measure(row.time, font).width);
  }
  return width + 2 * padding();
}

int DayPopupProcedure::natural_width() const {
  const FontSpec font = font_of(input_.settings.dvfontsize, 400, input_.screen);
  int width = 0;
  for (const CompactRow& row : input_.rows)
    width = std::max(width, input_.measure.measure(row.subject, font).width);
  constexpr int kScrollBar = 20;
  return time_width() + width + 2 * padding() + kScrollBar * input_.screen.dpi_x / 96;
}

int DayPopupProcedure::padding() const { return kPadding * input_.screen.dpi_x / 96; }

ReportContent DayPopupProcedure::content(int width) const {
  const SettingsRecord& settings = input_.settings;
  const auto color = [&](ColorSlot slot) { return settings.color(slot); };
  ReportContent content;
  content.font = font_of(settings.dvfontsize, 400, input_.screen);
  content.bold_font = font_of(settings.dvfontsize, 700, input_.screen);
  content.padding = padding();
  content.background = color(ColorSlot::popup_background);
  content.selected_background = color(ColorSlot::popup_header_background);
  content.selected_text =
      readable_on(content.selected_background, color(ColorSlot::popup_header_text));
  const int time = time_width();
  content.columns = {{time, Align::right}, {std::max(0, width - time), Align::left}};
  for (const CompactRow& row : input_.rows) {
    ReportRow shown;
    shown.cells = {row.time, row.subject};
    shown.height = row_height();
    shown.background = content.background;
    shown.text = readable_on(content.background, color(ColorSlot::popup_text));
    shown.bold = !row.is_appointment();
    content.rows.push_back(std::move(shown));
  }
  return content;
}

void DayPopupProcedure::paint_header(Canvas& canvas, Size size) const {
  const SettingsRecord& settings = input_.settings;
  const Color background = settings.color(ColorSlot::popup_header_background);
  const Rect all{0, 0, size.width, size.height};
  const Rect text = all.inset(2 * kPadding * input_.screen.scale, 0);
  canvas.fill_rect(all, background);
  TextStyle style{fitting_font(canvas, {input_.date}, text.width, 10, 700, input_.screen),
                  readable_on(background, settings.color(ColorSlot::popup_header_text))};
  canvas.draw_text(input_.date, text, style);
}

void DayPopupProcedure::draw(Canvas& canvas) const {
  const Size size = canvas.size();
  const int top = header_height();
  paint_header(canvas, {size.width, top});
  draw_report(content(size.width), {0, top, size.width, size.height - top}, canvas);
}

void DateProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      dialog.date(kControlCalendar)->set_calendar(today_, monday_first_);
      dialog.date(kControlCalendar)->set_date(date_);
      dialog.focus(kControlCalendar);
      break;
    case Event::taken:
      date_ = dialog.date(kControlCalendar)->date();
      dialog.close(1);
      break;
    case Event::focus_lost:
      if (event.control == 0) dialog.close(0);
      break;
    case Event::close:
      dialog.close(0);
      break;
    default:
      break;
  }
}

void DeleteProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      dialog.set_checked(kControlOccurrence, true);
      dialog.enable(kControlSubject, false);  // it is only looked at: Return is for the buttons
      dialog.drawn(kControlSubject)->set_parts({{subject_, subject_place_, false}});
      dialog.focus(kControlCancel);
      break;
    case Event::paint: {
      const Rect all{0, 0, event.size.width, event.size.height};
      const Rect line = all.inset(2 * kPadding * screen_.scale, 0);
      const FontSpec font = screen_.fonts.bold10;
      event.canvas->fill_rect(all, dialogs_.colors().field);
      event.canvas->draw_text(shortened(*event.canvas, subject_, font, line.width), line,
                              {font, dialogs_.colors().accent});
      break;
    }
    case Event::command:
      if (event.control == kControlCancel) dialog.close(kCancel);
      if (event.control == kControlOk)
        dialog.close(dialog.checked(kControlSeries)      ? kDeleteSeries
                     : dialog.checked(kControlFollowing) ? kDeleteFollowing
                                                         : kDeleteOccurrence);
      break;
    case Event::close:
      dialog.close(kCancel);
      break;
    default:
      break;
  }
}

}  // namespace orvello
