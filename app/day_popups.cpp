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

int DayPopupProcedure::header_height() const { return kFinger * input_.screen.dpi_y / 96; }

// On a large window a busy day needs less scrolling.
int DayPopupProcedure::most_height() const {
  const int height = input_.screen.work.height;
  return std::min(height * 3 / 4, std::max(260 * input_.screen.dpi_y / 96, height / 2));
}

Rect DayPopupProcedure::place(const Rect& beside) const {
  const Size work = input_.screen.work;
  const int unit = input_.screen.dpi_y;
  const int gap = kPadding * unit / 96;
  // As wide as its rows are, within reason.
  const int width = std::min(
      work.width - 2 * gap,
      std::clamp(natural_popup_width(list(), input_.measure), 200 * unit / 96, 420 * unit / 96));
  const int height = std::min(most_height(), header_height() + rows_height(content(width)));
  const int x = std::clamp(beside.center().x - width / 2, gap, work.width - gap - width);
  // Below the cell where there is room, else above it, else as low as the window allows.
  int y = beside.bottom() + gap;
  if (y + height > work.height - gap) y = beside.y - gap - height;
  if (y < gap) y = work.height - gap - height;
  return {x, y, width, height};
}

ReportContent DayPopupProcedure::content(int width) const {
  return day_popup_content(list(), {width, most_height() - header_height()}, input_.measure);
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
