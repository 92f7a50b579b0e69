#include "cli/agenda_item.h"

#include <algorithm>
#include <cstdio>

#include "base/terminal_text.h"
#include "calendar/date_pictures.h"
#include "calendar/iso_date.h"
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

}  // namespace

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

std::string in_one_line(TextView text) {
  Text line(text);
  for (char16_t& c : line)
    if (is_terminal_control(c)) c = u' ';
  return to_utf8(line);
}

std::string item_row(const StoreItem& item, Day day, bool clock24) {
  std::string row = "  " + to_utf8(day_label(item, day, clock24));
  row.resize(std::max<std::size_t>(row.size() + 2, 19), ' ');
  row += in_one_line(shown_subject(item));
  if (!item.summary->location.empty())
    row += " " + in_one_line(location_label(item.summary->location));
  return row + "\n";
}

Text agenda_date_picture(const LocaleData& locale) {
  Text picture;
  LongDatePicture(locale.long_date_order == u"0"   ? 3
                  : locale.long_date_order == u"1" ? 4
                                                   : 5,
                  picture);
  return picture;
}

}  // namespace orvello
