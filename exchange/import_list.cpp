#include "exchange/import_list.h"

#include <algorithm>
#include <functional>
#include <tuple>

namespace orvello {
namespace {

constexpr int kLongestWait = 1 << 15;  // days: 90 years

bool same_occurrence(const AppointmentException& a, const AppointmentException& b) {
  if (a.original_start != b.original_start || a.deleted != b.deleted) return false;
  return a.deleted || (std::tie(a.fields, a.start, a.end, a.zone, a.recipients) ==
                       std::tie(b.fields, b.start, b.end, b.zone, b.recipients));
}

// To a person: what only files say of it is no change.
bool same_appointment(const AppointmentRecord& a, const AppointmentRecord& b) {
  const auto values = [](const AppointmentRecord& one) {
    return std::tie(one.fields, one.zone, one.start, one.end, one.pattern, one.rules,
                    one.recipients);
  };
  return values(a) == values(b) &&
         std::equal(a.exceptions.begin(), a.exceptions.end(), b.exceptions.begin(),
                    b.exceptions.end(), same_occurrence);
}

}  // namespace

// One that comes again is the same to the person, as it comes last.
ImportItem& ImportList::place_of(const AppointmentRecord& record) {
  const std::size_t hash = std::hash<std::string>()(record.uid);
  const auto [place, added] = places_.try_emplace(hash, items_.size());
  if (added) items_.emplace_back();
  ImportItem& item = items_[place->second];
  item.all_day = record.fields.all_day;
  item.recurring = record.recurring();
  item.start = to_seconds(record.fields.start);
  item.subject = record.fields.subject;
  return item;
}

void ImportList::put(const AppointmentRecord& record, bool fresh,
                     const AppointmentRecord* earlier) {
  using Change = ImportItem::Change;
  place_of(record).change = fresh                                           ? Change::added
                            : earlier && same_appointment(record, *earlier) ? Change::unchanged
                                                                            : Change::changed;
}

void ImportList::cancelled(const AppointmentRecord& record) {
  place_of(record).change = ImportItem::Change::cancelled;
}

void ImportList::put(const StoreContact& contact, bool fresh, bool as_stored) {
  using Change = ImportItem::Change;
  ImportItem& item = items_.emplace_back();
  item.change = fresh ? Change::added : as_stored ? Change::unchanged : Change::changed;
  item.contact = true;
  item.subject = contact.file_as;
}

std::vector<ImportItem> ImportList::take_items() {
  places_.clear();
  std::stable_sort(items_.begin(), items_.end(), [](const ImportItem& a, const ImportItem& b) {
    return std::tie(a.contact, a.start, a.subject) < std::tie(b.contact, b.start, b.subject);
  });
  return std::move(items_);
}

// Short spans first: most imports have something soon, and a long one may hold all of the calendar.
std::optional<Day> FreshAppointments::first_day(RecordStore& store, Day today) {
  std::sort(oids_.begin(), oids_.end());
  const auto any_in = [&](int from, int to) -> std::optional<bool> {
    const auto there = store.oids(today + from, today + to);
    if (!there) return std::nullopt;
    return std::any_of(there->begin(), there->end(), [&](std::int32_t oid) {
      return std::binary_search(oids_.begin(), oids_.end(), oid);
    });
  };
  int first = 0, last = 0;
  for (int span = 1;; span *= 2) {
    const auto any = oids_.empty() ? false : any_in(first, last);
    if (!any || (!*any && last >= kLongestWait)) return std::nullopt;
    if (*any) break;
    first = last + 1;
    last += span;
  }
  while (first < last) {
    const int middle = first + (last - first) / 2;
    const auto any = any_in(first, middle);
    if (!any) return std::nullopt;
    *any ? last = middle : first = middle + 1;
  }
  return today + first;
}

}  // namespace orvello
