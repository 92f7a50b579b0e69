#include "views/day_list.h"

#include <algorithm>
#include <map>

#include "draw/readable.h"
#include "draw/text_direction.h"
#include "draw/wrap_text.h"
#include "settings/icon_picture.h"

namespace orvello {
namespace {

constexpr std::size_t kMeasuredSubject = 300;
constexpr int kFilteredWidth = 140;  // of the first column when all rows were filtered away
constexpr int kFinger = 27;          // a row's least height at 96 dpi, a little over 7 mm
constexpr int kPadding = 3;
constexpr double kLineContrast = 1.4;

int padding_of(const ScreenLayout& screen) { return kPadding * screen.scale; }

int picture_gap(const ScreenLayout& screen) { return screen.icon_width / 4; }

FontSpec list_font(const DayListInput& input, int weight) {
  return font_of(input.settings.dvfontsize, weight, input.screen);
}

// An appointment of one row is high enough for a finger; the rows of a longer one together.
int row_height(const DayListInput& input, int rows_together) {
  const int line = list_font(input, 400).height * 13 / 10;
  const int finger = kFinger * input.screen.dpi_y / 96;
  return std::max(line, (finger + rows_together - 1) / rows_together);
}

int rows_together(const std::vector<DayRow>& rows, std::size_t first) {
  std::size_t end = first + 1;
  while (end < rows.size() && rows[end].continues()) ++end;
  return static_cast<int>(end - first);
}

int total_height(const std::vector<DayRow>& rows, const DayListInput& input) {
  int height = 0;
  for (std::size_t first = 0; first < rows.size();) {
    const int together = rows_together(rows, first);
    height += together * row_height(input, together);
    first += static_cast<std::size_t>(together);
  }
  return height;
}

bool nothing_there(const DayAgenda& agenda) {
  return agenda.emptiness == DayAgenda::Emptiness::nothing_found;
}

int time_column_width(const DayAgenda& agenda, const DayListInput& input, Canvas& measure) {
  if (nothing_there(agenda)) return input.place.size.width - 2 * input.place.border;
  const bool filtered = agenda.emptiness == DayAgenda::Emptiness::all_filtered;
  const FontSpec font = list_font(input, filtered ? 700 : 400);
  int width = filtered ? kFilteredWidth * input.screen.scale : 0;
  const Text* last = nullptr;  // most days repeat a few texts
  for (const DayRow& row : agenda.rows) {
    if (row.time.empty() || (last && *last == row.time)) continue;
    width = std::max(width, measure.measure(row.time, font).width + 2 * padding_of(input.screen));
    last = &row.time;
  }
  return width;
}

// The pictures that a day's rows use, each once, and how wide a row of them gets.
class RowPictures {
 public:
  RowPictures(const SettingsRecord& settings, int gap, std::vector<Image>& pictures)
      : settings_(settings), gap_(gap), pictures_(pictures) {
    for (const Image& glyph : {settings.notes_glyph, settings.reminder_glyph}) add(glyph);
  }

  // `category` is the colour of the appointment's categories, white without one.
  std::vector<int> of(const DayRow& row, Color category) {
    std::vector<int> indexes;
    if (settings_.usecategorycolorforbar == 1 && category != kWhite && !row.continues())
      indexes.push_back(bar_of(category));
    for (const char16_t letter : row.icons) {
      if (letter == u'n') indexes.push_back(0);
      if (letter == u'r') indexes.push_back(1);
      if (letter == u'c') add_category(row.first_category, indexes);
    }
    int width = -gap_;
    for (const int index : indexes)
      width += pictures_[static_cast<std::size_t>(index)].width + gap_;
    widest_ = std::max(widest_, width);
    return indexes;
  }
  int widest() const { return widest_; }

 private:
  int bar_of(Color category) {
    const auto [place, is_new] =
        by_color_.try_emplace(category, static_cast<int>(pictures_.size()));
    if (is_new) {
      const int height = settings_.reminder_glyph.height, width = std::max(1, height * 3 / 8);
      // The transparent colour is not to be seen.
      const Color shown = category == kMagenta ? rgb(254, 0, 255) : category;
      const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
      pictures_.push_back({width, height, std::vector<Color>(pixels, shown)});
    }
    return place->second;
  }
  void add_category(const Text& label, std::vector<int>& indexes) {
    const auto [place, is_new] = by_label_.try_emplace(label, -1);
    if (is_new) {
      if (Image icon = category_icon(settings_, label); !icon.empty()) {
        place->second = static_cast<int>(pictures_.size());
        add(std::move(icon));
      }
    }
    if (place->second >= 0) indexes.push_back(place->second);
  }

  void add(Image picture) {
    pictures_.push_back(visible_on(settings_.color(ColorSlot::day_row_1), std::move(picture)));
  }

  const SettingsRecord& settings_;
  int gap_;
  int widest_ = 0;
  std::vector<Image>& pictures_;
  std::map<Text, int> by_label_;
  std::map<Color, int> by_color_;
};

Color category_color(const DayAgenda& agenda, std::size_t row) {
  return row < agenda.row_colors.size() ? agenda.row_colors[row] : kWhite;
}

// As the marks that were seen ask for, and never narrower than the pictures of a row.
int icon_column_width(const DayAgenda& agenda, const DayListInput& input) {
  if (nothing_there(agenda)) return 0;
  const int unit = input.screen.icon_width;
  int width = 0;
  if (agenda.notes_seen) width += unit;
  if (agenda.reminder_seen) width += unit;
  if (agenda.category_icon_seen) width += static_cast<int>(1.25 * unit);
  std::vector<Image> unused;
  RowPictures pictures(input.settings, picture_gap(input.screen), unused);
  for (std::size_t i = 0; i < agenda.rows.size(); ++i)
    pictures.of(agenda.rows[i], category_color(agenda, i));
  return std::max({1, width, pictures.widest()});
}

class RowPainter {
 public:
  RowPainter(const DayAgenda& agenda, const DayListInput& input)
      : agenda_(agenda),
        input_(input),
        dark_(is_dark(input.settings.color(ColorSlot::day_row_1))) {}

  Color background(std::size_t row) const {
    const auto color = [this](ColorSlot slot) { return input_.settings.color(slot); };
    switch (static_cast<RowColorStyle>(input_.settings.rowcolorindex)) {
      case RowColorStyle::by_rows:
        return color(agenda_.row_shades[row] == 1 ? ColorSlot::day_row_2 : ColorSlot::day_row_1);
      case RowColorStyle::by_times:
        return time_of_day_color(agenda_.row_ends[row]);
      case RowColorStyle::by_category:
        return on_paper(agenda_.row_colors[row]);
      case RowColorStyle::none:
        break;
    }
    return color(ColorSlot::day_row_1);
  }

  // In this order, each later one winning; an ended appointment is grey whatever it is.
  Color text(std::size_t row, Color row_before) const {
    const DayRow& shown = agenda_.rows[row];
    const SettingsRecord& settings = input_.settings;
    if (!shown.is_appointment())
      return dark_ ? settings.color(ColorSlot::day_appointment_text) : kBlack;
    Color color = settings.color(ColorSlot::day_appointment_text);
    if (shown.kind == DayRow::Kind::all_day) color = settings.color(ColorSlot::day_all_day_text);
    if (shown.continues() && row > 0) color = row_before;
    if (shown.kind == DayRow::Kind::location) color = settings.color(ColorSlot::day_location_text);
    if (settings.colorexpired == 1 && is_before(agenda_.row_ends[row], input_.now))
      color = settings.color(ColorSlot::day_expired_text);
    return color;
  }

  // Seen on any row; where rows differ much it is not what tells them apart.
  Color line(Color background) const {
    return visible_on(background, input_.settings.color(ColorSlot::day_line), kLineContrast);
  }

  // White stands for nothing special; in a dark list that is its own colour.
  Color on_paper(Color color) const {
    return dark_ && color == kWhite ? input_.settings.color(ColorSlot::day_row_1) : color;
  }

 private:
  // Morning until the second time mark, day until the third, then evening, which has no colour slot
  // of its own: it lies between the rows' and the lines' colour.
  Color time_of_day_color(CalendarDate end) const {
    const SettingsRecord& settings = input_.settings;
    const double time = time_of_day(end);
    if (time < settings.time_fraction[1]) return settings.color(ColorSlot::day_row_2);
    if (time < settings.time_fraction[2]) return settings.color(ColorSlot::day_row_1);
    return mixed(settings.color(ColorSlot::day_row_1), settings.color(ColorSlot::day_line),
                 kEveningShare);
  }

  const DayAgenda& agenda_;
  const DayListInput& input_;
  bool dark_;
};

struct DayColumns {
  int time = 0;
  int icons = 0;
};

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
  content.selected_background = settings.color(ColorSlot::day_header_background);
  content.selected_text =
      readable_on(content.selected_background, settings.color(ColorSlot::day_header_text));
  const int subject = std::max(0, input.place.size.width - columns.time - columns.icons);
  content.columns = {{columns.time, nothing_there(agenda) ? Align::center : Align::right},
                     {columns.icons, Align::center},
                     {subject, Align::left}};
  return content;
}

// Adds the subject's pieces to the rows; the first one stays in the row itself.
void add_pieces(const DayRow& row, Canvas& measure, CharacterWidths& characters,
                const FontSpec& font, int width, std::vector<DayRow>& rows) {
  TextView rest = TextView(row.subject).substr(0, kMeasuredSubject);
  rows.push_back(row);
  if (characters.surely_fits(rest, width)) return;
  std::size_t units = fitting_units(measure, rest, font, width);
  if (units == rest.size()) return;
  bool first = true;
  for (; !rest.empty(); units = fitting_units(measure, rest, font, width)) {
    // Words stay whole where they can.
    if (const std::size_t blank = rest.substr(0, units + 1).find_last_of(u' ');
        units < rest.size() && blank != TextView::npos && blank > 0)
      units = blank;
    if (!first) {
      DayRow piece;
      piece.oid = row.oid;
      piece.start = row.start;
      piece.first_category = row.first_category;
      piece.kind = DayRow::Kind::wrapped;
      rows.push_back(std::move(piece));
    }
    rows.back().subject = line_of(row.subject, rest.substr(0, units));
    first = false;
    rest.remove_prefix(units);
    if (!rest.empty() && rest.front() == u' ') rest.remove_prefix(1);
  }
}

void wrap_subjects(DayAgenda& agenda, const DayListInput& input, const DayColumns& columns,
                   Canvas& measure) {
  const FontSpec font = list_font(input, 400);
  const ReportPlace& place = input.place;
  int width = place.size.width - columns.time - columns.icons -
              (input.settings.dvfontsize + 12) * input.screen.scale;
  if (total_height(agenda.rows, input) > place.size.height)
    width -= 4 * place.border + place.scroll_bar_width + 3;
  else
    width -= 2 * place.border;
  if (width <= 0) return;  // a column of nothing would wrap for ever
  CharacterWidths characters(measure, font);
  std::vector<DayRow> rows;
  std::vector<CalendarDate> ends;
  std::vector<Color> colors;
  for (std::size_t i = 0; i < agenda.rows.size(); ++i) {
    add_pieces(agenda.rows[i], measure, characters, font, width, rows);
    ends.resize(rows.size(), agenda.row_ends[i]);
    colors.resize(rows.size(), i < agenda.row_colors.size() ? agenda.row_colors[i] : kWhite);
  }
  agenda.rows = std::move(rows);
  agenda.row_ends = std::move(ends);
  agenda.row_colors = std::move(colors);
  agenda.row_shades = build_row_shades(agenda.rows);
}

}  // namespace

ReportContent day_list_content(DayAgenda& agenda, const DayListInput& input, Canvas& measure) {
  const DayColumns columns{time_column_width(agenda, input, measure),
                           icon_column_width(agenda, input)};
  if (input.settings.wrapsubject == 1) wrap_subjects(agenda, input, columns, measure);
  ReportContent content = list_frame(agenda, input, columns);
  const RowPainter painter(agenda, input);
  RowPictures pictures(input.settings, content.picture_gap, content.pictures);
  content.rows.reserve(agenda.rows.size());
  int height = 0;
  Color chosen = kBlack;  // before it was made readable: it is handed down to the next row
  for (std::size_t i = 0; i < agenda.rows.size(); ++i) {
    const DayRow& row = agenda.rows[i];
    if (!row.continues() || i == 0) height = row_height(input, rows_together(agenda.rows, i));
    ReportRow shown;
    shown.cells = {row.time, {}, row.subject};
    shown.pictures = pictures.of(row, category_color(agenda, i));
    shown.height = height;
    shown.bold = !row.is_appointment();
    shown.background = shown.bold ? painter.on_paper(kWhite) : painter.background(i);
    chosen = painter.text(i, chosen);
    shown.text = readable_on(shown.background, chosen);
    if (i > 0 && !row.continues()) shown.line_above = painter.line(shown.background);
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
