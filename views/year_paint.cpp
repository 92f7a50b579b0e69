#include "views/year_paint.h"

#include <algorithm>

#include "draw/fit_text.h"
#include "draw/readable.h"
#include "views/focus_frame.h"

namespace orvello {

namespace {

constexpr int kLargestNumber = 14;  // points

// One drawing's fonts, and the drawing itself.
class YearPainter {
 public:
  YearPainter(const YearSnapshot& snapshot, const YearLayout& layout, Canvas& canvas)
      : snapshot_(snapshot), layout_(layout), screen_(layout.screen), canvas_(canvas) {
    choose_names();
    choose_numbers();
  }

  void draw_header();
  void draw_month(int month);
  void draw_frame(const MonthDayYear& date);

 private:
  // Numbers of one size of cell: the font, and the room for two digits.
  struct Numbers {
    FontSpec plain, bold;
    int width = 0;
  };

  void choose_names();
  void choose_numbers();
  Numbers numbers_within(Size room);
  void draw_day(const MonthDayYear& date, bool shared);

  const YearSnapshot& snapshot_;
  const YearLayout& layout_;
  const ScreenLayout& screen_;
  Canvas& canvas_;
  const std::array<Text, 12>* names_ = nullptr;
  FontSpec name_font_;
  Numbers single_, double_;
};

// The largest size that leaves a gap above its letters, in points.
int points_within(int height, const ScreenLayout& screen) {
  constexpr int kLargest = 14, kSmallest = 5;
  int points = kLargest;
  while (points > kSmallest && font_height(points, screen.dpi_y) > height) --points;
  return points;
}

// Full names where all of them fit in a size that is easily read, else the abbreviations.
void YearPainter::choose_names() {
  const Rect& strip = layout_.months[0].strip;
  const int points = std::min(points_within(strip.height - 2 * screen_.scale, screen_), 11);
  const int room = strip.width - 4 * screen_.scale;
  const auto font_for = [&](const std::array<Text, 12>& names) {
    return fitting_font(canvas_, {names.begin(), names.end()}, room, points, 700, screen_);
  };
  names_ = &snapshot_.month_names;
  name_font_ = font_for(*names_);
  if (name_font_.height >= std::min(screen_.fonts.bold8.height, font_height(points, screen_.dpi_y)))
    return;
  names_ = &snapshot_.short_names;
  name_font_ = font_for(*names_);
}

// The largest size in which two bold digits fit; a step of a point is too coarse for cells this
// small.
YearPainter::Numbers YearPainter::numbers_within(Size room) {
  FontSpec bold = font_of(kLargestNumber, 700, screen_);
  bold.height = std::min(bold.height, std::max(room.height, font_height(5, screen_.dpi_y)));
  int width = canvas_.measure(u"30", bold).width;
  while (width > room.width && bold.height > font_height(5, screen_.dpi_y)) {
    --bold.height;
    width = canvas_.measure(u"30", bold).width;
  }
  return {{bold.height, 400, bold.cleartype}, bold, width};
}

void YearPainter::choose_numbers() {
  // Neighbours must not run together.
  const int width = layout_.cell.width - (screen_.scale + 1) / 2;
  single_ = numbers_within({width, layout_.cell.height - screen_.scale});
  double_ = numbers_within(
      {width, std::min(layout_.double_height - layout_.double_split, single_.bold.height)});
}

void YearPainter::draw_header() {
  const Color text = snapshot_.color(ColorSlot::year_header_text);
  canvas_.fill_rect(layout_.header, snapshot_.color(ColorSlot::year_header_background));
  canvas_.draw_text(format(u"%d", layout_.year), layout_.title,
                    {layout_.title_font, text, Align::center});
  const auto arrow = [&](const Image& image, const Rect& place) {
    canvas_.draw_image(image, {0, 0, image.width, image.height}, {place.x, place.y});
  };
  arrow(snapshot_.arrows.previous, layout_.previous_arrow);
  arrow(snapshot_.arrows.next, layout_.next_arrow);
}

void YearPainter::draw_month(int month) {
  const auto index = static_cast<std::size_t>(month - 1);
  const YearBlock& block = layout_.months[index];
  const int column = (month - 1) % layout_.block_columns;
  const int row = (month - 1) / layout_.block_columns;
  canvas_.fill_rect(block.box,
                    snapshot_.color((row + column) % 2 == 0 ? ColorSlot::year_month_background_1
                                                            : ColorSlot::year_month_background_2));
  canvas_.fill_rect(block.strip, snapshot_.color(ColorSlot::year_month_header_background));
  canvas_.draw_text(
      (*names_)[index], block.strip,
      {name_font_, snapshot_.color(ColorSlot::year_month_header_text), Align::center});

  int day = 1;
  for (const std::int32_t value : snapshot_.grid.months[index]) {
    if (value == 0) continue;
    const bool shared = value == kDoubleCell;
    draw_day({month, day, layout_.year}, shared);
    if (shared) draw_day({month, day + 7, layout_.year}, true);
    ++day;
  }
}

void YearPainter::draw_day(const MonthDayYear& date, bool shared) {
  const Rect place = cell_place(layout_, date);
  const bool marked = snapshot_.coloryearview == 1 && snapshot_.marks.at(date.month, date.day);
  Color color =
      snapshot_.color(marked ? ColorSlot::year_appointment_day_text : ColorSlot::year_day_text);
  if (date == snapshot_.today) {
    const Color ground = snapshot_.color(ColorSlot::year_today_background);
    canvas_.fill_rect(place, ground);
    color = readable_on(ground, color);
  }
  // Units stand below units: right-aligned within the room of two digits, which is centred. A
  // little lower than a line of text, as digits leave its lower part empty; and with room for the
  // part of the line that a low cell lacks.
  const Numbers& numbers = shared ? double_ : single_;
  const int drop = screen_.scale, spill = 2 * screen_.scale;
  const Rect box{place.x + (place.width - numbers.width + 1) / 2, place.y + drop - spill,
                 numbers.width, place.height + 2 * spill};
  canvas_.draw_text(format(u"%d", date.day), box,
                    {marked ? numbers.bold : numbers.plain, color, Align::right});
}

// Around the cell rather than inside it: the cell is filled by its number.
void YearPainter::draw_frame(const MonthDayYear& date) {
  const Rect place = cell_place(layout_, date);
  if (place.empty()) return;
  const Rect around = place.inset(-2 * screen_.scale, -2 * screen_.scale);
  const Rect work{0, 0, screen_.work.width, screen_.work.height};
  draw_focus_frame(intersection(around, work), screen_.scale, canvas_);
}

}  // namespace

bool DrawYearView(const YearSnapshot& snapshot, Canvas& canvas, const std::atomic<int>& draw_state,
                  const std::function<void()>& progress) {
  const DrawControl control(draw_state, progress);
  const YearLayout layout(snapshot);
  canvas.set_clip(std::nullopt);
  canvas.fill_rect({0, 0, layout.screen.work.width, layout.screen.work.height},
                   snapshot.color(ColorSlot::year_month_background_1));
  YearPainter painter(snapshot, layout, canvas);
  painter.draw_header();
  for (int month = 1; month <= 12; ++month) {
    if (control.stopped()) return false;
    painter.draw_month(month);
    control.progress();
  }
  if (snapshot.focus_visible) painter.draw_frame(snapshot.selected);
  painter.draw_frame(snapshot.marked);
  return !control.stopped();
}

}  // namespace orvello
