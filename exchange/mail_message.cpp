#include "exchange/mail_message.h"

#include <algorithm>
#include <cstdio>

#include "base/hash.h"
#include "exchange/base64.h"

namespace orvello {
namespace {

constexpr std::size_t kLongestWord = 45;  // bytes that one encoded word holds
constexpr std::size_t kBase64Line = 76;

std::string base64_lines(std::string_view bytes) {
  const std::string whole = to_base64(bytes);
  std::string lines;
  for (std::size_t i = 0; i < whole.size(); i += kBase64Line)
    lines.append(whole, i, kBase64Line).append("\n");
  return lines;
}

std::string mailbox(const StoreRecipient& person) {
  const std::string address = to_utf8(person.address);
  if (person.name.empty()) return address;
  return encoded_words(person.name) + " <" + address + ">";
}

std::string date_text(UtcSeconds moment) {
  constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  SystemTime time;
  VariantTimeToSystemTime(to_calendar_date(local_at_offset(moment, 0)), time);
  char text[48];
  std::snprintf(text, sizeof text, "%s, %d %s %d %02d:%02d:%02d +0000", kDays[time.day_of_week],
                time.day, kMonths[std::max(time.month, 1) - 1], time.year, time.hour, time.minute,
                time.second);
  return text;
}

// "2026-05-04 09:00", for people in any country.
std::string plain_moment(CalendarDate date, bool with_time) {
  SystemTime time;
  VariantTimeToSystemTime(date, time);
  char text[48];
  std::snprintf(text, sizeof text, with_time ? "%04d-%02d-%02d %02d:%02d" : "%04d-%02d-%02d",
                time.year, time.month, time.day, time.hour, time.minute);
  return text;
}

std::string plain_description(const AppointmentRecord& record, const Clock& clock) {
  const AppointmentFields& fields = record.fields;
  const bool timed = !fields.all_day;
  std::string text = to_utf8(fields.subject) + "\r\n" + plain_moment(fields.start, timed) + " - " +
                     plain_moment(fields.end, timed);
  if (timed && !clock.zone_name().empty()) text += " (" + clock.zone_name() + ")";
  if (record.recurring()) text += ", repeated";
  if (!fields.location.empty()) text += "\r\n" + to_utf8(fields.location);
  if (!fields.body.empty()) text += "\r\n\r\n" + to_utf8(fields.body);
  return text + "\r\n";
}

}  // namespace

std::string encoded_words(TextView text) {
  const std::string utf8 = to_utf8(text);
  const bool plain = std::all_of(utf8.begin(), utf8.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ' ||
           c == '-';
  });
  if (plain && utf8.size() <= kLongestWord) return utf8;
  std::string words;
  for (std::size_t at = 0; at < utf8.size();) {
    std::size_t end = std::min(at + kLongestWord, utf8.size());
    while (end < utf8.size() && end > at + 1 &&
           (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80)
      --end;
    words += (words.empty() ? "=?UTF-8?B?" : "\n =?UTF-8?B?") +
             to_base64(std::string_view(utf8).substr(at, end - at)) + "?=";
    at = end;
  }
  return words;
}

std::string meeting_mail(const MeetingRequest& request, const AppointmentRecord& record,
                         const StoreRecipient& organizer, const Clock& clock) {
  const std::string mark = StableHash().add(request.calendar).text();
  const std::string address = to_utf8(organizer.address);
  std::string mail = "From: " + mailbox(organizer) + "\nTo: ";
  for (std::size_t i = 0; i < request.attendees.size(); ++i)
    mail += (i > 0 ? ",\n " : "") + mailbox(request.attendees[i]);
  mail += "\nSubject: " + encoded_words(record.fields.subject) +
          "\nDate: " + date_text(clock.utc_now()) + "\nMessage-ID: <" + mark + ".orvello" +
          address.substr(address.find('@')) +
          ">\nMIME-Version: 1.0\nContent-Type: multipart/alternative; boundary=\"=_" + mark +
          "\"\n\n";
  const auto part = [&](const std::string& type, std::string_view content) {
    mail += "--=_" + mark + "\nContent-Type: " + type + "\nContent-Transfer-Encoding: base64\n\n" +
            base64_lines(content);
  };
  part("text/plain; charset=UTF-8", plain_description(record, clock));
  part("text/calendar; charset=UTF-8; method=REQUEST", request.calendar);
  return mail + "--=_" + mark + "--\n";
}

}  // namespace orvello
