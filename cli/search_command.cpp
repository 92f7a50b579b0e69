#include "cli/search_command.h"

#include <algorithm>
#include <ostream>

#include "calendar/date_pictures.h"
#include "cli/agenda_item.h"
#include "cli/commands.h"
#include "store/text_search.h"

namespace orvello {
namespace {

Result<std::vector<StoreItem>> items_with(const TextQuery& query, RecordCalendarStore& store,
                                          CalendarDate now) {
  using Items = Result<std::vector<StoreItem>>;
  const auto application = store.create_application(false);
  const auto failure = [&] { return Items::failure(to_utf8(application->problem())); };
  const StoreReading reading(store);
  if (!reading || !application->logon(nullptr)) return failure();
  const auto folder = application->default_folder(kFolderCalendar);
  if (!folder) return failure();
  std::vector<StoreItem> found;
  std::int32_t whole_series = 0;  // the one of which changed occurrences need no place of their own
  std::optional<std::int32_t> last = 0;
  do {
    last = folder->each_text(*last, now, [&](const StoreTexts& texts) {
      const std::int32_t oid = texts.item.summary->oid;
      if ((texts.changed_occurrence && oid == whole_series) || !query.matches(texts)) return;
      if (!texts.changed_occurrence) whole_series = oid;
      found.push_back(texts.item);
    });
    if (!last) return failure();
  } while (*last != 0);
  std::stable_sort(found.begin(), found.end(), [](const StoreItem& a, const StoreItem& b) {
    return is_before(a.start, b.start);
  });
  return found;
}

void write_rows(const std::vector<StoreItem>& items, const SettingsRecord& settings,
                std::ostream& out) {
  if (items.empty()) out << "Nothing found\n";
  const Text picture = agenda_date_picture(settings.locale);
  const StoreItem* above = nullptr;
  for (const StoreItem& item : items) {
    const Day day = whole_day(item.start);
    if (!above || whole_day(above->start) != day) {
      if (above) out << "\n";
      out << (item.start == kNoDate
                  ? "Without a date"
                  : to_utf8(FormatDatePicture(picture, civil_of(day), settings.locale)))
          << "\n";
    }
    above = &item;
    std::string row = item_row(item, day, settings.timeformat == 1);
    row.insert(row.size() - 1, item.summary->recurring ? " (repeats)" : "");
    out << row;
  }
}

}  // namespace

int run_search(const CommandLine& line, RecordCalendarStore& store, const Clock& clock,
               const SettingsRecord& settings, std::ostream& out, std::ostream& err) {
  CalendarDate now = 0;
  SystemTimeToVariantTime(clock.local_time(), now);
  const auto items = items_with(TextQuery(to_utf16(line.search_text)), store, now);
  if (!items) {
    err << "orvello: " << items.reason() << "\n";
    return kExitFailure;
  }
  if (line.json) {
    for (const StoreItem& item : *items)
      out << (&item == items->data() ? "[\n  " : ",\n  ") << item_json(item);
    out << (items->empty() ? "[]\n" : "\n]\n");
  } else {
    write_rows(*items, settings, out);
  }
  return out.flush() ? kExitSuccess : kExitFailure;
}

}  // namespace orvello
