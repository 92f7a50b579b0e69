// The work behind import and preview: calendars into records.
#pragma once

#include <istream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "exchange/calendar_scanner.h"
#include "exchange/contact_importer.h"
#include "exchange/event_reader.h"
#include "exchange/import.h"
#include "exchange/series_parts.h"
#include "exchange/vcalendar1_zone.h"

namespace orvello {

class Importer {
 public:
  // Without `writes` the store is only asked what it has.
  Importer(RecordStore& store, const Clock& clock, bool writes);

  // False when the store failed.
  bool import_stream(std::istream& in, ImportCounts& counts, ProblemList& problems);
  bool finish();
  const FirstFault& fault() const { return failed_; }

 private:
  // What a calendar wants done with its events.
  enum class Method { keep, request, add, reply, cancel, none_of_ours };
  // Which component is which item: the last event of each UID, and the changes of each series.
  struct Uids {
    std::unordered_map<std::string, std::size_t> masters;
    std::map<std::string, std::vector<std::size_t>> changes;
    std::vector<std::string> of;            // each component's UID
    std::unordered_set<std::string> again;  // those that an earlier calendar of the file had
  };
  // What tells the versions of one event from different events of one UID.
  struct Version {
    int line = 0;
    int calendar = 0;  // the number of its calendar in the file
    int sequence = 0;
    std::size_t start = 0, stamp = 0, content = 0;  // hashes
  };
  // A series of the store to which changes come, until the file ends.
  struct OpenSeries {
    AppointmentRecord record;
    std::optional<Zone> zone;
    Moment start;
    std::unordered_map<LocalSeconds, std::size_t> places;  // of exceptions by their occurrence
    std::vector<FollowingChange> following;
    std::vector<PartName> parts;
  };

  void import_cards(ScannedCalendar& calendar);
  void import_calendar(ScannedCalendar& calendar);
  void convert_old(ScannedCalendar& calendar);
  void read_header(ScannedCalendar& calendar);
  void take_method(std::string_view value);
  void keep_foreign(const ScannedCalendar& calendar);
  void put_foreign(std::string key, std::string text);
  std::string own_key(std::string key, std::string_view text);
  const Component& parse(const ScannedCalendar& calendar, std::size_t index);

  void import_master(const ScannedCalendar& calendar, std::size_t index, const Uids& uids);
  void keep_unshown(const ScannedCalendar& calendar, const std::string& uid, bool cancelled,
                    const std::vector<std::size_t>& changes);
  std::vector<SeriesPart> put_series(ReadEvent& series, std::vector<FollowingChange>& following,
                                     const std::string& calendar, std::string_view text,
                                     bool known);
  void erase_parts(const AppointmentRecord& record, const std::vector<SeriesPart>& but);
  void erase_record(const AppointmentRecord& record);  // with its parts
  void import_changes(const ScannedCalendar& calendar, const std::string& uid,
                      const std::vector<std::size_t>& indices);
  void import_change(OpenSeries& series, ReadEvent& change, const Component& event);
  void import_lone(const std::string& uid, ReadEvent& change, const std::string& residue);
  void merge_lone(const std::string& uid, ReadEvent& master,
                  std::vector<FollowingChange>& following);
  void merge_earlier(const AppointmentRecord& earlier, AppointmentRecord& record);
  static void keep_ink(const AppointmentRecord& earlier, AppointmentRecord& record);
  void read_changes(const ScannedCalendar& calendar, const std::vector<std::size_t>& indices,
                    ReadEvent& master, std::vector<FollowingChange>& following);
  OpenSeries* open_series(const std::string& uid);
  void close_series(const std::string& uid);
  void put(AppointmentRecord& record, bool known);
  void count(const std::string& uid, bool known);

  // importer_uids.cpp: which component is which item
  Uids find_uids(const ScannedCalendar& calendar);
  std::string name_event(const Component& event);
  bool take_change(const Component& event, const std::string& uid, const Property& occurrence);
  bool take_version(const Component& event, std::string& uid, Uids& uids);

  // importer_messages.cpp: what calendars send each other
  void apply_messages(const ScannedCalendar& calendar);
  void apply_reply(const Component& reply, const std::string& uid);
  bool take_answer(AppointmentRecord& record, const Component& reply, const Property& attendee);
  bool is_stale(const AppointmentRecord& record, const Component& reply);
  std::string* answered_text(AppointmentRecord& record, const Component& reply);
  std::optional<LocalSeconds> occurrence_named(const AppointmentRecord& record,
                                               const Component& message);
  void apply_cancel(const Component& cancel, const std::string& uid);
  void cancel_occurrence(const Component& cancel, AppointmentRecord& record, const Moment& moment);
  void apply_addition(const Component& added, const std::string& uid);
  std::string text_of(const AppointmentRecord& record);
  std::string shown_text(const AppointmentRecord& record, const std::vector<SeriesPart>& parts);
  Moment start_of(const AppointmentRecord& record, std::optional<Zone>& zone);
  bool is_older(const Component& event, std::string_view stored);
  void hide(const Component& event, const std::string& uid);
  void unhide(const std::string& uid);
  void merge_hidden(const std::string& uid, ReadEvent& master);
  const ForeignComponent* hidden(const std::string& uid);
  void tell(const Component& event, std::string text);

  // Questions to the store; one that fails ends the import.
  std::int32_t oid_of(const std::string& uid);  // 0: none
  std::optional<AppointmentRecord> stored(std::int32_t oid);
  std::optional<Zone> zone_named(const std::string& name);

  RecordStore& store_;
  const Clock& clock_;
  bool writes_;
  FirstFault failed_;
  ZoneTable zones_;
  ContactImporter contacts_;
  ImportCounts* counts_ = nullptr;
  ProblemList* problems_ = nullptr;
  ParsedComponent parsed_;
  std::string key_;  // of the calendar at hand
  Method method_ = Method::keep;
  std::string method_name_;
  int calendar_number_ = 0;
  bool old_version_ = false;
  OldZone old_zone_;
  int items_ = 0;                            // of that calendar, as far as the store has them now
  std::unordered_set<std::size_t> counted_;  // hashes of the UIDs counted so far
  std::unordered_map<std::size_t, Version> in_file_;   // by the UID's hash
  std::unordered_map<std::string, int> nameless_;      // events of one made-up UID in the file
  std::map<std::string, std::set<std::string>> lone_;  // UID: its changes' records
  bool lone_changed_ = false;
  // Events that no day shows, by UID: cancelled ones, and those without a start.
  std::unordered_map<std::string, std::vector<ForeignComponent>> hidden_;
  std::map<std::string, OpenSeries> open_;
  std::unordered_map<std::string, int> sent_;  // the SEQUENCE of meetings that were sent, by UID
  // By key, the different texts that a file has for it: hashes with their places.
  std::unordered_map<std::string, std::unordered_map<std::size_t, std::size_t>> foreign_in_file_;
  // Hashes of UIDs of series that got changes in this import: one that comes later keeps them.
  std::unordered_set<std::size_t> changed_;
};

}  // namespace orvello
