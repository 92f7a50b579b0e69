#include "app/search_rows.h"

#include <algorithm>
#include <utility>

#include "calendar/date_pictures.h"
#include "draw/wrap_text.h"
#include "resources/grouped_number.h"
#include "settings/profiles.h"
#include "store/day_label.h"

namespace orvello {
namespace {

constexpr int kHitPadding = 8, kHitLine = 21, kHitTouch = 27;  // at 96 dpi

// A search goes over all years; of this one the number says nothing.
TextView hit_date_picture(bool this_year, const LocaleData& locale) {
  if (locale.short_date_order == u"0") return this_year ? u"ddd MMM d" : u"ddd MMM d, yyyy";
  if (locale.short_date_order == u"1") return this_year ? u"ddd d MMM" : u"ddd d MMM yyyy";
  return this_year ? u"MMM d, ddd" : u"yyyy MMM d, ddd";
}

class SearchRowsBuilder {
 public:
  explicit SearchRowsBuilder(const SearchLook& look) : look_(look) {
    ReportContent& content = made_.content;
    const ScreenLayout& screen = look.screen;
    content.font = screen.fonts.normal9;
    content.bold_font = screen.fonts.bold9;
    content.padding = scaled(kHitPadding);
    content.background = look.colors.field;
    content.line_width = std::max(1, scaled(1));
    content.selected_background = look.colors.accent_tint;
    content.selected_text = look.colors.text;
    content.columns = {{width(), Align::left, {}}};
  }

  int width() const {
    const ReportPlace& place = look_.place;
    return std::max(1, place.size.width - place.scroll_bar_width - 2 * place.border);
  }
  int text_width() const { return width() - 2 * made_.content.padding; }
  const FontSpec& font() const { return made_.content.font; }

  ReportRow& add(Text text, int hit, int least = kHitLine) {
    ReportRow& row = made_.content.rows.emplace_back();
    row.cells = {std::move(text)};
    row.height = std::max(made_.content.font.height * 3 / 2, scaled(least));
    row.background = look_.colors.field;
    row.text = look_.colors.dim_text;
    made_.hits.push_back(hit);
    return row;
  }

  void add_hit(const TextHit& hit, int number) {
    const AppointmentSummary& summary = *hit.item.summary;
    Text subject = shown_subject(summary.subject);
    if (!summary.location.empty()) subject += u" " + location_label(summary.location);
    Text rest = hit_date(hit, look_.settings, look_.language);
    if (!profileAllowsCategory(look_.settings, summary.categories))
      rest += u", " + format(load_string(StringId::search_hidden, look_.language),
                             look_.settings.activeprofilename);
    ReportRow& first = add(subject, number);
    first.bold = true;
    if (number > 0) first.line_above = look_.colors.line;
    first.name = subject + u", " + rest;
    if (!hit.past) first.text = look_.colors.text;
    add(std::move(rest), number);
  }

  void add_heading(Text words) {
    const bool first = made_.hits.empty();
    ReportRow& row = add(std::move(words), -1, kHitTouch);
    if (!first) row.line_above = look_.colors.line;
  }

  SearchRows take() { return std::move(made_); }

 private:
  int scaled(int pixels) const { return pixels * look_.screen.dpi_y / 96; }

  const SearchLook& look_;
  SearchRows made_;
};

}  // namespace

Text hit_date(const TextHit& hit, const SettingsRecord& settings, Language language) {
  Text text;
  if (hit.item.start == kNoDate) {
    text = u"---";
  } else {
    const Day day = whole_day(hit.item.start);
    const SystemTime civil = civil_of(day);
    const TextView picture = hit_date_picture(civil.year == settings.today.year, settings.locale);
    text = FormatDatePicture(picture, civil, settings.locale) + u", " +
           day_label(hit.item, day, settings.timeformat == 1);
  }
  if (hit.item.summary->recurring) text += u", " + load_string(StringId::search_repeats, language);
  return text;
}

SearchRows search_rows(const TextHits& found, const SearchLook& look) {
  SearchRowsBuilder rows(look);
  bool past = false;
  for (std::size_t i = 0; i < found.first.size(); ++i) {
    const TextHit& hit = found.first[i];
    if (hit.past && !std::exchange(past, true))
      rows.add_heading(load_string(StringId::search_past, look.language));
    rows.add_hit(hit, static_cast<int>(i));
  }
  if (const std::size_t more = found.count - found.first.size(); more > 0)
    rows.add_heading(format(
        load_string(StringId::search_more, look.language),
        grouped_number(static_cast<std::int64_t>(more), look.language, look.settings.locale)));
  return rows.take();
}

SearchRows search_notice(const Text& words, const SearchLook& look, Canvas& measure) {
  SearchRowsBuilder rows(look);
  for (Text& line : word_wrapped(measure, words, rows.font(), rows.text_width()))
    rows.add(std::move(line), -1);
  return rows.take();
}

}  // namespace orvello
