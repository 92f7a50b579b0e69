#include "cli/agenda.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

#include "base/terminal_text.h"
#include "base/text.h"
#include "calendar/date_pictures.h"
#include "calendar/iso_date.h"
#include "settings/load_settings.h"
#include "settings/profiles.h"
#include "settings/setting_table.h"
#include "store/day_label.h"
#include "store/labels.h"

namespace orvello {
namespace {

std::string json_text(TextView text) {
  std::string out = "\"";
  for (std::size_t from = 0; from < text.size();) {
    const auto special = [](char16_t c) {
      return c == u'"' || c == u'\\' || is_terminal_control(c);
    };
    const auto end = std::find_if(text.begin() + from, text.end(), special) - text.begin();
    out += to_utf8(text.substr(from, end - from));
    from = static_cast<std::size_t>(end);
    if (from == text.size()) break;
    const char16_t c = text[from++];
    char escape[8];
    std::snprintf(escape, sizeof escape, is_terminal_control(c) ? "\\u%04x" : "\\%c", c);
    out += escape;
  }
  return out + '"';
}

std::string iso_date(Day day) { return iso_text(triple_of(day)); }

std::string iso_moment(CalendarDate date) {
  SystemTime time;
  VariantTimeToSystemTime(date, time);
  char text[96];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", time.year, time.month, time.day,
                time.hour, time.minute, time.second);
  return text;
}

const char* busy_word(BusyStatus status) {
  switch (status) {
    case BusyStatus::free:
      return "free";
    case BusyStatus::tentative:
      return "tentative";
    case BusyStatus::out_of_office:
      return "outOfOffice";
    case BusyStatus::busy:
      break;
  }
  return "busy";
}

std::string categories_json(TextView categories) {
  std::string out = "[";
  for (const Text& label : labels_in(categories)) {
    if (out.size() > 1) out += ", ";
    out += json_text(label);
  }
  return out + "]";
}

// Only on an item that stands for many, so that nothing changes where there is none.
std::string many_json(const StoreItem& item) {
  if (item.many == 0) return "";
  return ", \"occurrences\": " + (item.many > 0 ? std::to_string(item.many) : "null");
}

std::string item_json(const StoreItem& item) {
  const AppointmentSummary& summary = *item.summary;
  const bool dated = item.start != kNoDate;
  std::string start = "null", end = "null";
  if (dated && summary.all_day) {
    start = '"' + iso_date(whole_day(item.start)) + '"';
    end = '"' + iso_date(whole_day(item.end) + 1) + '"';
  } else if (dated) {
    start = '"' + iso_moment(item.start) + '"';
    end = '"' + iso_moment(item.end) + '"';
  }
  const auto truth = [](bool value) { return value ? "true" : "false"; };
  return "{\"oid\": " + std::to_string(summary.oid) + ", \"start\": " + start +
         ", \"end\": " + end + ", \"allDay\": " + truth(summary.all_day) +
         ", \"subject\": " + json_text(summary.subject) +
         ", \"location\": " + json_text(summary.location) +
         ", \"categories\": " + categories_json(summary.categories) +
         ", \"recurring\": " + truth(summary.recurring) + ", \"busyStatus\": \"" +
         busy_word(summary.busy_status) + "\", \"private\": " + truth(summary.sensitivity == 2) +
         ", \"reminderMinutes\": " +
         (summary.reminder_set ? std::to_string(summary.reminder_minutes) : "null") +
         many_json(item) + "}";
}

// A row is one line, and a blank looks better in it than a sign for what is not shown.
std::string one_line(TextView text) {
  Text line(text);
  for (char16_t& c : line)
    if (is_terminal_control(c)) c = u' ';
  return to_utf8(line);
}

std::string item_row(const StoreItem& item, Day day, bool clock24) {
  std::string row = "  " + to_utf8(day_label(item, day, clock24));
  row.resize(std::max<std::size_t>(row.size() + 2, 19), ' ');
  row += one_line(shown_subject(item));
  if (!item.summary->location.empty())
    row += " " + one_line(location_label(item.summary->location));
  return row + "\n";
}

Text date_picture(const LocaleData& locale) {
  Text picture;
  LongDatePicture(locale.long_date_order == u"0"   ? 3
                  : locale.long_date_order == u"1" ? 4
                                                   : 5,
                  picture);
  return picture;
}

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
  const Text picture = date_picture(settings.locale);
  HeldBack text(out);
  bool first_line = true, any = false;
  if (settings.activeprofilename != kAllProfile && !settings.profile_unread) {
    text += "Profile: " + one_line(settings.activeprofilename) + "\n";
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
