#include "views/day_list.h"

#include <algorithm>

#include "draw/fit_text.h"
#include "draw/readable.h"
#include "views/row_colors.h"
#include "views/row_pictures.h"
#include "views/subject_rows.h"

namespace orvello {
namespace {

constexpr int kFilteredWidth = 140;  // of the first column when all rows were filtered away
constexpr int kFinger = 27;          // a row's least height at 96 dpi, a little over 7 mm
constexpr int kPadding = 3;
constexpr int kManyTogether = 1000;  // rows that are as low as any
constexpr int kBarMargin = 2;
constexpr int kAnyWidth = 1 << 20;  // of times that are not to be broken
// Where subjects get less of the list's width than this, times may be broken; below the least they
// always are.
constexpr int kNarrowSubject = 55, kLeastSubject = 35;  // percent
// Up to this part of the width a usual day's times are kept room for, so that subjects begin where
// they did the day before.
constexpr int kSteadyTime = 20;  // percent

int padding_of(const ScreenLayout& screen) { return kPadding * screen.scale; }

int picture_gap(const ScreenLayout& screen) { return screen.icon_width / 4; }

FontSpec list_font(const DayListInput& input, int weight) {
  return font_of(input.settings.dvfontsize, weight, input.screen);
}

// An appointment of one row is high enough for a finger; the rows of a longer one together, and
// they stand closer to each other than to others.
int row_height(const DayListInput& input, int rows_together) {
  const int line = list_font(input, 400).height * (rows_together > 1 ? 12 : 13) / 10;
  const int finger = kFinger * input.screen.dpi_y / 96;
  return std::max(line, (finger + rows_together - 1) / rows_together);
}

int rows_together(const std::vector<DayRow>& rows, std::size_t first) {
  std::size_t end = first + 1;
  while (end < rows.size() && rows[end].continues()) ++end;
  return static_cast<int>(end - first);
}

int total_height(const DayAgenda& agenda, const std::vector<SubjectPiece>& pieces,
                 const DayListInput& input) {
  int height = 0, together = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    ++together;
    const bool ends = i + 1 == pieces.size() ||
                      (pieces[i + 1].first && !agenda.rows[pieces[i + 1].row].continues());
    if (ends) height += together * row_height(input, together);
    if (ends) together = 0;
  }
  return height;
}

bool nothing_there(const DayAgenda& agenda) {
  return agenda.emptiness == DayAgenda::Emptiness::nothing_found;
}

Text shown_time(TextView time, const DayListInput& input) {
  return local_digits(time, input.settings.locale);
}

struct DayColumns {
  int time = 0;
  int icons = 0;
  int subject(const DayListInput& input) const {
    return std::max(0, input.place.size.width - time - icons);
  }
};

// Of the times, or of the wider of their two parts.
int widest_time(const DayAgenda& agenda, const DayListInput& input, bool in_parts,
                const FontSpec& font, Canvas& measure) {
  int width = 0;
  const auto add = [&](TextView text) {
    width = std::max(width, measure.measure(shown_time(text, input), font).width);
  };
  const Text* last = nullptr;  // most days repeat a few texts
  for (const DayRow& row : agenda.rows) {
    if (row.time.empty() || (last && *last == row.time)) continue;
    const TimeParts parts = in_parts ? time_parts(row.time) : TimeParts{row.time, {}};
    add(parts.start);
    if (!parts.end.empty()) add(parts.end);
    last = &row.time;
  }
  return width + 2 * padding_of(input.screen);
}

int steady_time_width(const DayListInput& input, Canvas& measure) {
  const Text usual = input.settings.timeformat == 1 ? u"20:00-20:00" : u"10:00p-10:00p";
  const int width = measure.measure(shown_time(usual, input), list_font(input, 400)).width +
                    2 * padding_of(input.screen);
  return width * 100 <= input.place.size.width * kSteadyTime ? width : 0;
}

int time_column_width(const DayAgenda& agenda, const DayListInput& input, bool in_parts,
                      Canvas& measure) {
  if (nothing_there(agenda)) return input.place.size.width - 2 * input.place.border;
  if (agenda.emptiness == DayAgenda::Emptiness::all_filtered)
    return std::max(kFilteredWidth * input.screen.scale,
                    widest_time(agenda, input, false, list_font(input, 700), measure));
  return std::max(steady_time_width(input, measure),
                  widest_time(agenda, input, in_parts, list_font(input, 400), measure));
}

// As the marks that were seen ask for, and never narrower than the pictures of a row.
int icon_column_width(const DayAgenda& agenda, const DayListInput& input, int pictures) {
  if (nothing_there(agenda)) return 0;
  const int unit = input.screen.icon_width;
  int width = 0;
  if (agenda.notes_seen) width += unit;
  if (agenda.reminder_seen) width += unit;
  if (agenda.category_icon_seen) width += static_cast<int>(1.25 * unit);
  return std::max({1, width, pictures});
}

Color category_color(const DayAgenda& agenda, std::size_t row) {
  return row < agenda.row_colors.size() ? agenda.row_colors[row] : kWhite;
}

bool has_appointments(const DayAgenda& agenda) {
  return agenda.emptiness == DayAgenda::Emptiness::has_rows;
}

bool is_continued(const DayAgenda& agenda, std::size_t row) {
  return row + 1 < agenda.rows.size() && agenda.rows[row + 1].continues();
}

// The agenda as the columns show it. What the scroll bar takes is kept from the subjects once, and
// only where there is one: they reach to the edge of their column's text.
std::vector<SubjectPiece> wrapped(const DayAgenda& agenda, const DayListInput& input,
                                  const DayColumns& columns, SubjectRows& rows) {
  const ReportPlace& place = input.place;
  const int padding = padding_of(input.screen), column = columns.subject(input);
  const int free = column - std::max(2 * place.border, 2 * padding);
  const int beside_bar =
      column - place.scroll_bar_width - std::max(4 * place.border + 3, 2 * padding);
  // A column of nothing would wrap for ever.
  if (beside_bar <= 0) return rows.pieces(agenda, kAnyWidth, kAnyWidth);
  const int time = columns.time - 2 * padding;
  // A long day is too high before anything is broken.
  const int rows_at_least = static_cast<int>(agenda.rows.size());
  if (rows_at_least * row_height(input, kManyTogether) <= place.size.height) {
    auto all = rows.pieces(agenda, free, time);
    if (total_height(agenda, all, input) <= place.size.height) return all;
  }
  return rows.pieces(agenda, beside_bar, time);
}

// On a narrow list times are broken, too, if that makes it lower: subjects gain what they lose.
DayColumns wrap_subjects(DayAgenda& agenda, const DayListInput& input, DayColumns columns,
                         SubjectRows& rows, Canvas& measure) {
  const int whole = input.place.size.width, share = columns.subject(input) * 100 / whole;
  auto shown = wrapped(agenda, input, columns, rows);
  if (share < kNarrowSubject) {
    DayColumns broken{time_column_width(agenda, input, true, measure), columns.icons};
    auto other = wrapped(agenda, input, broken, rows);
    if (share < kLeastSubject ||
        total_height(agenda, other, input) < total_height(agenda, shown, input)) {
      shown = std::move(other);
      columns = broken;
    }
  }
  agenda = in_pieces(agenda, shown);
  return columns;
}

ReportContent list_frame(const DayAgenda& agenda, const DayListInput& input,
                         const DayColumns& columns) {
  const SettingsRecord& settings = input.settings;
  ReportContent content;
  content.font = list_font(input, 400);
  content.bold_font = list_font(input, 700);
  content.padding = padding_of(input.screen);
  content.picture_column = 1;
  content.picture_gap = picture_gap(input.screen);
  content.background = settings.color(ColorSlot::day_row_1);
  content.line_width = input.screen.scale;
  content.selected_background =
      visible_on(content.background, settings.color(ColorSlot::day_header_background));
  content.selected_text =
      legible_on(content.selected_background, settings.color(ColorSlot::day_header_text));
  content.columns = {{columns.time, nothing_there(agenda) ? Align::center : Align::right},
                     {columns.icons, Align::center},
                     {columns.subject(input), Align::left}};
  return content;
}

// What all rows of each appointment show, for the first of them.
std::vector<Text> spoken_names(const DayAgenda& agenda, const DayListInput& input,
                               const RowColors& colors, const RowPictures& pictures) {
  std::vector<Text> names;
  for (std::size_t i = 0; i < agenda.rows.size(); ++i) {
    const DayRow& row = agenda.rows[i];
    if (row.continues()) {
      if (!names.empty()) names.back() += u", " + row.subject;
      continue;
    }
    names.emplace_back();
    if (!row.is_appointment()) continue;
    Text& name = names.back();
    name = shown_time(row.time, input) + u" " + row.subject;
    const auto add = [&](const Text& text) { name += u", " + text; };
    if (row.icons.find(u'n') != Text::npos) add(load_string(StringId::notes, input.language));
    if (row.icons.find(u'r') != Text::npos)
      add(load_string(StringId::row_reminder, input.language));
    if (pictures.shows_category(row, category_color(agenda, i)) || colors.shows_category(i))
      add(row.first_category);
    if (colors.has_ended(i)) add(load_string(StringId::row_ended, input.language));
  }
  return names;
}

// Half a time is shown where the rest stands in the next row.
Text time_cell(const DayAgenda& agenda, std::size_t row, SubjectRows& times, int room) {
  const DayRow& shown = agenda.rows[row];
  if (!shown.is_appointment()) return shown.time;
  if (!shown.continues())
    return times.is_broken(shown.time, room) && is_continued(agenda, row)
               ? Text(time_parts(shown.time).start)
               : shown.time;
  const bool second = row > 0 && !agenda.rows[row - 1].continues();
  const TextView whole = second ? TextView(agenda.rows[row - 1].time) : TextView();
  return times.is_broken(whole, room) ? Text(time_parts(whole).end) : Text();
}

}  // namespace

ReportContent day_list_content(DayAgenda& agenda, const DayListInput& input, Canvas& measure) {
  RowPictures pictures(agenda, input.settings, picture_gap(input.screen));
  const std::vector<Text> names =
      spoken_names(agenda, input, RowColors(agenda, input.settings, input.now), pictures);
  const bool wraps = input.settings.wrapsubject == 1 && has_appointments(agenda);
  DayColumns columns{time_column_width(agenda, input, false, measure),
                     icon_column_width(agenda, input, pictures.width())};
  SubjectRows subjects(measure, list_font(input, 400));
  if (wraps) columns = wrap_subjects(agenda, input, columns, subjects, measure);
  const int time_room = wraps ? columns.time - 2 * padding_of(input.screen) : kAnyWidth;
  ReportContent content = list_frame(agenda, input, columns);
  if (nothing_there(agenda))
    content.bold_font =
        fitting_font(measure, {agenda.rows.front().time}, columns.time - 2 * content.padding,
                     input.settings.dvfontsize, 700, input.screen);
  RowColors colors(agenda, input.settings, input.now);
  content.rows.reserve(agenda.rows.size());
  auto name = names.begin();
  RowPictures::Place place{0, kBarMargin * input.screen.scale, kWhite, true, true};
  for (std::size_t i = 0; i < agenda.rows.size(); ++i) {
    const DayRow& row = agenda.rows[i];
    place.first = i == 0 || !row.continues();
    place.last = !is_continued(agenda, i);
    if (place.first) place.height = row_height(input, rows_together(agenda.rows, i));
    ReportRow shown;
    shown.cells = {local_digits(time_cell(agenda, i, subjects, time_room), input.settings.locale),
                   {},
                   row.subject};
    shown.height = place.height;
    shown.bold = !row.is_appointment();
    place.ground = shown.background = colors.background(i);
    shown.pictures = pictures.of(row, category_color(agenda, i), place, content.pictures);
    shown.text = colors.text(i, shown.background);
    if (!place.first && !shown.cells[0].empty())
      shown.first_text = content.rows.back().first_text.value_or(content.rows.back().text);
    if (i > 0 && place.first) shown.line_above = colors.line(shown.background);
    if (place.first && name != names.end()) shown.name = *name++;
    content.rows.push_back(std::move(shown));
  }
  return content;
}

std::vector<int> rows_of_appointment(const DayAgenda& agenda, int row) {
  const auto& rows = agenda.rows;
  if (row < 0 || row >= static_cast<int>(rows.size())) return {};
  std::size_t first = static_cast<std::size_t>(row);
  while (first > 0 && rows[first].continues()) --first;
  std::vector<int> found{row};  // the tapped one first
  for (int i = 0; i < rows_together(rows, first); ++i)
    if (static_cast<int>(first) + i != row) found.push_back(static_cast<int>(first) + i);
  return found;
}

}  // namespace orvello
