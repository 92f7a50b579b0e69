#include "store/record_calendar_store.h"

#include <algorithm>

#include "ports/messages.h"
#include "store/labels.h"
#include "store/record_application.h"
#include "store/record_appointment.h"
#include "store/series_times.h"

namespace orvello {
namespace {

constexpr std::uint32_t kNotifications[] = {kItemCreatedLocal,  kItemDeletedLocal,
                                            kItemChangedLocal,  kItemCreatedRemote,
                                            kItemDeletedRemote, kItemChangedRemote};

std::size_t bit_of(StoreChange change, bool remote) {
  return static_cast<std::size_t>(change) + (remote ? 3 : 0);
}

}  // namespace

RecordCalendarStore::RecordCalendarStore(const Clock& clock)
    : time_(clock, [this, &clock](std::string_view name) -> Result<std::optional<Zone>> {
        // A zone of the device's database follows that; the store's own copy is for a device that
        // has none.
        if (auto known = clock.known_zone(name)) return known;
        return zone(name);
      }) {}

bool RecordCalendarStore::put_zone(const Zone& zone) {
  met_zones_.insert_or_assign(zone.name(), zone);
  time_.forget_zones();
  next_state();
  return true;
}

Result<std::optional<Zone>> RecordCalendarStore::zone(std::string_view name) {
  const auto met = met_zones_.find(name);
  return met == met_zones_.end() ? std::nullopt : std::optional(met->second);
}

bool RecordCalendarStore::simplify(AppointmentRecord& record) {
  problem_.clear();
  record.residue.clear();
  for (AppointmentException& one : record.exceptions) one.residue.clear();
  if (make_floating(record, time_)) return true;
  if (problem_.empty()) fail("This recurrence cannot be kept in the device's own time.");
  return false;
}

std::optional<std::vector<CategoryUse>> RecordCalendarStore::category_use_counts() {
  std::map<Text, CategoryUse> uses;
  const auto count_folder = [&](int folder, int CategoryUse::*count) {
    const auto texts = category_texts(folder);
    if (!texts) return false;
    for (const auto& [text, items] : *texts)
      for (const Text& label : labels_in(text)) {
        auto& use = uses[label];
        use.label = label;
        use.*count += items;
      }
    return true;
  };
  StoreReading reading(*this);
  if (!reading || !count_folder(kFolderCalendar, &CategoryUse::appointments) ||
      !count_folder(kFolderTasks, &CategoryUse::tasks) ||
      !count_folder(kFolderContacts, &CategoryUse::contacts))
    return std::nullopt;
  std::vector<CategoryUse> list;
  for (auto& [label, use] : uses) list.push_back(std::move(use));
  return list;
}

std::optional<Text> RecordCalendarStore::category_text(int folder) {
  Text joined;
  std::vector<Text> seen;
  const auto texts = category_texts(folder);
  if (!texts) return std::nullopt;
  for (const auto& [text, items] : *texts)
    for (Text& label : labels_in(text)) {
      if (std::find(seen.begin(), seen.end(), label) != seen.end()) continue;
      joined += (joined.empty() ? u"" : u",") + label;
      seen.push_back(std::move(label));
    }
  return joined;
}

bool RecordCalendarStore::all_or_nothing(const std::function<bool()>& work) {
  if (in_transaction()) return work();
  StoreWriting writing(*this);
  return writing && work() && writing.commit();
}

std::optional<AppointmentRecord> RecordCalendarStore::existing(std::int32_t oid) {
  auto stored = fetch(oid);
  if (!stored) return std::nullopt;
  if (!*stored) fail("There is no appointment with the number " + std::to_string(oid) + ".");
  return std::move(*stored);
}

bool RecordCalendarStore::folder_reachable(int folder) const {
  return folder == kFolderCalendar || folder == kFolderContacts || folder == kFolderTasks ||
         folder == kFolderInfrared;
}

void RecordCalendarStore::set_transport(Transport send, Transport beam) {
  send_ = std::move(send);
  beam_ = std::move(beam);
}

SendResult RecordCalendarStore::send(const AppointmentRecord& record) {
  const auto because = [&](SendResult result, const char* reason) {
    return refuse(reason), result;
  };
  if (record.recipients.empty())
    return because(SendResult::no_recipients, "The appointment has no attendees.");
  if (!send_)
    return because(SendResult::no_way,
                   "There is no way to send a meeting request from this device.");
  const Sending became = send_(record);
  return became.reason.empty() ? became.result : because(became.result, became.reason.c_str());
}

bool RecordCalendarStore::beam(const AppointmentRecord& record) {
  if (!beam_) return refuse("This device has no infrared port.");
  const Sending became = beam_(record);
  return became.reason.empty() || refuse(became.reason);
}

std::unique_ptr<AppointmentState> RecordCalendarStore::state_of(std::int32_t oid) {
  problem_.clear();
  if (oid == 0 || !restores()) return nullptr;
  auto stored = existing(oid);
  return stored ? std::make_unique<RecordState>(std::move(*stored)) : nullptr;
}

std::unique_ptr<StoreApplication> RecordCalendarStore::create_application(bool notify) {
  return std::make_unique<RecordApplication>(*this, notify);
}

void RecordCalendarStore::log_on(const void* application, StoreListener* listener, bool posts) {
  sessions_[application] = {listener, posts};
}

void RecordCalendarStore::log_off(const void* application) { sessions_.erase(application); }

void RecordCalendarStore::enable_notifications(const void* application) {
  const auto found = sessions_.find(application);
  if (found != sessions_.end()) found->second.posts = true;
}

void RecordCalendarStore::note_change(StoreChange change, bool remote) {
  const bool first = pending_ == 0;
  pending_ |= 1u << bit_of(change, remote);
  if (first && wake_) wake_();
}

bool RecordCalendarStore::poll() {
  time_.follow_device_zone();
  const unsigned pending = pending_;
  pending_ = 0;
  std::vector<StoreListener*> listeners;
  for (const auto& [application, session] : sessions_)
    if (session.posts && session.listener &&
        std::find(listeners.begin(), listeners.end(), session.listener) == listeners.end())
      listeners.push_back(session.listener);
  for (std::size_t bit = 0; bit < std::size(kNotifications); ++bit)
    if (pending >> bit & 1)
      for (StoreListener* listener : listeners) {
        // One that was told may have logged another off.
        const bool still_there =
            std::any_of(sessions_.begin(), sessions_.end(),
                        [&](const auto& entry) { return entry.second.listener == listener; });
        if (still_there) listener->store_changed(kNotifications[bit]);
      }
  return pending != 0;
}

}  // namespace orvello
