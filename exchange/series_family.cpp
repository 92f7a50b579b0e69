#include "exchange/series_family.h"

#include "calendar/rule_text.h"
#include "exchange/series_parts.h"

namespace orvello {

bool same_rule(const std::optional<RecurrencePattern>& a,
               const std::optional<RecurrencePattern>& b) {
  if (a.has_value() != b.has_value()) return false;
  return !a || *a == *b || rule_from_pattern(*a) == rule_from_pattern(*b);
}

bool is_start_alone(const AppointmentRecord& record) {
  return record.rules == "RDATE:" + moment_text(record.start);
}

std::optional<AppointmentRecord> SeriesFamilies::record_of(const std::string& uid) {
  const auto oid = store_.oid_of_uid(uid);
  failed_ |= !oid;
  if (!oid || !*oid) return std::nullopt;
  auto record = store_.load(**oid);
  failed_ |= !record;
  return record ? std::move(*record) : std::nullopt;
}

// The later ones may begin at another time of the day: their distance says so. The first one's
// occurrences are what the file names them by.
bool SeriesFamilies::is_as_read(const AppointmentRecord& record, bool first) {
  ParsedComponent text;
  const std::string_view shown = shown_component(record.residue);
  const auto read = !shown.empty() && text.parse(shown, 1) ? read_(text.root()) : std::nullopt;
  return read && same_rule(record.pattern, read->record.pattern) &&
         (record.rules == read->record.rules ||
          (is_start_alone(record) && !read->record.recurring())) &&
         record.zone == read->record.zone && record.fields.all_day == read->record.fields.all_day &&
         (first ? record.start == read->record.start
                : day_of(record.start) == day_of(read->record.start));
}

bool SeriesFamilies::stands(const std::string& uid) {
  if (const auto known = known_.find(uid); known != known_.end()) return known->second;
  const auto first = record_of(uid);
  bool stands = first && is_as_read(*first, true);
  if (stands)
    for (const PartName& part : parts_of(first->residue, uid)) {
      const auto record = record_of(part.uid);
      stands = stands && record && is_as_read(*record, false);
    }
  return known_[uid] = stands;
}

}  // namespace orvello
