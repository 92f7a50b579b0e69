#include "store/day_agenda.h"

#include <algorithm>

#include "base/text.h"
#include "settings/category_text.h"
#include "store/day_label.h"
#include "store/restriction.h"

namespace orvello {
namespace {

constexpr TextView kNothing = u"No Appointments";

// Calls visit(item) for what the store offers for the day, by start. False when it failed.
template <typename Visit>
[[nodiscard]] bool visit_candidates(StoreItems* items, Day day, AppointmentFieldSet wanted,
                                    Visit visit) {
  if (!items) return false;
  // Both bounds are the day itself; the day test decides, the store only preselects.
  items->set_include_recurrences(true);
  items->sort(u"[Start]", false);
  items->want(wanted);
  return each_item(*items, restriction_to(day, day), visit);
}

DayRow::Kind row_kind(const StoreItem& item) {
  return item.summary->all_day ? DayRow::Kind::all_day : DayRow::Kind::timed;
}

// A row for many occurrences stands for none of them.
CalendarDate row_start(const StoreItem& item) { return item.many == 0 ? item.start : kNoDate; }

class AgendaBuilder {
 public:
  AgendaBuilder(Day day, const SettingsRecord& settings, const ProfileFilter& passes)
      : day_(day), settings_(settings), passes_(passes) {}

  void visit(const StoreItem& item) {
    const AppointmentSummary& summary = *item.summary;
    agenda_.emptiness = DayAgenda::Emptiness::all_filtered;  // until there is a row
    const bool reminder = summary.reminder_set && settings_.alarmflag == 1;
    // The column grows for what the store offers, shown or not: a reminder even of another day.
    agenda_.reminder_seen |= reminder;
    const bool passes = passes_(summary.categories);
    if (!touches_day(item, day_)) return;
    agenda_.notes_seen |= summary.has_notes;
    const Text category =
        summary.categories.empty() ? Text(kNoCategory) : first_category(summary.categories);
    if (settings_.categoryiconflag == 1 && find_category_prop(settings_.category_props, category))
      agenda_.category_icon_seen = true;
    if (passes) add_rows(item, reminder, category);
  }

  DayAgenda finish() {
    if (!agenda_.rows.empty()) {
      agenda_.emptiness = DayAgenda::Emptiness::has_rows;
    } else {
      SystemTime end = civil_of(day_);
      end.hour = 24;  // the next midnight: the row is never in the past while its day lasts
      CalendarDate day_end = 0;
      SystemTimeToVariantTime(end, day_end);
      DayRow row;
      row.time = kNothing;
      row.kind = DayRow::Kind::nothing;
      add_row(std::move(row), day_end, kWhite);
    }
    agenda_.row_shades = build_row_shades(agenda_.rows);
    return std::move(agenda_);
  }

 private:
  void add_rows(const StoreItem& item, bool reminder, const Text& category) {
    const AppointmentSummary& summary = *item.summary;
    const CalendarDate end = shown_end(item);
    // The whole text: only an appointment with a single category has a colour.
    const Color color =
        used_category_color(settings_.category_props, summary.categories).value_or(kWhite);
    DayRow row;
    row.time = day_label(item, day_, settings_.timeformat == 1);
    if (summary.has_notes) row.icons += u'n';
    if (reminder) row.icons += u'r';
    if (settings_.categoryiconflag == 1) row.icons += u'c';
    row.subject = shown_subject(item);
    row.oid = summary.oid;
    row.start = row_start(item);
    row.first_category = category;
    row.kind = row_kind(item);
    add_row(std::move(row), end, color);
    if (settings_.showlocation != 1 || summary.location.empty()) return;
    add_row({{},
             u" ",
             location_label(summary.location),
             summary.oid,
             category,
             DayRow::Kind::location,
             row_start(item)},
            end, color);
  }

  void add_row(DayRow row, CalendarDate end, Color color) {
    agenda_.rows.push_back(std::move(row));
    agenda_.row_ends.push_back(end);
    agenda_.row_colors.push_back(color);
  }

  Day day_;
  const SettingsRecord& settings_;
  const ProfileFilter& passes_;
  DayAgenda agenda_;
};

}  // namespace

DayAgenda full_agenda(StoreItems* items, Day day, const SettingsRecord& settings,
                      const ProfileFilter& passes) {
  AgendaBuilder builder(day, settings, passes);
  using Field = AppointmentField;
  const AppointmentFieldSet wanted = {Field::subject, Field::location, Field::categories,
                                      Field::body, Field::reminder_set};
  const bool whole =
      visit_candidates(items, day, wanted, [&](const StoreItem& item) { builder.visit(item); });
  DayAgenda agenda = builder.finish();
  agenda.failed = !whole;
  return agenda;
}

DayAgenda unreadable_agenda(Text words) {
  DayAgenda agenda;
  agenda.failed = true;
  DayRow row;
  row.time = std::move(words);
  row.kind = DayRow::Kind::unreadable;
  agenda.rows = {std::move(row)};
  agenda.row_ends = {kNoDate};
  agenda.row_colors = {kWhite};
  agenda.row_shades = build_row_shades(agenda.rows);
  return agenda;
}

std::vector<int> build_row_shades(const std::vector<DayRow>& rows) {
  std::vector<int> shades;
  int shade = 0;
  for (const DayRow& row : rows) {
    if (!row.continues()) shade = 1 - shade;
    shades.push_back(shade);
  }
  return shades;
}

std::optional<std::vector<CompactRow>> compact_agenda(StoreItems* items, Day day, bool clock24,
                                                      const ProfileFilter& passes) {
  std::vector<CompactRow> rows;
  const AppointmentFieldSet wanted = {AppointmentField::subject, AppointmentField::categories};
  const bool whole = visit_candidates(items, day, wanted, [&](const StoreItem& item) {
    if (touches_day(item, day) && passes(item.summary->categories))
      rows.push_back({day_label(item, day, clock24), shown_subject(item), row_kind(item),
                      RowKey{item.summary->oid, row_start(item)}});
  });
  if (!whole) return std::nullopt;
  if (rows.empty()) rows.push_back({Text(kNothing), {}, DayRow::Kind::nothing});
  return rows;
}

}  // namespace orvello
