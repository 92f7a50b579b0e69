#include "hosts/headless/memory_store.h"

#include <algorithm>

#include "calendar/rule_days.h"
#include "store/field_changes.h"
#include "store/record_rules.h"

namespace orvello {

MemoryStore::MemoryStore(const Clock& clock) : RecordCalendarStore(clock) {
  const auto into = [this](std::vector<AppointmentRecord>& box) {
    return [this, &box](const AppointmentRecord& record) {
      if (faults.send.empty()) box.push_back(record);
      return faults.send;
    };
  };
  set_transport(into(sent), into(beamed));
}

bool MemoryStore::read(int count) {
  reads += count;
  if (!faults.unreadable && !call_fails()) {
    if (faults.read <= 0) return true;
    faults.read -= count;
    if (faults.read > 0) return true;
  }
  faults.read = 0;
  fail(faults.reason.empty() ? "The store cannot be read." : faults.reason);
  return false;
}

// Its row, its notes, its exceptions and its recipients.
bool MemoryStore::read_whole(const AppointmentRecord& record) {
  auto count = 2 + record.exceptions.size() + record.recipients.size();
  for (const auto& exception : record.exceptions) count += exception.recipients.size();
  return read(static_cast<int>(count));
}

bool MemoryStore::may_write() {
  ++writes;
  const bool fails = faults.save || call_fails();
  problem_ = fails ? faults.reason : "";
  return !fails || spoil();
}

bool MemoryStore::spoil() {
  spoilt_ = before_.has_value();
  return false;
}

void MemoryStore::note(StoreChange change) {
  next_state();
  if (before_)
    changes_.push_back(change);
  else
    note_change(change, false);
}

bool MemoryStore::begin() {
  if (before_ || !may_write()) return false;
  before_ = contents_;
  spoilt_ = false;
  changes_.clear();
  return true;
}

bool MemoryStore::commit() {
  if (!before_) return false;
  if (spoilt_ || !may_write()) {
    rollback();
    return false;
  }
  before_.reset();
  for (const StoreChange change : changes_) note_change(change, false);
  return true;
}

void MemoryStore::put_back(Contents contents) {
  contents_ = std::move(contents);
  time_.forget_zones();
  next_state();
}

void MemoryStore::rollback() {
  if (before_) contents_ = std::move(*before_);
  before_.reset();
  time_.forget_zones();
  next_state();
}

Result<std::optional<std::int32_t>> MemoryStore::oid_of_uid(std::string_view uid) {
  using Oid = Result<std::optional<std::int32_t>>;
  if (!read()) return Oid::failure(problem_);
  for (const auto& [oid, record] : contents_.records)
    if (record.uid == uid) return oid;
  return std::nullopt;
}

Result<std::optional<AppointmentRecord>> MemoryStore::load(std::int32_t oid) {
  using Loaded = Result<std::optional<AppointmentRecord>>;
  problem_.clear();
  const auto found = contents_.records.find(oid);
  if (found == contents_.records.end()) {
    if (!read()) return Loaded::failure(problem_);
    return std::nullopt;
  }
  AppointmentRecord record = found->second;
  if (!read_whole(record) || !localize_record(record, time_)) return Loaded::failure(problem_);
  return record;
}

std::int32_t MemoryStore::put(const AppointmentRecord& record) { return put(record, false); }

bool MemoryStore::restore(const AppointmentRecord& record) {
  return restores() && put(record, true) != 0;
}

// `back`: the record may be gone, and comes back under its number.
std::int32_t MemoryStore::put(const AppointmentRecord& record, bool back) {
  if (!may_write()) return 0;
  AppointmentRecord stored = record;
  if (!complete_record(stored, time_) || (!keeps_all && !simplify(stored))) return spoil(), 0;
  const auto same_uid = oid_of_uid(stored.uid);
  if (!same_uid) return spoil(), 0;
  if (*same_uid && **same_uid != stored.oid) {
    fail("An appointment with the UID " + stored.uid + " is already in the store.");
    return spoil(), 0;
  }
  const bool exists = contents_.records.count(stored.oid) != 0;
  if (stored.oid != 0 && !exists && !back) {
    fail("There is no appointment with the number " + std::to_string(stored.oid) + ".");
    return spoil(), 0;
  }
  if (stored.oid == 0) stored.oid = contents_.next_oid++;
  note(exists ? StoreChange::changed : StoreChange::created);
  const std::int32_t oid = stored.oid;
  contents_.records[oid] = std::move(stored);
  return oid;
}

bool MemoryStore::erase(std::int32_t oid) {
  if (!may_write()) return false;
  if (contents_.records.erase(oid) == 0) {
    fail("There is no appointment with the number " + std::to_string(oid) + ".");
    return spoil();
  }
  note(StoreChange::deleted);
  return true;
}

Result<std::vector<std::int32_t>> MemoryStore::oids(std::optional<Day> from_day,
                                                    std::optional<Day> to_day) {
  DayBounds bounds;
  bounds.end_from = from_day.value_or(kFirstDay);
  bounds.start_to = to_day.value_or(kLastDay);
  OccurrenceList list;
  if (!query({bounds, from_day || to_day}, list))
    return Result<std::vector<std::int32_t>>::failure(problem_);
  return list.oids();
}

bool MemoryStore::put_zone(const Zone& zone) {
  if (!may_write()) return false;
  if (!keeps_all) return RecordCalendarStore::put_zone(zone);
  contents_.zones.insert_or_assign(zone.name(), zone);
  time_.forget_zones();
  next_state();
  return true;
}

Result<std::optional<Zone>> MemoryStore::zone(std::string_view name) {
  if (!read()) return Result<std::optional<Zone>>::failure(problem_);
  if (!keeps_all) return RecordCalendarStore::zone(name);
  const auto found = contents_.zones.find(name);
  if (found == contents_.zones.end()) return std::nullopt;
  return found->second;
}

bool MemoryStore::put_foreign(const ForeignComponent& component) {
  if (!may_write()) return false;
  if (!keeps_all) return RecordCalendarStore::put_foreign(component);
  auto& list = contents_.foreign;
  const auto found = std::find_if(list.begin(), list.end(),
                                  [&](const auto& other) { return other.key == component.key; });
  if (component.text.empty()) {
    if (found != list.end()) list.erase(found);
  } else if (found == list.end()) {
    list.push_back(component);
  } else {
    found->text = component.text;
  }
  return true;
}

Result<std::vector<ForeignComponent>> MemoryStore::foreign() {
  if (!read(1 + static_cast<int>(contents_.foreign.size())))
    return Result<std::vector<ForeignComponent>>::failure(problem_);
  return contents_.foreign;
}

std::optional<std::vector<StoreContact>> MemoryStore::contacts() {
  problem_ = faults.contacts ? faults.reason : "";
  if (faults.contacts || !read(1 + static_cast<int>(contents_.contacts.size())))
    return std::nullopt;
  std::vector<StoreContact> list;
  for (const auto& [oid, contact] : contents_.contacts) list.push_back(contact);
  return list;
}

std::int32_t MemoryStore::put_contact(const StoreContact& contact) {
  if (!may_write()) return 0;
  if (contact.oid != 0 && contents_.contacts.count(contact.oid) == 0) return spoil(), 0;
  StoreContact stored = contact;
  if (stored.oid == 0) stored.oid = contents_.next_oid++;
  const std::int32_t oid = stored.oid;
  contents_.contacts[oid] = std::move(stored);
  return oid;
}

bool MemoryStore::erase_contact(std::int32_t oid) {
  if (!may_write()) return false;
  contents_.cards.erase(oid);
  return contents_.contacts.erase(oid) != 0 || spoil();
}

bool MemoryStore::put_card(const ContactCard& card) {
  if (!may_write()) return false;
  if (keeps_all) contents_.cards[card.oid] = card;
  return true;
}

Result<std::vector<ContactCard>> MemoryStore::card_names() {
  using Names = Result<std::vector<ContactCard>>;
  if (!read(1 + static_cast<int>(contents_.cards.size()))) return Names::failure(problem_);
  std::vector<ContactCard> names;
  for (const auto& [oid, card] : contents_.cards) names.push_back({oid, card.uid, ""});
  return names;
}

Result<std::string> MemoryStore::card_text(std::int32_t oid) {
  if (!read()) return Result<std::string>::failure(problem_);
  const auto found = contents_.cards.find(oid);
  return found == contents_.cards.end() ? std::string() : found->second.text;
}

std::optional<std::vector<std::pair<Text, int>>> MemoryStore::category_texts(int folder) {
  problem_.clear();
  std::map<Text, int> uses;
  if (folder == kFolderCalendar)
    for (const auto& [oid, record] : contents_.records) ++uses[record.fields.categories];
  if (folder == kFolderContacts)
    for (const auto& [oid, contact] : contents_.contacts) ++uses[contact.categories];
  uses.erase(Text());
  if (!read(1 + static_cast<int>(uses.size()))) return std::nullopt;
  return std::vector<std::pair<Text, int>>(uses.begin(), uses.end());
}

std::optional<Text> MemoryStore::category_text(int folder) {
  const auto told = category_texts_.find(folder);
  return told != category_texts_.end() ? told->second : RecordCalendarStore::category_text(folder);
}

bool MemoryStore::initialize() {
  if (faults.initialize) return false;
  ++initialized;
  return true;
}

std::unique_ptr<StoreApplication> MemoryStore::create_application(bool notify) {
  if (faults.create_application > 0) {
    --faults.create_application;
    return nullptr;
  }
  ++applications_created;
  return RecordCalendarStore::create_application(notify);
}

CalendarStore::Registration MemoryStore::register_server() {
  ++registrations;
  return faults.registration;
}

// Of one object what is wanted, and what every collection must know.
OccurrenceList::Summary MemoryStore::summary_of(const AppointmentFields& fields, std::int32_t oid,
                                                bool recurring, AppointmentFieldSet wanted) {
  AppointmentFields read;
  for (const AppointmentField field :
       {AppointmentField::start, AppointmentField::end, AppointmentField::all_day})
    wanted.add(field);
  take_fields(read, fields, wanted);
  properties += wanted.size() + 2;  // its id, and whether it recurs
  return make_summary(read, oid, recurring);
}

bool MemoryStore::query(const ItemQuery& query, OccurrenceList& list) {
  ++queries;
  problem_ = faults.fetch ? faults.reason : "";
  if (faults.fetch || !read()) return false;
  SeriesScratch scratch;
  for (const auto& [oid, record] : contents_.records) {
    if (query.stopped() || !read(1 + static_cast<int>(record.exceptions.size()))) return false;
    if (record.recurring() && query.occurrences) {
      auto series = make_series(record, time_);
      if (!series) return false;
      series->summary = summary_of(record.fields, oid, true, query.wanted);
      append_occurrences(*series, query.bounds, time_, scratch, list);
      continue;
    }
    const auto zone = time_.zone(record.zone);
    if (!zone) return false;
    const auto span = time_.shown(record.start, record.end, *zone, record.fields.all_day);
    if (!query.bounds.admit(day_of(span.start), day_of(span.end))) continue;
    list.show(summary_of(record.fields, oid, record.recurring(), query.wanted));
    list.add(span.start, span.end);
  }
  return true;
}

Result<std::vector<AppointmentRecord>> MemoryStore::records_after(std::int32_t after) {
  constexpr std::size_t kAtOnce = 3;  // so that tests have to go on
  using Records = Result<std::vector<AppointmentRecord>>;
  problem_ = faults.fetch ? faults.reason : "";
  if (faults.fetch || !read()) return Records::failure(problem_);
  std::vector<AppointmentRecord> some;
  for (auto at = contents_.records.upper_bound(after); at != contents_.records.end(); ++at) {
    if (some.size() == kAtOnce) break;
    if (!read_whole(at->second)) return Records::failure(problem_);
    some.push_back(at->second);
  }
  return some;
}

bool MemoryStore::folder_reachable(int folder) const {
  return !faults.folder && RecordCalendarStore::folder_reachable(folder);
}

bool MemoryStore::allows_logon() {
  problem_ = faults.logon ? faults.reason : "";
  return !faults.logon;
}

Result<std::optional<AppointmentRecord>> MemoryStore::fetch(std::int32_t oid) {
  problem_ = faults.fetch ? faults.reason : "";
  if (faults.fetch) return Result<std::optional<AppointmentRecord>>::failure(problem_);
  return load(oid);
}

}  // namespace orvello
