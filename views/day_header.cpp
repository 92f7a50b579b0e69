#include "views/day_header.h"

#include <algorithm>
#include <cmath>

#include "calendar/date_pictures.h"

namespace orvello {
namespace {

constexpr std::size_t kLongestDate = 150;
constexpr int kLargestNumber = 13;                // points; never higher than the strip
constexpr int kArrowWidth = 27, kLeastDate = 80;  // at 96 dpi
constexpr int kArrowPicture = 9;                  // at single density
constexpr Color kStyleSquares[4] = {rgb(255, 0, 0), rgb(0, 170, 0), rgb(255, 255, 0),
                                    rgb(0, 255, 255)};

// Four squares, two by two, with a hairline of the strip between them.
void draw_style_button(Canvas& canvas, const Rect& box, int gap) {
  const int side = (box.width - gap) / 2;
  for (int i = 0; i < 4; ++i) {
    const int x = box.x + (i % 2) * (side + gap), y = box.y + (i / 2) * (side + gap);
    canvas.fill_rect({x, y, side, side}, kStyleSquares[i]);
  }
}

int widest_of(Canvas& canvas, const std::vector<Text>& texts, const FontSpec& font) {
  int width = 0;
  for (const Text& text : texts) width = std::max(width, canvas.measure(text, font).width);
  return width;
}

struct Heading {
  const Text& date;
  const std::vector<Text>& months;
  const std::vector<Text>& weekdays;
};

// Letters of these fonts do not move closer to their neighbours: what the widest month and the
// widest weekday have more than others adds up.
int longest_width(Canvas& canvas, const Heading& heading, const FontSpec& font) {
  const int own = canvas.measure(heading.date, font).width;
  if (heading.months.empty() || heading.weekdays.empty()) return own;
  const int month = widest_of(canvas, heading.months, font);
  // The first of the weekdays is the one that the months have.
  const int usual_day = canvas.measure(heading.weekdays.front(), font).width;
  const int day = widest_of(canvas, heading.weekdays, font);
  return std::max(own, month + day - usual_day);
}

// The largest size in points that it fits in.
int fitting_points(Canvas& canvas, const Heading& heading, int width, const ScreenLayout& screen) {
  constexpr int kLargest = 10, kSmallest = 5;
  int points = kLargest;
  while (points > kSmallest && longest_width(canvas, heading, font_of(points, 700, screen)) > width)
    --points;
  return points;
}

void draw_date(Canvas& canvas, const DayHeaderInput& input, const Rect& place,
               const ScreenLayout& screen, Color color) {
  constexpr int kLegible = 8;
  const Heading whole{input.date, input.months, input.weekdays};
  const Heading brief{input.short_date, input.short_months, input.short_weekdays};
  int points = fitting_points(canvas, whole, place.width, screen);
  const bool in_short = points < kLegible && !input.short_date.empty();
  if (in_short) points = fitting_points(canvas, brief, place.width, screen);
  canvas.draw_text(in_short ? input.short_date : input.date, place,
                   {font_of(points, 700, screen), color});
}

// A date of each month that is a Sunday, and of each weekday, all with two digits.
void add_samples(TextView picture, const LocaleData& locale, std::vector<Text>& months,
                 std::vector<Text>& weekdays) {
  constexpr int kYear = 2028, kFirst = 20, kMay = 5;
  const auto sample = [&](int month, int weekday) {
    const int first = civil_of(day_of(kYear, month, kFirst)).day_of_week;
    const Day day = day_of(kYear, month, kFirst) + (weekday - first + 7) % 7;
    return FormatDatePicture(picture, civil_of(day), locale);
  };
  for (int month = 1; month <= 12; ++month) months.push_back(sample(month, 0));
  for (int weekday = 0; weekday < 7; ++weekday) weekdays.push_back(sample(kMay, weekday));
}

// Short names in place of whole ones.
Text short_picture(Text picture) {
  for (const TextView whole : {TextView(u"dddd"), TextView(u"MMMM")})
    if (const std::size_t at = picture.find(whole); at != Text::npos) picture.erase(at, 1);
  return picture;
}

}  // namespace

DayHeaderInput day_header_input(const SettingsRecord& settings, const ScreenLayout& screen,
                                const MonthDayYear& date) {
  const SystemTime day = civil_of(day_of(date));
  Text picture;
  LongDatePicture(settings.dayviewheaderformat, picture);
  DayHeaderInput input;
  input.date = cut(FormatDatePicture(picture, day, settings.locale), kLongestDate);
  add_samples(picture, settings.locale, input.months, input.weekdays);
  const Text brief = short_picture(picture);
  input.short_date = cut(FormatDatePicture(brief, day, settings.locale), kLongestDate);
  add_samples(brief, settings.locale, input.short_months, input.short_weekdays);
  if (settings.juliandate == 1)
    input.day_number = local_digits(JulianDateText(day), settings.locale);
  input.day_number_font = font_of(std::min(settings.dvfontsize, kLargestNumber), 700, screen);
  const auto ground = settings.color(ColorSlot::day_header_background);
  input.arrows = turn_arrows(screen, settings.locale, ground);
  return input;
}

DayHeaderLayout lay_out_day_header(const ScreenLayout& screen, int width, Size today_picture,
                                   int day_number_width) {
  const int bold10 = screen.fonts.bold10.height;
  const int height = static_cast<int>(1.5 * bold10);
  const int square = static_cast<int>(1.5 * bold10 * 0.625);
  const int beside = static_cast<int>(square * 1.5);
  const int margin = width / 25, b = today_picture.width;
  DayHeaderLayout layout;
  layout.strip = {0, 0, width, height};
  layout.left = width - margin - beside - b - b / 2;
  layout.right = layout.left + 2 * b;
  layout.today_picture = {layout.left + b / 2, (height - today_picture.height) / 2, b,
                          today_picture.height};
  layout.style_button = {width - margin - square, (height - square) / 2, square, square};
  const int indent = bold10 / 4;
  int begin = 0, end = layout.left;
  if (day_number_width > 0) {
    layout.number = {end - day_number_width, 0, day_number_width, height};
    end = layout.number.x - indent;
  }
  const int arrow = kArrowWidth * screen.dpi_x / 96;
  if (end - 2 * arrow - indent >= kLeastDate * screen.dpi_x / 96) {
    layout.previous = {0, 0, arrow, height};
    layout.next = {end - arrow, 0, arrow, height};
    // The pictures stand at the outer edges: the date may reach into the places that are tapped.
    begin = indent + kArrowPicture * screen.scale;
    end -= begin + indent;
  }
  layout.date = {begin + indent, 0, end - begin - indent, height};
  return layout;
}

DayHeaderLayout lay_out_day_header(const DayHeaderInput& input, const ScreenLayout& screen,
                                   const Image& today_picture, Canvas& measure) {
  int number_width = 0;
  if (!input.day_number.empty())
    number_width = measure.measure(input.day_number, input.day_number_font).width + screen.scale;
  return lay_out_day_header(screen, screen.work.width, {today_picture.width, today_picture.height},
                            number_width);
}

DayHeaderZone hit_day_header(const DayHeaderLayout& layout, Point point) {
  if (!layout.strip.contains(point)) return DayHeaderZone::none;
  if (layout.previous.contains(point)) return DayHeaderZone::previous;
  if (layout.next.contains(point)) return DayHeaderZone::next;
  if (point.x < layout.left) return DayHeaderZone::date;
  if (point.x > layout.right) return DayHeaderZone::style;
  return point.x > layout.left && point.x < layout.right ? DayHeaderZone::today
                                                         : DayHeaderZone::none;
}

Rect zone_place(const DayHeaderLayout& layout, DayHeaderZone zone) {
  const int height = layout.strip.height;
  switch (zone) {
    case DayHeaderZone::previous:
      return layout.previous;
    case DayHeaderZone::next:
      return layout.next;
    case DayHeaderZone::date:
      return {layout.previous.right(), 0,
              (layout.next.empty() ? layout.left : layout.next.x) - layout.previous.right(),
              height};
    case DayHeaderZone::today:
      return {layout.left + 1, 0, layout.right - layout.left - 1, height};
    case DayHeaderZone::style:
      return {layout.right + 1, 0, layout.strip.width - layout.right - 1, height};
    case DayHeaderZone::none:
      break;
  }
  return {};
}

void draw_day_header(Canvas& canvas, const DayHeaderInput& input, const DayHeaderLayout& layout,
                     const ScreenLayout& screen, const ItemColors& colors, const Image& today,
                     DayHeaderZone focused) {
  const Color text = colors[static_cast<std::size_t>(ColorSlot::day_header_text)];
  canvas.fill_rect(layout.strip,
                   colors[static_cast<std::size_t>(ColorSlot::day_header_background)]);
  draw_date(canvas, input, layout.date, screen, text);
  if (!input.day_number.empty()) {
    canvas.draw_text(input.day_number, layout.number, {input.day_number_font, text, Align::right});
  }
  const int indent = screen.fonts.bold10.height / 4;
  const auto draw_arrow = [&](const Image& arrow, const Rect& place, int x) {
    if (!place.empty())
      canvas.draw_image(arrow, {0, 0, arrow.width, arrow.height},
                        {x, place.center().y - arrow.height / 2});
  };
  const Image &previous = input.arrows.previous, &next = input.arrows.next;
  draw_arrow(previous, layout.previous, layout.previous.x + indent);
  draw_arrow(next, layout.next, layout.next.right() - indent - next.width);
  if (!today.empty())
    canvas.draw_image(today, {0, 0, today.width, today.height},
                      {layout.today_picture.x, layout.today_picture.y});
  draw_style_button(canvas, layout.style_button, screen.scale);
  if (focused != DayHeaderZone::none)
    canvas.frame_rect(zone_place(layout, focused), text, screen.scale);
}

}  // namespace orvello
