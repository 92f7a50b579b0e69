#include <algorithm>

#include "draw/fit_text.h"
#include "views/month_paint.h"

namespace orvello {

namespace {

constexpr int kNamePoints = 9, kLegibleNamePoints = 7, kLeastNamePoints = 6;
constexpr Color kUnderline = 0x0000FFFF;  // yellow, in the order blue, green, red

struct FittedNames {
  std::vector<Text> names;
  FontSpec font;
};

// Of choices by what is best to read, the first that fits in a font of at least this size, else the
// last.
template <typename Names>
FittedNames names_within(const std::vector<Names>& choices, int width, int least_points,
                         const ScreenLayout& screen, Canvas& canvas) {
  const int least = font_of(least_points, 400, screen).height;
  FittedNames fitted;
  for (const Names& choice : choices) {
    fitted.names.assign(choice.begin(), choice.end());
    fitted.font = fitting_font(canvas, fitted.names, width, kNamePoints, 400, screen);
    const auto fits = [&](const Text& name) {
      return canvas.measure(name, fitted.font).width <= width;
    };
    if (fitted.font.height > least) break;
    if (fitted.font.height == least && std::all_of(choice.begin(), choice.end(), fits)) break;
  }
  return fitted;
}

void draw_strip(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas) {
  const ScreenLayout& screen = layout.screen;
  canvas.fill_rect(layout.strip, snapshot.color(ColorSlot::month_bar_background));
  const int room = screen.work.width / 12 - 3 * screen.scale;
  const auto [names, font] =
      names_within(snapshot.strip_names, room, kLeastNamePoints, screen, canvas);
  const TextStyle style{font, snapshot.color(ColorSlot::month_bar_text), Align::center};
  for (int m = 0; m < 12; ++m) canvas.draw_text(names[m], layout.months[m], style);

  const Rect& shown = layout.months[layout.month - 1];
  const int width = canvas.measure(names[layout.month - 1], font).width;
  const int left = shown.x + (shown.width - width) / 2;
  canvas.polyline({{left, layout.underline_y}, {left + width, layout.underline_y}}, kUnderline,
                  screen.line_width);
}

void draw_arrow(const Image& arrow, int x, const Rect& band, Canvas& canvas) {
  const int y = band.y + (band.height - arrow.height) / 2;
  canvas.draw_image(arrow, {0, 0, arrow.width, arrow.height}, {x, y});
}

// Year and arrow, arrow pointing outwards and standing towards the title: "2025 <   > 2027".
void draw_title_band(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas) {
  const ScreenLayout& screen = layout.screen;
  const Color color = snapshot.color(ColorSlot::month_header_text);
  canvas.fill_rect(layout.title_band, snapshot.color(ColorSlot::month_header_background));

  const auto number = [&](int year) { return local_digits(format(u"%d", year), snapshot.locale); };
  const std::vector<Text> years = {number(layout.year - 1), number(layout.year + 1)};
  const FontSpec font = fitting_font(canvas, years, layout.previous_year.width, 9, 400, screen);
  canvas.draw_text(years[0], layout.previous_year, {font, color, Align::left});
  canvas.draw_text(years[1], layout.next_year, {font, color, Align::right});

  const int gap = 3 * screen.scale;
  const int previous_end = layout.previous_year.x + canvas.measure(years[0], font).width;
  draw_arrow(snapshot.arrows.previous, previous_end + gap, layout.title_band, canvas);
  const int next_start = layout.next_year.right() - canvas.measure(years[1], font).width;
  draw_arrow(snapshot.arrows.next, next_start - gap - snapshot.arrows.next.width, layout.title_band,
             canvas);

  const Text title = format(u"%s %s", snapshot.title_name, number(layout.year));
  const MonthDayYear& today = snapshot.today;
  const bool here = today.month == layout.month && today.year == layout.year;
  draw_title(title, layout.title, here ? Image() : snapshot.arrows.today, 11, color, screen,
             canvas);
}

void draw_day_names(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas) {
  const ScreenLayout& screen = layout.screen;
  const int room = screen.column_width - 3 * screen.scale;
  const auto [names, font] =
      names_within(snapshot.day_names, room, kLegibleNamePoints, screen, canvas);
  const TextStyle style{font, snapshot.color(ColorSlot::month_day_header_text), Align::center};
  for (int column = 0; column < 7; ++column) {
    const Rect& box = layout.day_names[column];
    canvas.fill_rect(box, snapshot.color(ColorSlot::month_day_header_background));
    canvas.frame_rect(box, snapshot.color(ColorSlot::month_line), screen.scale);
    // Raised a little: the grid's first line covers the row's last pixels, not the letters.
    const int raise = screen.scale;
    canvas.draw_text(names[column], {box.x, box.y - raise, box.width, box.height + raise}, style);
  }
}

}  // namespace

void draw_month_header(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas) {
  draw_strip(snapshot, layout, canvas);
  draw_title_band(snapshot, layout, canvas);
  draw_day_names(snapshot, layout, canvas);
}

}  // namespace orvello
