#include "cli/agenda.h"

#include <algorithm>
#include <ostream>

#include "base/text.h"
#include "calendar/date_pictures.h"
#include "cli/agenda_item.h"
#include "settings/load_settings.h"
#include "settings/profiles.h"
#include "settings/setting_table.h"
#include "store/day_label.h"

namespace orvello {
namespace {

// What is written is held back until it is much, so that a store that cannot be read leaves nothing
// half written in all but the largest cases.
class HeldBack {
 public:
  explicit HeldBack(std::ostream& out) : out_(out) {}
  HeldBack& operator+=(std::string_view piece) {
    text_ += piece;
    if (text_.size() > kMuch) flush();
    return *this;
  }
  void flush() {
    out_ << text_;
    text_.clear();
  }
  bool wanted() const { return static_cast<bool>(out_); }

 private:
  static constexpr std::size_t kMuch = 8 << 20;
  std::ostream& out_;
  std::string text_;
};

// Calls visit(items, first, last) for one part of the days after the other, with the occurrences
// that touch it, by start. It answers how much it wrote: what reaches over many parts and is
// written in one of them must not make those smaller.
template <typename Visit>
Result<bool> each_part(RecordCalendarStore& store, Day from, Day to, const HeldBack& out,
                       Visit visit) {
  constexpr std::size_t kFew = 2000, kMany = 50000;
  const auto application = store.create_application(false);
  const auto failure = [&] { return Result<bool>::failure(to_utf8(application->problem())); };
  const StoreReading reading(store);
  if (!reading || !application->logon(nullptr)) return failure();
  const auto folder = application->default_folder(kFolderCalendar);
  if (!folder) return failure();
  std::int64_t days = 31;
  for (Day first = from, last; first <= to && out.wanted(); first = last + 1) {
    last = std::min(first + days - 1, to);
    const auto items = folder->items();
    items->set_include_recurrences(true);
    items->sort(u"[Start]", false);
    std::vector<StoreItem> found;
    const bool whole = each_item(*items, restriction_to(first, last), [&](StoreItem& item) {
      if (whole_day(item.start) <= last && whole_day(shown_end(item)) >= first)
        found.push_back(std::move(item));
    });
    if (!whole) return failure();
    const std::size_t written = visit(found, first, last);
    if (written < kFew) days *= 4;
    if (written > kMany) days = std::max<std::int64_t>(days / 4, 1);
  }
  return true;
}

}  // namespace

void load_agenda_settings(SettingsRecord& settings, Registry& registry,
                          const SettingsVolume& volume, const LocaleData& locale) {
  load_locale_conventions(settings, locale);
  for (const TextView name : {u"timeformat", u"activeprofilename"})
    load_setting(registry, *find_setting(name), 0, locale, settings);
  load_active_profile(volume, settings);  // which makes no files
}

Result<bool> write_agenda_text(RecordCalendarStore& store, Day from, Day to,
                               const SettingsRecord& settings, std::ostream& out) {
  const Text picture = agenda_date_picture(settings.locale);
  HeldBack text(out);
  bool first_line = true, any = false;
  if (settings.activeprofilename != kAllProfile && !settings.profile_unread) {
    text += "Profile: " + in_one_line(settings.activeprofilename) + "\n";
    first_line = false;
  }
  const auto write = [&](const std::vector<StoreItem>& items, Day first, Day last) {
    // One row an occurrence and day, so that the cost follows what is printed.
    std::vector<std::pair<Day, const StoreItem*>> rows;
    for (const StoreItem& item : items) {
      if (!profileAllowsCategory(settings, item.summary->categories)) continue;
      const Day end = std::min(whole_day(shown_end(item)), last);
      for (Day day = std::max(whole_day(item.start), first); day <= end; ++day)
        rows.emplace_back(day, &item);
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    Day shown = first - 1;
    for (const auto& [day, item] : rows) {
      if (day != shown) {
        if (!first_line) text += "\n";
        text += to_utf8(FormatDatePicture(picture, civil_of(day), settings.locale));
        text += "\n";
        shown = day;
      }
      text += item_row(*item, day, settings.timeformat == 1);
      first_line = false;
      any = true;
    }
    return rows.size();
  };
  const auto read = each_part(store, from, to, text, write);
  if (!read) return read;
  if (!any) text += "No Appointments\n";
  text.flush();
  return true;
}

Result<bool> write_agenda_json(RecordCalendarStore& store, Day from, Day to, std::ostream& out) {
  HeldBack text(out);
  bool any = false;
  const auto write = [&](const std::vector<StoreItem>& items, Day first, Day) {
    std::size_t written = 0;
    for (const StoreItem& item : items) {
      if (first != from && whole_day(item.start) < first) continue;  // stands above
      text += any ? ",\n  " : "[\n  ";
      text += item_json(item);
      any = true;
      ++written;
    }
    return written;
  };
  const auto read = each_part(store, from, to, text, write);
  if (!read) return read;
  text += any ? "\n]\n" : "[]\n";
  text.flush();
  return true;
}

}  // namespace orvello
