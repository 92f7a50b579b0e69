#include "store/day_label.h"

#include "calendar/date_text.h"

namespace orvello {
namespace {

Text time_text(CalendarDate date, bool clock24) {
  SystemTime time;
  VariantTimeToSystemTime(date, time);
  return AppointmentTimeText(time.hour, time.minute, clock24);
}

constexpr std::size_t kWholeLocation = 29;

}  // namespace

CalendarDate shown_end(const StoreItem& item) {
  if (!item.summary->all_day) return item.end;
  return joined(whole_day(item.end), (23 * 60 + 59) / 1440.0);
}

bool touches_day(const StoreItem& item, Day day) {
  return whole_day(item.start) <= day && day <= whole_day(shown_end(item));
}

Text day_label(const StoreItem& item, Day day, bool clock24) {
  if (item.summary->all_day) return u"All Day";
  const bool dated = item.start != kNoDate;
  const Text start = dated ? time_text(item.start, clock24) : Text(u"---");
  const Text end = dated ? time_text(item.end, clock24) : Text(u"---");
  const bool began_before = whole_day(item.start) < day;
  const bool goes_on = whole_day(item.end) > day;
  if (began_before && goes_on) return u"multiday";
  if (goes_on) return format(u"%s-multiday", start);
  if (began_before) return format(u"multiday-%s", end);
  return format(u"%s-%s", start, end);
}

Text shown_subject(TextView subject) {
  const bool blank = subject.find_first_not_of(u" \t\r\n") == TextView::npos;
  return blank ? Text(kNoSubject) : Text(subject);
}

Text shown_subject(const StoreItem& item) {
  const Text subject = shown_subject(item.summary->subject);
  if (item.many == 0) return subject;
  if (item.many < 0) return u"and more: " + subject;
  Text number = to_utf16(std::to_string(item.many));
  for (std::size_t at = number.size(); at > 3; at -= 3) number.insert(at - 3, 1, u',');
  return u"and " + number + u" more: " + subject;
}

Text location_label(TextView location) {
  if (location.size() <= kWholeLocation) return format(u"[%s]", location);
  return format(u"[%s...]", cut(location, kWholeLocation));
}

Text first_category(TextView categories) {
  return Text(categories.substr(0, categories.find(u',')));
}

}  // namespace orvello
