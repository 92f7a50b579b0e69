// Appointments as VEVENTs.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>

#include "exchange/event_reader.h"
#include "exchange/series_family.h"
#include "store/record_store.h"

namespace orvello {

// One for each calendar.
class EventWriter {
 public:
  EventWriter(RecordStore& store, const Clock& clock)
      : clock_(clock),
        zones_(store, clock, false),
        families_(store, [this](const Component& text) { return reference_of(text); }) {}
  EventWriter(const EventWriter&) = delete;
  EventWriter& operator=(const EventWriter&) = delete;

  // TZIDs in kept texts mean what this calendar defines.
  ZoneTable& zones() { return zones_; }
  const std::set<std::string>& used_tzids() const { return used_tzids_; }
  // What meetings that were sent have as SEQUENCE, by UID; outlives this.
  void know_sent(const std::map<std::string, int>& sequences) { sent_ = &sequences; }
  // The store could not be asked.
  FirstFault fault() const {
    FirstFault fault = families_.fault();
    return fault |= zones_.fault();
  }

  // Appends the appointment and its changed occurrences.
  void write(std::string& out, const AppointmentRecord& record);
  // A changed occurrence of the record alone.
  std::string occurrence(const AppointmentRecord& record, const AppointmentException& exception);

 private:
  struct Item;
  struct Plan;
  void write_new(std::string& out, const Item& item);
  void write_kept(std::string& out, const Item& item, const Component& text,
                  const ReadEvent& reference);
  void write_cancelled(std::string& out, const Item& series, const std::string& id, bool moved,
                       const Component& text, const ReadEvent& kept);
  void write_exception(std::string& out, const Item& series, const AppointmentException& exception,
                       const Component* series_text, const ReadEvent* reference);
  Item item_of(const AppointmentRecord& record, const ReadEvent* reference);
  bool is_part(const AppointmentRecord& record, const ReadEvent& reference);
  void show_as_kept(const AppointmentRecord& record, ReadEvent& reference);
  void plan_changes(const Item& item, const ReadEvent& reference, Plan& plan);
  void plan_excluded(const Item& item, const ReadEvent& reference, Plan& plan);
  void write_alarms(std::string& out, const Item& item, const Component& text,
                    const ReadEvent& reference);
  int sent_sequence(const std::string& uid) const;
  std::string times(const Item& item);
  std::string recurrence(const Item& item);
  std::string excluded(const Item& item, const std::vector<LocalSeconds>& dates);
  std::string date_line(std::string_view name, const Item& item, LocalSeconds local);
  Moment start_of(const Item& item);
  std::optional<ReadEvent> reference_of(const Component& text);

  const Clock& clock_;
  ZoneTable zones_;
  SeriesFamilies families_;
  std::set<std::string> used_tzids_;
  const std::map<std::string, int>* sent_ = nullptr;
};

}  // namespace orvello
