#include "views/month_paint.h"

#include "draw/readable.h"
#include "views/focus_frame.h"
#include "views/month_bars.h"
#include "views/month_cells.h"
#include "views/month_icons.h"
#include "views/month_lines.h"
#include "views/period_note.h"

namespace orvello {

namespace {

// Last, so that neither bars nor icons cover it.
void draw_month_focus(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas) {
  const MonthDayYear focused = snapshot.focus_visible ? snapshot.selected : MonthDayYear();
  for (const MonthCell& cell : layout.cells)
    if (cell.drawn && (cell.date == focused || cell.date == snapshot.marked))
      draw_focus_frame(cell.frame, 2 * layout.screen.scale, canvas);
}

// Below the grid where it ends early, else over the empty lower part of its last row.
void draw_month_note(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas) {
  if (snapshot.note.empty()) return;
  const ScreenLayout& screen = layout.screen;
  const Color ground = snapshot.color(ColorSlot::month_date_background_1);
  const int bottom = layout.cells.back().frame.bottom();
  Rect place{0, bottom, screen.work.width, screen.work.height - bottom};
  if (place.height < screen.fonts.normal9.height * 3 / 2) {
    const int below_number = layout.cells.back().number.bottom();
    place = {screen.left_margin + screen.scale, below_number,
             7 * screen.column_width - screen.scale, bottom - below_number - screen.scale};
    canvas.fill_rect(place, ground);
  }
  draw_note(snapshot.note, place, legible_on(ground, snapshot.color(ColorSlot::month_date_text)),
            screen, canvas);
}

}  // namespace

bool DrawMonthView(const MonthSnapshot& snapshot, Canvas& canvas,
                   const std::atomic<int>& draw_state, const std::function<void()>& progress) {
  const DrawControl control(draw_state, progress);
  const MonthLayout layout(snapshot);
  canvas.set_clip(std::nullopt);
  canvas.fill_rect({0, 0, layout.screen.work.width, layout.screen.work.height},
                   snapshot.color(ColorSlot::month_date_background_1));
  draw_month_header(snapshot, layout, canvas);
  const bool finished = DrawMonthGrid(snapshot, layout, canvas, control);
  if (finished) draw_month_note(snapshot, layout, canvas);
  if (finished) draw_month_focus(snapshot, layout, canvas);
  return finished;
}

bool DrawMonthGrid(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas,
                   const DrawControl& control) {
  draw_month_cells(snapshot, layout, canvas);
  draw_week_numbers(snapshot, layout, canvas);
  if (control.stopped()) return false;
  control.progress();
  MonthIcons icons(snapshot, layout, canvas);
  if (snapshot.showindicator == 1) {
    if (!MonthIndicatorPass(snapshot, layout, canvas, icons, control)) return false;
  } else if (snapshot.showholiday == 1) {
    if (!MonthIconPass(snapshot, layout, icons, control)) return false;
  }
  return draw_month_lines(snapshot, layout, icons, canvas, control);
}

}  // namespace orvello
