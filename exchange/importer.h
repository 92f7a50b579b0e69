// The work behind import and preview: calendars into records.
#pragma once

#include <istream>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "exchange/calendar_scanner.h"
#include "exchange/event_reader.h"
#include "exchange/import.h"
#include "exchange/vcalendar1_zone.h"

namespace orvello {

class Importer {
 public:
  // Without `writes` the store is only asked what it has.
  Importer(RecordStore& store, const Clock& clock, bool writes);

  // False when the store failed.
  bool import_stream(std::istream& in, ImportCounts& counts, ProblemList& problems);
  bool finish();

 private:
  struct Uids;
  void import_calendar(ScannedCalendar& calendar);
  void convert_old(ScannedCalendar& calendar);
  void read_header(ScannedCalendar& calendar);
  void keep_foreign(const ScannedCalendar& calendar);
  void put_foreign(std::string key, std::string text);
  Uids find_uids(const ScannedCalendar& calendar);

  void import_master(const ScannedCalendar& calendar, std::size_t index, const Uids& uids);
  void import_changes(const ScannedCalendar& calendar, const std::string& uid,
                      const std::vector<std::size_t>& indices);
  void import_lone(const std::string& uid, ReadEvent& change, const std::string& residue);
  void merge_lone(const std::string& uid, ReadEvent& master);
  std::vector<AppointmentException> read_changes(const ScannedCalendar& calendar,
                                                 const std::vector<std::size_t>& indices,
                                                 const ReadEvent& master);
  // The store's record of that UID; nothing without one, and when the store fails, which ends the
  // import.
  std::optional<AppointmentRecord> stored(const std::string& uid);
  void put(AppointmentRecord& record, bool known);
  void count(const std::string& uid, bool known);

  RecordStore& store_;
  const Clock& clock_;
  bool writes_;
  bool failed_ = false;
  ZoneTable zones_;
  ImportCounts* counts_ = nullptr;
  ProblemList* problems_ = nullptr;
  ParsedComponent parsed_;
  std::string key_;  // of the calendar at hand
  bool old_version_ = false;
  OldZone old_zone_;
  int items_ = 0;                            // of that calendar, as far as the store has them now
  std::unordered_set<std::size_t> counted_;  // hashes of the UIDs counted so far
  std::map<std::string, std::vector<std::string>> lone_;  // UID: its changes' records
  bool lone_changed_ = false;
  // Changes that came in this import, for a series that comes later in it.
  std::unordered_map<std::string, std::vector<AppointmentException>> changes_;
};

}  // namespace orvello
