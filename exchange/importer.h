// The work behind import and preview: calendars into records.
#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <map>
#include <memory>
#include <optional>
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
#include "store/device_time.h"

namespace orvello {

// Hears what an import does to appointments and contacts, or would do.
class ImportWatcher {
 public:
  virtual ~ImportWatcher() = default;
  // `fresh`: the store did not have it before. A record may come several times. A preview's is as
  // the store would have it, and `earlier` what it has of it, if anything.
  virtual void put(const AppointmentRecord& record, bool fresh,
                   const AppointmentRecord* earlier) = 0;
  virtual void cancelled(const AppointmentRecord& record) = 0;
  virtual void put(const StoreContact& contact, bool fresh, bool as_stored) = 0;
};

class Importer {
 public:
  // Without `writes` the store is only asked what it has.
  Importer(RecordStore& store, const Clock& clock, bool writes, ImportWatcher* watcher = nullptr);

  // Where a calendar of that name is counted, and what no calendar surrounds under no name; null:
  // it is left out.
  using CountsOf = std::function<ImportCounts*(const std::string& name)>;

  // A file's content, which step() takes bit by bit: at most what belongs to one event each time.
  // False at its end, and when the store failed. All of it stays until then.
  void start(std::istream& in, CountsOf counts_of, ProblemList& problems);
  bool step();
  // The same in one go; false when the store failed.
  bool import_stream(std::istream& in, ImportCounts& counts, ProblemList& problems);
  bool finish();
  const FirstFault& fault() const { return failed_; }

  // Events and cards of the file at hand: split off so far, those known by their UIDs, and done.
  struct Progress {
    std::uint64_t bytes = 0;
    int found = 0, named = 0, done = 0;
  };
  Progress progress() const;

 private:
  // What is done with the calendar at hand, in this order, a component each time.
  enum class Stage { scan, cards, convert, define, keep, name, masters, changes, messages, close };
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

  // importer_steps.cpp: one thing after the other
  void go_on();
  void scan_lines();
  void take_component(const ScannedComponent& component);
  void end_stage();
  void begin_stage(Stage stage);
  void end_cards();
  void begin_calendar();
  void end_conversion();
  void end_zones();
  void end_calendar();
  bool choose_counts(const std::string& name);

  void import_card(const ScannedComponent& component);
  void convert(const ScannedComponent& component);
  void read_header();
  void name_calendar();
  void take_method(std::string_view value);
  void keep_foreign(const ScannedComponent& component);
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
  void show(const AppointmentRecord& record, bool fresh);  // to the watcher
  void count(const std::string& uid, bool known);

  // importer_uids.cpp: which component is which item
  void find_uid(std::size_t index);
  std::string name_event(const Component& event);
  bool take_change(const Component& event, const std::string& uid, const Property& occurrence);
  bool take_version(const Component& event, std::string& uid, Uids& uids);

  // importer_messages.cpp: what calendars send each other
  void apply_message(std::size_t index);
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
  ImportWatcher* watcher_;
  FirstFault failed_;
  ZoneTable zones_;
  DeviceTime time_;  // with the zones of the files
  ContactImporter contacts_;
  CountsOf counts_of_;
  ImportCounts* counts_ = nullptr;  // of the calendar at hand
  ProblemList* problems_ = nullptr;
  std::optional<CalendarScanner> scanner_;  // of the file at hand
  Stage stage_ = Stage::scan;
  bool at_end_ = false;
  ScannedCalendar calendar_;
  std::size_t at_ = 0;                   // the component that is next in this stage
  std::size_t problems_before_ = 0;      // the calendar
  std::string converted_, definitions_;  // what stages make of it
  bool zones_alone_ = true;
  Uids uids_;
  Progress progress_;
  ParsedComponent parsed_;
  std::string key_, name_;  // of the calendar at hand
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
