#include "store/record_application.h"

#include "store/record_appointment.h"
#include "store/record_items.h"
#include "store/record_rules.h"
#include "store/record_texts.h"

namespace orvello {

bool RecordApplication::logon(StoreListener* listener) {
  if (!store_.allows_logon()) return false;
  store_.log_on(this, listener, !notify_ && store_.posts_unasked());
  return true;
}

std::unique_ptr<StoreFolder> RecordApplication::default_folder(int folder) {
  if (!store_.folder_reachable(folder)) return nullptr;
  return std::make_unique<RecordFolder>(store_, *this, folder);
}

std::unique_ptr<Appointment> RecordApplication::item_from_oid(std::int32_t oid) {
  if (oid == 0) return nullptr;
  auto record = store_.fetch(oid);
  if (!record || !*record) return nullptr;
  return std::make_unique<RecordAppointment>(store_, std::move(**record));
}

std::unique_ptr<Appointment> RecordApplication::create_appointment() {
  AppointmentRecord record;
  record.uid = made_up_uid();
  return std::make_unique<RecordAppointment>(store_, std::move(record));
}

bool RecordApplication::beam(Appointment& appointment) {
  AppointmentRecord record;
  record.oid = appointment.oid();
  auto stored = store_.fetch(record.oid);
  if (!stored) return false;
  if (*stored) record = std::move(**stored);
  // As it stands, with what was not saved yet; of an occurrence that one alone.
  appointment.read(record.fields);
  if (record.fields.all_day)
    record.fields.end = own_end(record.fields.start, record.fields.end, store_.all_day_end());
  return store_.beam(record);
}

bool RecordApplication::restore(const AppointmentState& state) {
  const auto* kept = dynamic_cast<const RecordState*>(&state);
  return kept && store_.restore(kept->record);
}

std::unique_ptr<StoreItems> RecordFolder::items() {
  return std::make_unique<RecordItems>(store_, folder_ == kFolderCalendar);
}

std::optional<std::int32_t> RecordFolder::each_text(std::int32_t after, CalendarDate now,
                                                    const std::function<void(StoreTexts&)>& visit) {
  return folder_ == kFolderCalendar ? each_record_text(store_, after, to_seconds(now), visit) : 0;
}

std::optional<std::vector<StoreContact>> RecordFolder::contacts() {
  return folder_ == kFolderContacts ? store_.contacts() : std::vector<StoreContact>();
}

bool RecordFolder::enable_notifications() {
  store_.enable_notifications(&application_);
  return true;
}

}  // namespace orvello
