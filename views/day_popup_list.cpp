#include "views/day_popup_list.h"

#include <algorithm>

#include "draw/fit_text.h"
#include "draw/readable.h"
#include "draw/wrap_text.h"
#include "views/subject_rows.h"

namespace orvello {
namespace {

constexpr int kPopupPadding = 4, kPopupFinger = 27, kBarRoom = 18;  // at 96 dpi
constexpr std::size_t kMostLines = 3;
constexpr double kRowLine = 1.3;  // contrast
// Of the width: where subjects get less, times may take two lines; below the least they always do.
constexpr int kNarrowShare = 55, kLeastShare = 35, kMostTime = 60;  // percent

class PopupRows {
 public:
  PopupRows(const DayPopupList& list, Canvas& measure)
      : list_(list),
        measure_(measure),
        font_(font_of(list.settings.dvfontsize, 400, list.screen)) {}

  int padding() const { return kPopupPadding * list_.screen.dpi_x / 96; }
  int bar_room() const { return kBarRoom * list_.screen.dpi_x / 96; }
  const FontSpec& font() const { return font_; }
  int width_of(TextView text) { return measure_.measure(text, font_).width; }
  Text time_of(const CompactRow& row) const {
    return local_digits(row.time, list_.settings.locale);
  }

  int time_width(bool in_parts) {
    int width = 0;
    for (const CompactRow& row : list_.rows) {
      const Text time = time_of(row);
      const TimeParts parts = in_parts ? time_parts(time) : TimeParts{time, {}};
      width = std::max({width, width_of(parts.start), width_of(parts.end)});
    }
    return width + 2 * padding();
  }

  std::vector<ReportRow> rows(int time_width, int subject_width) {
    std::vector<ReportRow> made;
    for (const CompactRow& row : list_.rows) {
      ReportRow shown;
      shown.lines = true;
      shown.cells = {broken_time(time_of(row), time_width - 2 * padding()),
                     broken(row.subject, subject_width - 2 * padding())};
      shown.name = time_of(row) + (row.subject.empty() ? u"" : u" ") + row.subject;
      shown.bold = !row.is_appointment();
      shown.height = row_height(lines_of(shown));
      made.push_back(std::move(shown));
    }
    return made;
  }

 private:
  int row_height(int lines) const {
    const int air = padding();
    return std::max(kPopupFinger * list_.screen.dpi_y / 96, lines * font_.height * 12 / 10 + air);
  }
  Text broken_time(Text time, int width) {
    const TimeParts parts = time_parts(time);
    if (parts.end.empty() || width_of(time) <= width) return time;
    return Text(parts.start) + u'\n' + Text(parts.end);
  }
  // In one line where subjects are not to wrap.
  Text broken(TextView subject, int width) {
    Text single(subject);
    std::replace_if(
        single.begin(), single.end(), [](char16_t c) { return c == u'\n' || c == u'\r'; }, u' ');
    if (list_.settings.wrapsubject != 1 || width <= 0) return single;
    const std::vector<Text> lines = word_wrapped(measure_, single, font_, width);
    if (lines.size() == 1) return single;
    Text text;
    for (std::size_t i = 0; i < lines.size() && i < kMostLines; ++i) {
      const bool more = i + 1 == kMostLines && i + 1 < lines.size();
      if (i > 0) text += u'\n';
      text += more ? shortened(measure_, lines[i] + u" " + lines[i + 1], font_, width) : lines[i];
    }
    return text;
  }

  const DayPopupList& list_;
  Canvas& measure_;
  FontSpec font_;
};

int sum_of_rows(const std::vector<ReportRow>& rows) {
  int height = 0;
  for (const ReportRow& row : rows) height += row.height;
  return height;
}

struct PopupColumns {
  int time = 0;
  std::vector<ReportRow> rows;
};

PopupColumns columns_of(PopupRows& made, int time, Size room) {
  PopupColumns columns{time, made.rows(time, room.width - time)};
  if (sum_of_rows(columns.rows) > room.height)
    columns.rows = made.rows(time, room.width - time - made.bar_room());
  return columns;
}

// What stands in the place of appointments, over the whole width.
void show_words(const DayPopupList& list, int width, int padding, Canvas& measure,
                ReportContent& content) {
  content.columns = {{width, Align::center}, {}};
  std::vector<Text> words;
  for (const CompactRow& row : list.rows) words.push_back(row.time);
  content.bold_font =
      fitting_font(measure, words, width - 2 * padding, list.settings.dvfontsize, 700, list.screen);
}

}  // namespace

int natural_popup_width(const DayPopupList& list, Canvas& measure) {
  PopupRows made(list, measure);
  int width = 0;
  for (const CompactRow& row : list.rows) width = std::max(width, made.width_of(row.subject));
  return made.time_width(false) + width + 2 * made.padding() + made.bar_room();
}

ReportContent day_popup_content(const DayPopupList& list, Size room, Canvas& measure) {
  const auto color = [&](ColorSlot slot) { return list.settings.color(slot); };
  PopupRows made(list, measure);
  const int most_time = room.width * kMostTime / 100;
  const int whole_time = made.time_width(false);
  PopupColumns shown = columns_of(made, std::min(whole_time, most_time), room);
  const int share = (room.width - whole_time) * 100 / std::max(1, room.width);
  if (share < kNarrowShare && list.settings.wrapsubject == 1) {
    PopupColumns other = columns_of(made, std::min(made.time_width(true), most_time), room);
    if (share < kLeastShare || sum_of_rows(other.rows) < sum_of_rows(shown.rows))
      shown = std::move(other);
  }
  ReportContent content;
  content.font = made.font();
  content.padding = made.padding();
  content.bold_font = font_of(list.settings.dvfontsize, 700, list.screen);
  content.background = color(ColorSlot::popup_background);
  content.line_width = list.screen.scale;
  content.selected_background =
      visible_on(content.background, color(ColorSlot::popup_header_background));
  content.selected_text =
      legible_on(content.selected_background, color(ColorSlot::popup_header_text));
  content.columns = {{shown.time, Align::right}, {room.width - shown.time, Align::left}};
  if (!list.rows.empty() && !list.rows.front().is_appointment())
    show_words(list, room.width, content.padding, measure, content);
  content.rows = std::move(shown.rows);
  for (ReportRow& row : content.rows) {
    row.background = content.background;
    row.text = readable_on(content.background, color(ColorSlot::popup_text));
    if (&row != &content.rows.front())
      row.line_above = visible_on(content.background, content.background, kRowLine);
  }
  return content;
}

int rows_height(const ReportContent& content) { return sum_of_rows(content.rows); }

}  // namespace orvello
