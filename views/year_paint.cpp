#include "views/year_paint.h"

#include <algorithm>

#include "draw/fit_text.h"
#include "draw/readable.h"
#include "views/focus_frame.h"
#include "views/period_note.h"

namespace orvello {

namespace {

constexpr int kLargestNumber = 14;  // points
constexpr int kQuiet = 104;         // of 256 parts towards the ground
constexpr double kWeekendContrast = 1.35, kFineContrast = 1.2;

// One drawing's fonts, and the drawing itself.
class YearPainter {
 public:
  YearPainter(const YearSnapshot& snapshot, const YearLayout& layout, Canvas& canvas)
      : snapshot_(snapshot), layout_(layout), screen_(layout.screen), canvas_(canvas) {
    choose_names();
    choose_letters();
    choose_numbers();
  }

  void draw_header();
  void draw_month(int month);
  void draw_frame(const MonthDayYear& date);
  void draw_note_line();

 private:
  // Numbers of one size of cell: the font, and the room for two digits.
  struct Numbers {
    FontSpec plain, bold;
    int width = 0;
  };

  void choose_names();
  void choose_letters();
  void choose_numbers();
  Numbers numbers_within(Size room);
  Color ground_of(int month) const;
  void draw_week(int month);
  Color day_color(const MonthDayYear& date, Color ground) const;
  void draw_day(const MonthDayYear& date, bool shared);

  const YearSnapshot& snapshot_;
  const YearLayout& layout_;
  const ScreenLayout& screen_;
  Canvas& canvas_;
  const std::array<Text, 12>* names_ = nullptr;
  FontSpec name_font_, letter_font_;
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

void YearPainter::choose_letters() {
  const std::vector<Text> letters(snapshot_.day_letters.begin(), snapshot_.day_letters.end());
  letter_font_ =
      fitting_font(canvas_, letters, layout_.cell.width - screen_.scale, 8, 400, screen_);
}

// The largest size in which two bold digits fit; a step of a point is too coarse for cells this
// small.
YearPainter::Numbers YearPainter::numbers_within(Size room) {
  FontSpec bold = font_of(kLargestNumber, 700, screen_);
  bold.height = std::min(bold.height, std::max(room.height, font_height(5, screen_.dpi_y)));
  const Text widest = local_digits(u"30", snapshot_.locale);
  int width = canvas_.measure(widest, bold).width;
  while (width > room.width && bold.height > font_height(5, screen_.dpi_y)) {
    --bold.height;
    width = canvas_.measure(widest, bold).width;
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
  draw_title(local_digits(format(u"%d", layout_.year), snapshot_.locale), layout_.title,
             snapshot_.today.year == layout_.year ? Image() : snapshot_.arrows.today, 12, text,
             screen_, canvas_);
  const auto arrow = [&](const Image& image, const Rect& place) {
    canvas_.draw_image(image, {0, 0, image.width, image.height}, {place.x, place.y});
  };
  arrow(snapshot_.arrows.previous, layout_.previous_arrow);
  arrow(snapshot_.arrows.next, layout_.next_arrow);
}

void YearPainter::draw_month(int month) {
  const auto index = static_cast<std::size_t>(month - 1);
  const YearBlock& block = layout_.months[index];
  canvas_.fill_rect(block.box, ground_of(month));
  canvas_.fill_rect(block.strip, snapshot_.color(ColorSlot::year_month_header_background));
  canvas_.draw_text(
      (*names_)[index], block.strip,
      {name_font_, snapshot_.color(ColorSlot::year_month_header_text), Align::center});

  draw_week(month);
  int day = 1;
  for (const std::int32_t value : snapshot_.grid.months[index]) {
    if (value == 0) continue;
    const bool shared = value == kDoubleCell;
    draw_day({month, day, layout_.year}, shared);
    if (shared) draw_day({month, day + 7, layout_.year}, true);
    ++day;
  }
}

Color YearPainter::ground_of(int month) const {
  const int column = (month - 1) % layout_.block_columns;
  const int row = (month - 1) / layout_.block_columns;
  return snapshot_.color((row + column) % 2 == 0 ? ColorSlot::year_month_background_1
                                                 : ColorSlot::year_month_background_2);
}

// The days' letters, and thin lines that set the weekend apart.
void YearPainter::draw_week(int month) {
  const YearBlock& block = layout_.months[static_cast<std::size_t>(month - 1)];
  const Color ground = ground_of(month), text = snapshot_.color(ColorSlot::year_day_text);
  const int bottom = block.grid.y + layout_.cell.height * (kYearRows - 1) + layout_.double_height;
  // Fine where numbers stand close to each other.
  const bool fine = layout_.names_height == 0;
  const Color line = visible_on(ground, ground, fine ? kFineContrast : kWeekendContrast);
  for (const int column : layout_.weekend_edges)
    canvas_.fill_rect({block.grid.x + column * layout_.cell.width, block.names.y,
                       fine ? 1 : screen_.scale, bottom - block.names.y},
                      line);
  if (layout_.names_height == 0) return;
  const TextStyle style{letter_font_, legible_on(ground, mixed(text, ground, kQuiet)),
                        Align::center};
  for (int column = 0; column < kYearColumns; ++column)
    canvas_.draw_text(snapshot_.day_letters[static_cast<std::size_t>(column)],
                      {block.grid.x + column * layout_.cell.width, block.names.y,
                       layout_.cell.width, layout_.names_height},
                      style);
}

// Where days are marked the others step back, so that the two are told apart by more than a colour,
// however many are marked.
Color YearPainter::day_color(const MonthDayYear& date, Color ground) const {
  const Color plain = snapshot_.color(ColorSlot::year_day_text);
  if (snapshot_.coloryearview != 1 || snapshot_.marks.none()) return plain;
  if (snapshot_.marks.at(date.month, date.day))
    return legible_on(ground, snapshot_.color(ColorSlot::year_appointment_day_text));
  if (date == snapshot_.today) return plain;
  return legible_on(ground, mixed(plain, ground, kQuiet));
}

void YearPainter::draw_day(const MonthDayYear& date, bool shared) {
  const Rect place = cell_place(layout_, date);
  const bool is_today = date == snapshot_.today;
  const Color ground =
      is_today ? snapshot_.color(ColorSlot::year_today_background) : ground_of(date.month);
  Color color = day_color(date, ground);
  if (is_today) {
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
  const Text number = local_digits(format(u"%d", date.day), snapshot_.locale);
  const FontSpec& font = is_today ? numbers.bold : numbers.plain;
  canvas_.draw_text(number, box, {font, color, Align::right});
  // A short line under the number of a day that has many appointments, where the cell has room.
  const int height = screen_.scale;
  if (snapshot_.coloryearview != 1 || !snapshot_.marks.busy(date.month, date.day)) return;
  if (place.height < font.height + 12 * height) return;
  const int width = canvas_.measure(number, font).width;
  canvas_.fill_rect({box.right() - width, place.bottom() - 4 * height, width, height}, color);
}

void YearPainter::draw_note_line() {
  if (layout_.note.empty()) return;
  const Color ground = snapshot_.color(ColorSlot::year_month_background_1);
  canvas_.fill_rect(layout_.note, ground);
  draw_note(snapshot_.note, layout_.note,
            legible_on(ground, snapshot_.color(ColorSlot::year_day_text)), screen_, canvas_);
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
  painter.draw_note_line();
  if (snapshot.focus_visible) painter.draw_frame(snapshot.selected);
  painter.draw_frame(snapshot.marked);
  return !control.stopped();
}

}  // namespace orvello
