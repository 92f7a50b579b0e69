#include "store/pim/pim_store.h"

#include <algorithm>

#include "store/pim/pim_application.h"
#include "store/pim/pim_folder.h"
#include "store/record_rules.h"
#include "store/series_halves.h"

namespace orvello {
namespace {

// What the platform's documentation allows: years 1900 to 2999, and so many units of text.
constexpr Day kFirstKnownDay{2};
constexpr Day kAfterKnownDays{401769};
constexpr std::size_t kMostSubject = 4096, kMostLocation = 1023;

std::string no_appointment(std::int32_t oid) {
  return "There is no appointment with the number " + std::to_string(oid) + ".";
}

}  // namespace

PimStore::PimStore(const Clock& clock, PimPlatform platform)
    : RecordCalendarStore(clock), platform_(std::move(platform)), uids_(platform_.uids) {
  if (platform_.generation == 3) form_.all_day_end = AllDayEnd::next_midnight;
  set_posts_unasked(platform_.generation != 3);
  set_transport([this](const AppointmentRecord& record) { return send_item(record); }, {});
}

PimStore::~PimStore() = default;

// What the platform answered is told to nobody: to a person its numbers say nothing.
void PimStore::cannot_read() { fail("The device's calendar store could not be read."); }

bool PimStore::cannot_write() {
  return refused_write("The device's calendar store could not be written.");
}

bool PimStore::refused_write(std::string reason) {
  spoilt_ = spoilt_ || writing_;
  return refuse(std::move(reason));
}

bool PimStore::busy() const {
  const HRESULT last = caller_.last();
  return !problem_.empty() && (last == HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION) ||
                               last == HRESULT_FROM_WIN32(ERROR_LOCK_VIOLATION) ||
                               last == HRESULT_FROM_WIN32(ERROR_BUSY));
}

std::optional<PimObject> PimStore::folder(int number) {
  auto folder = open_.empty()
                    ? std::nullopt
                    : open_.front()->object().made_by(PimName::get_default_folder, PimKind::folder,
                                                      PimValue::number(number));
  if (folder && *folder) return folder;
  cannot_read();
  return std::nullopt;
}

std::optional<PimObject> PimStore::folder_items(int number) {
  const auto from = folder(number);
  auto items = from ? from->part(PimName::items, PimKind::items) : std::nullopt;
  if (!items) cannot_read();
  return items;
}

std::unique_ptr<StoreItems> PimStore::items_of(const PimObject& folder) {
  problem_.clear();
  auto items = folder.part(PimName::items, PimKind::items);
  if (!items) return cannot_read(), nullptr;
  return std::make_unique<PimItems>(std::move(*items), form_, numbers_, time_,
                                    [this] { cannot_read(); });
}

std::optional<PimObject> PimStore::item(std::int32_t oid) {
  auto found = open_.empty() ? std::nullopt
                             : open_.front()->object().made_by(
                                   PimName::get_item_from_oid, PimKind::appointment,
                                   PimValue::number(numbers_.of_platform(oid)));
  if (found) look_for_ink(*found);
  if (found || (!open_.empty() && caller_.last() == E_INVALIDARG))
    return found ? std::move(found) : std::optional<PimObject>(std::in_place);
  cannot_read();
  return std::nullopt;
}

void PimStore::look_for_ink(const PimObject& item) {
  if (item && form_.ink && !item.knows(PimName::body_ink))
    form_.ink = item.last_result() != DISP_E_UNKNOWNNAME;
}

std::optional<AppointmentRecord> PimStore::record_of(const PimObject& item, std::int32_t oid,
                                                     bool ink) {
  const std::int32_t number = numbers_.of_platform(oid);
  auto record = read_record(item, oid, uids_.of(number), ink, form_, time_);
  if (!record) return cannot_read(), std::nullopt;
  if (!uids_.meets(number, PimUids::mark_of(record->start, record->fields.subject)))
    record->uid = uids_.of(number);
  const auto written = modified_.find(oid);
  if (written != modified_.end()) record->modified = written->second;
  return record;
}

Result<std::optional<AppointmentRecord>> PimStore::load(std::int32_t oid) {
  using Loaded = Result<std::optional<AppointmentRecord>>;
  problem_.clear();
  const auto found = item(oid);
  if (!found) return Loaded::failure(problem_);
  if (!*found) return std::nullopt;
  auto record = record_of(*found, oid, true);
  if (!record) return Loaded::failure(problem_);
  return record;
}

Result<std::optional<std::int32_t>> PimStore::oid_of_uid(std::string_view uid) {
  using Known = Result<std::optional<std::int32_t>>;
  problem_.clear();
  if (!uids_.read()) return Known::failure(uids_.problem());
  const std::int32_t number = uids_.number_of(uid);
  if (number == 0) return std::nullopt;
  const std::int32_t oid = numbers_.known(number);
  const auto found = item(oid);
  if (!found) return Known::failure(problem_);
  if (!*found) return uids_.forget(number), std::nullopt;
  AppointmentFields fields;
  if (!read_fields(*found, {AppointmentField::start, AppointmentField::subject}, form_, fields))
    return cannot_read(), Known::failure(problem_);
  const auto seen = PimUids::mark_of(to_seconds(fields.start), fields.subject);
  return uids_.meets(number, seen) ? std::optional(oid) : std::nullopt;
}

void PimStore::name(std::int32_t oid, const AppointmentRecord& record) {
  uids_.name(numbers_.of_platform(oid), record.uid,
             PimUids::mark_of(record.start, record.fields.subject));
}

// What cannot be written now is written with the next one.
void PimStore::write_uids() {
  if (!writing_) static_cast<void>(uids_.write());
}

void PimStore::note(StoreChange change) {
  next_state();
  if (window_) return;  // the platform tells
  if (writing_)
    changes_.push_back(change);
  else
    note_change(change, false);
}

bool PimStore::begin() {
  if (writing_ || open_.empty()) return refuse(open_.empty() ? "The store is not open." : "");
  problem_.clear();
  written_.clear();
  changes_.clear();
  spoilt_ = false;
  writing_ = true;
  return true;
}

bool PimStore::commit() {
  if (!writing_) return false;
  if (spoilt_ || !(uids_.write() || refuse(uids_.problem()))) {
    rollback();
    return false;
  }
  writing_ = false;
  written_.clear();
  for (const StoreChange change : changes_) note_change(change, false);
  return true;
}

// The reason for which it is taken back is what a person is told, unless it cannot be.
void PimStore::rollback() {
  if (!writing_) return;
  writing_ = false;
  const std::string reason = problem_;
  bool whole = true;
  for (auto one = written_.rbegin(); one != written_.rend(); ++one)
    whole = take_back(*one) && whole;
  written_.clear();
  next_state();
  write_uids();
  fail(whole ? reason : "The device's calendar store could not be brought back to what it was.");
}

bool PimStore::take_back(const Written& written) {
  if (!written.before) return remove(written.oid);
  const auto found = item(written.oid);
  if (!found) return false;
  if (!*found) return bring_back(*written.before);
  const auto now = record_of(*found, written.oid, true);
  int saves = 0;
  return now && write_record(*found, &*now, *written.before, form_, saves);
}

// Makes the record what the platform has a place for.
bool PimStore::simplify_all(AppointmentRecord& record) {
  if (!complete_record(record, time_)) return false;
  if (!record.rules.empty()) {
    const auto zone = time_.zone(record.zone);
    if (!zone) return false;
    set_recurrence_of(record, recurrence_of(record, *zone));
  }
  if (!simplify(record) || !complete_record(record, time_)) return false;
  record.fields.subject = cut(record.fields.subject, kMostSubject);
  record.fields.location = cut(record.fields.location, kMostLocation);
  for (AppointmentException& one : record.exceptions) {
    one.fields.subject = cut(one.fields.subject, kMostSubject);
    one.fields.location = cut(one.fields.location, kMostLocation);
  }
  return record.rules.empty() ||
         refuse("The device's calendar store has no pattern that holds this recurrence.");
}

bool PimStore::has_place_for(const AppointmentRecord& record) {
  AppointmentRecord stored = record;
  const auto known = [](LocalSeconds moment) {
    return (day_of(moment) >= kFirstKnownDay && day_of(moment) < kAfterKnownDays) ||
           moment == to_seconds(kNoDate);
  };
  const bool fits = simplify_all(stored) && known(stored.start) && known(stored.end);
  problem_.clear();
  return fits;
}

bool PimStore::fit(AppointmentRecord& record) {
  if (!simplify_all(record)) return false;
  const auto other = oid_of_uid(record.uid);
  if (!other) return refuse(other.reason());
  return !*other || **other == record.oid ||
         refuse("An appointment with the UID " + record.uid + " is already in the store.");
}

std::int32_t PimStore::put(const AppointmentRecord& record) {
  problem_.clear();
  AppointmentRecord stored = record;
  const std::int32_t oid = !fit(stored)      ? 0
                           : stored.oid == 0 ? put_new(stored)
                                             : put_existing(stored);
  if (oid == 0) refused_write(problem_);
  write_uids();
  return oid;
}

std::optional<PimObject> PimStore::made_item(PimKind kind, std::int32_t type) {
  if (open_.empty()) return std::nullopt;
  return open_.front()->object().made_by(PimName::create_item, kind, PimValue::number(type));
}

std::optional<PimObject> PimStore::contact_item(std::int32_t oid) {
  if (oid == 0) return made_item(PimKind::contact, kPimContactItem);
  if (open_.empty()) return std::nullopt;
  return open_.front()->object().made_by(PimName::get_item_from_oid, PimKind::contact,
                                         PimValue::number(oid));
}

// With the number that it had, when it had one.
std::int32_t PimStore::put_new(const AppointmentRecord& record) {
  const auto made = made_item(PimKind::appointment, kPimAppointmentItem);
  if (made) look_for_ink(*made);
  int saves = 0;
  const bool saved = made && *made && write_record(*made, nullptr, record, form_, saves);
  const auto platform = saved ? made->number(PimName::oid) : std::nullopt;
  if (!platform || *platform == 0) {
    if (saves > 0) made->call(PimName::remove);
    return cannot_write(), 0;
  }
  const std::int32_t oid =
      record.oid == 0 ? numbers_.known(*platform) : numbers_.note(record.oid, *platform);
  name(oid, record);
  modified_[oid] = record.modified;
  if (writing_) written_.push_back({oid, std::nullopt});
  note(StoreChange::created);
  return oid;
}

std::int32_t PimStore::put_existing(const AppointmentRecord& record) {
  const auto found = item(record.oid);
  if (!found) return 0;
  if (!*found) return refuse(no_appointment(record.oid)), 0;
  auto before = record_of(*found, record.oid, true);
  if (!before) return 0;
  int saves = 0;
  Written written{record.oid, std::move(before)};
  if (!write_record(*found, &*written.before, record, form_, saves)) {
    if (saves > 0) take_back(written);
    next_state();
    return cannot_write(), 0;
  }
  if (writing_) written_.push_back(std::move(written));
  name(record.oid, record);
  modified_[record.oid] = record.modified;
  note(StoreChange::changed);
  return record.oid;
}

bool PimStore::bring_back(const AppointmentRecord& before) { return put_new(before) != 0; }

bool PimStore::restore(const AppointmentRecord& record) {
  problem_.clear();
  const auto found = item(record.oid);
  const bool done = found && (*found ? put_existing(record) != 0 : bring_back(record));
  write_uids();
  return done || refused_write(problem_);
}

bool PimStore::remove(std::int32_t oid) {
  const auto found = item(oid);
  if (!found) return false;
  if (!*found) return refuse(no_appointment(oid));
  if (!found->call(PimName::remove)) return cannot_write();
  uids_.forget(numbers_.of_platform(oid));
  numbers_.forget(oid);
  modified_.erase(oid);
  note(StoreChange::deleted);
  return true;
}

bool PimStore::erase(std::int32_t oid) {
  problem_.clear();
  Written written{oid, std::nullopt};
  if (writing_) {
    auto before = existing(oid);
    if (!before) return refused_write(problem_);
    written.before = std::move(before);
  }
  if (!remove(oid)) return refused_write(problem_);
  if (writing_) written_.push_back(std::move(written));
  write_uids();
  return true;
}

RecordCalendarStore::Sending PimStore::send_item(const AppointmentRecord& record) {
  const auto found = record.oid == 0 ? std::nullopt : item(record.oid);
  if (found && *found && found->call(PimName::send)) return Sending(std::string());
  return {caller_.last() == E_NOTIMPL ? SendResult::no_way : SendResult::failed,
          "The device could not send the meeting request."};
}

bool PimStore::beam(const PimObject& item) {
  problem_.clear();
  const auto infrared = folder(kFolderInfrared);
  return infrared &&
         ((infrared->call(PimName::add_to_infrared, PimValue::number(kPimAppointmentItem),
                          PimValue::object(item.get())) &&
           infrared->call(PimName::send_to_infrared)) ||
          refuse("The device could not send the appointment by infrared."));
}

}  // namespace orvello
