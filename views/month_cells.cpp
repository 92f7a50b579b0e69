#include "views/month_cells.h"

#include "draw/readable.h"

namespace orvello {

namespace {

bool is_weekend(int column, int firstdayofweek) {
  return firstdayofweek != 0 ? column >= 5 : column == 0 || column == 6;
}

// With coloroffdays the days of the weekend stand out in the week numbers' colour.
Color chosen_number_color(const MonthSnapshot& snapshot, const MonthCell& cell) {
  if (cell.off_month) return snapshot.color(ColorSlot::month_off_text);
  const bool day_off = is_weekend(cell.column, snapshot.layout.firstdayofweek);
  return snapshot.color(snapshot.coloroffdays == 1 && day_off ? ColorSlot::month_week_number_text
                                                              : ColorSlot::month_date_text);
}

// Today's ground is a strong one, which not every text was chosen for.
Color on_cell(const MonthSnapshot& snapshot, const MonthCell& cell, Color text) {
  return cell.date == snapshot.today ? readable_on(cell_background(snapshot, cell), text) : text;
}

void draw_number(const MonthSnapshot& snapshot, const MonthLayout& layout, const MonthCell& cell,
                 Canvas& canvas) {
  const Color color = on_cell(snapshot, cell, chosen_number_color(snapshot, cell));
  canvas.draw_text(local_digits(format(u"%d", cell.date.day), snapshot.locale), cell.number,
                   {layout.number_font, color, Align::right});
}

}  // namespace

Color cell_background(const MonthSnapshot& snapshot, const MonthCell& cell) {
  if (cell.date == snapshot.today) return snapshot.color(ColorSlot::month_today_background);
  if (cell.off_month) return snapshot.color(ColorSlot::month_off_background);
  const bool second = snapshot.calendarcolorstyle == 1
                          ? is_weekend(cell.column, snapshot.layout.firstdayofweek)
                          : cell.row % 2 == 1;
  return snapshot.color(second ? ColorSlot::month_date_background_2
                               : ColorSlot::month_date_background_1);
}

void draw_month_cells(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas) {
  const Color line = snapshot.color(ColorSlot::month_line);
  for (const MonthCell& cell : layout.cells) {
    if (!cell.drawn) continue;
    canvas.fill_rect(cell.frame, cell_background(snapshot, cell));
    canvas.frame_rect(cell.frame, line, layout.screen.scale);
    draw_number(snapshot, layout, cell, canvas);
  }
}

void draw_week_numbers(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas) {
  if (snapshot.weeks.weeknumberformat == 0) return;
  TextStyle style{layout.week_number_font, {}, Align::left};
  for (int row = 0; row < layout.grid.rows; ++row) {
    const MonthCell& first = layout.cells[static_cast<std::size_t>(row) * 7];
    style.color = on_cell(snapshot, first, snapshot.color(ColorSlot::month_week_number_text));
    const int number = row_week_number(row, layout.month, layout.year, snapshot.weeks);
    canvas.draw_text(local_digits(format(u"%d", number), snapshot.locale),
                     layout.week_numbers[static_cast<std::size_t>(row)], style);
  }
}

Rect drawn_number_box(const MonthSnapshot& snapshot, const MonthLayout& layout,
                      const MonthCell& cell, Canvas& canvas) {
  const Text number = local_digits(format(u"%d", cell.date.day), snapshot.locale);
  const int width = canvas.measure(number, layout.number_font).width;
  return {cell.number.right() - width, cell.box.y, width, layout.number_font.height};
}

}  // namespace orvello
