#include "cli/import_rows.h"

#include <algorithm>
#include <array>

#include "calendar/date_pictures.h"
#include "calendar/date_text.h"
#include "resources/grouped_number.h"
#include "store/day_label.h"

namespace orvello {
namespace {

constexpr int kImportRow = 27, kImportPad = 4, kRoomForDayNames = 300;  // at 96 dpi

struct ChangeWord {
  TextView sign;
  StringId word;
};
constexpr std::array<ChangeWord, 4> kChangeWords = {{{u"+", StringId::import_new},
                                                     {u"*", StringId::import_changed},
                                                     {u"=", StringId::import_unchanged},
                                                     {u"\u2212", StringId::import_cancelled}}};

const ChangeWord& word_of(const ImportItem& item) {
  return kChangeWords[static_cast<std::size_t>(item.change)];
}

// A day in figures, in the locale's order.
Text figures_picture(const LocaleData& locale) {
  Text picture = DatePickerPicture(locale).substr(4);
  if (const auto month = picture.find(u"MMM"); month != Text::npos) picture.erase(month, 1);
  return picture.empty() ? Text(u"yyyy-MM-dd") : picture;
}

ReportContent empty_content(const ImportDesk& desk) {
  const FormColors colors = desk.dialogs.colors();
  ReportContent content;
  content.font = desk.screen.fonts.normal9;
  content.bold_font = desk.screen.fonts.bold9;
  content.padding = kImportPad * desk.screen.dpi_x / 96;
  content.background = colors.field;
  content.selected_background = colors.accent_tint;
  content.selected_text = colors.text;
  return content;
}

ReportRow empty_row(const ImportDesk& desk, bool dim) {
  const FormColors colors = desk.dialogs.colors();
  ReportRow row;
  row.height = kImportRow * desk.screen.dpi_y / 96;
  row.background = colors.field;
  row.text = dim ? colors.dim_text : colors.text;
  return row;
}

// What is left for a column beside those of `taken` together.
int room_beside(int taken, std::size_t rows, const ReportPlace& place, const ImportDesk& desk) {
  const int inner = place.size.width - 2 * place.border;
  const int height =
      static_cast<int>(std::min<std::size_t>(rows, 1 << 16)) * kImportRow * desk.screen.dpi_y / 96;
  const bool scrolls = height > place.size.height - 2 * place.border;
  return std::max(1, inner - taken - (scrolls ? place.scroll_bar_width : 0));
}

class ItemRows {
 public:
  ItemRows(const ReportPlace& place, const ImportDesk& desk)
      : desk_(desk), picture_(figures_picture(desk.locale)) {
    if (place.size.width >= kRoomForDayNames * desk.screen.dpi_x / 96) picture_.insert(0, u"ddd ");
  }

  ReportRow row(const ImportItem& item) const {
    using Change = ImportItem::Change;
    const auto text = [this](StringId id) { return load_string(id, desk_.language); };
    ReportRow row = empty_row(desk_, item.change >= Change::unchanged);
    Text subject = item.subject.empty() ? Text(kNoSubject) : item.subject;
    if (item.recurring) subject = format(text(StringId::import_series), subject);
    const SystemTime start = civil_of(day_of(item.start));
    Text day, time, said = text(StringId::import_contact);
    if (item.contact) {
      day = said;
    } else {
      day = FormatDatePicture(picture_, start, desk_.locale);
      if (!item.all_day)
        time = FormatTimeOfDay(to_calendar_date(item.start), desk_.clock24, desk_.locale);
      said = FormatDatePicture(u"dddd d MMMM yyyy", start, desk_.locale) + u", " +
             (item.all_day ? text(StringId::editor_all_day) : time);
    }
    row.name = text(word_of(item).word) + u": " + said + u", " + subject;
    row.cells = {Text(word_of(item).sign), day, time, subject};
    return row;
  }

 private:
  const ImportDesk& desk_;
  Text picture_;
};

}  // namespace

ReportContent import_source_rows(const std::vector<ImportSourceRow>& rows, const ReportPlace& place,
                                 const ImportDesk& desk) {
  ReportContent content = empty_content(desk);
  content.columns = {{room_beside(0, rows.size(), place, desk), Align::left, {}}};
  for (const ImportSourceRow& one : rows) {
    ReportRow& row = content.rows.emplace_back(empty_row(desk, one.mark == ReportMark::clear));
    row.cells = {one.text};
    row.mark = one.mark;
  }
  return content;
}

ReportContent import_item_rows(const std::vector<ImportItem>& items, std::size_t shown,
                               const ReportPlace& place, const ImportDesk& desk) {
  ReportContent content = empty_content(desk);
  const ItemRows rows(place, desk);
  constexpr std::size_t subject = 3;
  std::array<int, subject + 1> widths{};
  shown = std::min(shown, items.size());
  for (std::size_t i = 0; i < shown; ++i) {
    const ReportRow& row = content.rows.emplace_back(rows.row(items[i]));
    for (std::size_t cell = 0; cell < subject; ++cell)
      widths[cell] =
          std::max(widths[cell], desk.measure.measure(row.cells[cell], content.font).width);
  }
  if (shown < items.size() || items.empty()) {
    ReportRow& row = content.rows.emplace_back(empty_row(desk, true));
    row.cells.resize(widths.size());
    row.cells[subject] = load_string(StringId::import_nothing, desk.language);
    if (!items.empty())
      row.cells[subject] = format(
          load_string(StringId::import_more, desk.language),
          grouped_number(static_cast<int>(items.size() - shown), desk.language, desk.locale));
  }
  int taken = 0;
  for (std::size_t cell = 0; cell < subject; ++cell) {
    widths[cell] = widths[cell] > 0 ? widths[cell] + 2 * content.padding : 1;
    taken += widths[cell];
  }
  widths[subject] = room_beside(taken, content.rows.size(), place, desk);
  for (std::size_t cell = 0; cell < widths.size(); ++cell)
    content.columns.push_back({widths[cell], cell == 2 ? Align::right : Align::left, {}});
  return content;
}

Text import_legend(const std::vector<ImportItem>& items, const ImportDesk& desk) {
  std::array<int, kChangeWords.size()> counts{};
  for (const ImportItem& item : items) ++counts[static_cast<std::size_t>(item.change)];
  if (std::count(counts.begin(), counts.end(), 0) >= 3) return {};
  Text legend;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts[i] == 0) continue;
    if (!legend.empty()) legend += u"   ";
    legend += Text(kChangeWords[i].sign) + u" " + load_string(kChangeWords[i].word, desk.language) +
              u" " + grouped_number(counts[i], desk.language, desk.locale);
  }
  return legend;
}

int lines_of(TextView text, int width, const ImportDesk& desk) {
  if (text.empty()) return 0;
  const int wide = desk.measure.measure(text, desk.screen.fonts.normal9).width;
  return 1 + wide * 11 / 10 / std::max(1, width);  // words end before the room does
}

}  // namespace orvello
