#include "views/month_lines.h"

#include <algorithm>

#include "calendar/date_text.h"
#include "draw/readable.h"
#include "draw/wrap_text.h"
#include "store/day_label.h"
#include "views/bar_colors.h"
#include "views/month_cells.h"

namespace orvello {
namespace {

// A line of a cell is one line, whatever the subject holds.
Text without_line_ends(Text text) {
  std::replace_if(
      text.begin(), text.end(), [](char16_t c) { return c < u' '; }, u' ');
  return text;
}

bool goes_above(const PeriodItem& a, bool all_day, CalendarDate start) {
  if (a.all_day != all_day) return a.all_day;
  return a.start < start;
}

// One drawing's fonts and widths, and the drawing of the cells' lines.
class LinePainter {
 public:
  LinePainter(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas)
      : snapshot_(snapshot),
        layout_(layout),
        band_(layout.lines),
        canvas_(canvas),
        colors_(snapshot),
        widths_(canvas, layout.lines.font) {}

  void draw_cell(std::size_t index, int icons);

 private:
  int room_beside(const MonthCell& cell, const Rect& line, int icons) const;
  int draw_more(int more, const Rect& line, int right, const TextStyle& style);
  void draw_line(const MonthLine& line, const MonthCell& cell, const Rect& place, int right,
                 TextStyle style);

  const MonthSnapshot& snapshot_;
  const MonthLayout& layout_;
  const LineBand& band_;
  Canvas& canvas_;
  BarColors colors_;
  CharacterWidths widths_;
};

// How far to the right a line may go.
int LinePainter::room_beside(const MonthCell& cell, const Rect& line, int icons) const {
  int right = line.right();
  for (int n = 1; n <= icons; ++n) {
    const Point place = month_icon_place(layout_, cell.row, cell.column, n);
    if (place.y < line.bottom() && place.y + layout_.icon.height > line.y)
      right = std::min(right, place.x - 2 * layout_.screen.scale);
  }
  return right;
}

// "+3" at the line's end; what is left of it.
int LinePainter::draw_more(int more, const Rect& line, int right, const TextStyle& style) {
  const Text text = local_digits(format(u"+%d", more), snapshot_.locale);
  const int width = canvas_.measure(text, style.font).width;
  TextStyle at_end = style;
  at_end.align = Align::right;
  canvas_.draw_text(text, {right - width, line.y, width, line.height}, at_end);
  return right - width - 2 * layout_.screen.scale;
}

void LinePainter::draw_line(const MonthLine& line, const MonthCell& cell, const Rect& place,
                            int right, TextStyle style) {
  const int scale = layout_.screen.scale;
  const Color ground = cell_background(snapshot_, cell);
  canvas_.fill_rect({place.x, place.y + scale, band_.mark_width, place.height - 2 * scale},
                    visible_on(ground, colors_.of(line.categories, line.busy_status)));
  int left = cell.box.x + band_.text_left;
  // Beside icons and a "+3" the subject is more important.
  const int time_width =
      line.time.empty() ? 0 : canvas_.measure(line.time, style.font).width + style.font.height / 3;
  if (band_.times && time_width > 0 && right - left - time_width >= 3 * style.font.height) {
    canvas_.draw_text(line.time, {left, place.y, time_width, place.height}, style);
    left += time_width;
  }
  const Rect box{left, place.y, right - left, place.height};
  const bool fits = widths_.surely_fits(line.subject, box.width);
  const Text shown = fits ? line.subject : shortened(canvas_, line.subject, style.font, box.width);
  canvas_.draw_text(shown, box, style);
}

void LinePainter::draw_cell(std::size_t index, int icons) {
  const MonthCellLines& lines = snapshot_.lines[index];
  const MonthCell& cell = layout_.cells[index];
  const Color chosen =
      snapshot_.color(cell.off_month ? ColorSlot::month_off_text : ColorSlot::month_date_text);
  const TextStyle style{band_.font, legible_on(cell_background(snapshot_, cell), chosen)};
  for (std::size_t n = 0; n < lines.first.size(); ++n) {
    const Rect place = month_line_place(layout_, cell, static_cast<int>(n));
    int right = room_beside(cell, place, icons);
    if (lines.more > 0 && n + 1 == lines.first.size())
      right = draw_more(lines.more, place, right, style);
    draw_line(lines.first[n], cell, place, right, style);
  }
}

}  // namespace

MonthLineCollector::MonthLineCollector(const MonthLayout& layout, const SettingsRecord& settings)
    : layout_(layout),
      clock24_(settings.timeformat != 0),
      show_free_(settings.showfree == 1),
      locale_(settings.locale),
      cells_(layout.cells.size()) {}

void MonthLineCollector::add(const StoreItem& item, const PeriodItem& kept) {
  if (!kept.passes_profile || layout_.lines.count == 0) return;
  if (kept.all_day && kept.busy_status == BusyStatus::free && !show_free_) return;
  const CellSpan span = cells_of(kept, layout_.grid);
  for (int cell = span.first; cell <= span.last; ++cell) {
    if (!layout_.cells[static_cast<std::size_t>(cell)].drawn) continue;
    const Day day = whole_day(layout_.grid.grid_start) + cell;
    const bool starts_here = whole_day(kept.start) == day;
    // What ends at midnight takes no time of the day that begins then.
    if (!starts_here && !kept.all_day && kept.end <= joined(day, 0)) continue;
    add_to(static_cast<std::size_t>(cell), item, kept, starts_here);
  }
}

void MonthLineCollector::add_to(std::size_t cell, const StoreItem& item, const PeriodItem& kept,
                                bool starts_here) {
  MonthCellLines& lines = cells_[cell];
  const auto place = std::find_if(
      lines.first.begin(), lines.first.end(),
      [&](const MonthLine& line) { return goes_above(kept, line.all_day, line.start); });
  const bool full = static_cast<int>(lines.first.size()) == layout_.lines.count;
  if (full) ++lines.more;
  if (full && place == lines.first.end()) return;
  MonthLine line;
  line.key = {item.summary->oid, item.many == 0 ? item.start : kNoDate};
  line.start = kept.start;
  line.all_day = kept.all_day;
  line.categories = kept.categories;
  line.busy_status = kept.busy_status;
  if (starts_here && !kept.all_day) {
    SystemTime time;
    VariantTimeToSystemTime(kept.start, time);
    line.time = local_digits(AppointmentTimeText(time.hour, time.minute, clock24_), locale_);
  }
  line.subject = without_line_ends(shown_subject(item));
  lines.first.insert(place, std::move(line));
  if (full) lines.first.pop_back();
}

MonthLines MonthLineCollector::lines() && { return std::move(cells_); }

const MonthLine* month_line_at(const MonthSnapshot& snapshot, const MonthLayout& layout,
                               Point point) {
  for (std::size_t cell = 0; cell < snapshot.lines.size(); ++cell) {
    if (!layout.cells[cell].box.contains(point)) continue;
    const std::vector<MonthLine>& lines = snapshot.lines[cell].first;
    for (std::size_t n = 0; n < lines.size(); ++n)
      if (month_line_place(layout, layout.cells[cell], static_cast<int>(n)).contains(point))
        return &lines[n];
  }
  return nullptr;
}

bool draw_month_lines(const MonthSnapshot& snapshot, const MonthLayout& layout,
                      const MonthIcons& icons, Canvas& canvas, const DrawControl& control) {
  if (snapshot.lines.empty()) return true;
  LinePainter painter(snapshot, layout, canvas);
  for (std::size_t cell = 0; cell < snapshot.lines.size(); ++cell) {
    if (control.stopped()) return false;
    painter.draw_cell(cell, icons.count(static_cast<int>(cell)));
    control.progress();
  }
  return true;
}

}  // namespace orvello
