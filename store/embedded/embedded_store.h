// The personal-information store in one SQLite file. Two processes may use it at once; a change is
// one durable transaction, and a process that dies leaves the file as it was before or after one.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "store/embedded/sqlite/transaction.h"
#include "store/record_calendar_store.h"

namespace orvello {

class Clock;
class EmbeddedDatabase;
class ReadScope;
class SeriesCache;
struct SeriesDays;

class EmbeddedStore : public RecordCalendarStore {
 public:
  // Creates a missing file, readable by its owner only. A damaged or foreign file, or one of a
  // newer format, is refused with a sentence that names it, and left untouched.
  static Result<std::unique_ptr<EmbeddedStore>> open(const std::string& path, const Clock& clock);
  // The same for a window, with limit_wait(wait): a file that another process holds opens all the
  // same, and is read when it is free.
  static Result<std::unique_ptr<EmbeddedStore>> open_for_window(const std::string& path,
                                                                const Clock& clock,
                                                                std::chrono::milliseconds wait);
  // The same without creating or writing anything: every write fails.
  static Result<std::unique_ptr<EmbeddedStore>> open_to_read(const std::string& path,
                                                             const Clock& clock);
  ~EmbeddedStore() override;

  // How long calls wait for another process's lock before they fail and busy() is true. Without a
  // limit it is five seconds for each transaction, which suits a command; a window sets what it
  // may stand still, which all calls share until renew_wait() or the next poll().
  void limit_wait(std::chrono::milliseconds total);
  void renew_wait();

  bool begin() override;
  bool commit() override;
  void rollback() override;
  bool begin_read() override;
  void end_read() override;
  Result<std::optional<std::int32_t>> oid_of_uid(std::string_view uid) override;
  Result<std::optional<AppointmentRecord>> load(std::int32_t oid) override;
  std::int32_t put(const AppointmentRecord& record) override;
  bool erase(std::int32_t oid) override;
  Result<std::vector<std::int32_t>> oids(std::optional<Day> from_day,
                                         std::optional<Day> to_day) override;
  bool put_zone(const Zone& zone) override;
  Result<std::optional<Zone>> zone(std::string_view name) override;
  bool put_foreign(const ForeignComponent& component) override;
  Result<std::vector<ForeignComponent>> foreign() override;
  std::string problem() const override { return problem_; }
  // What went wrong since the file was opened, the latest if it was several things; empty when
  // everything that was ever read or written was.
  std::string any_failure() const;
  bool busy() const override;

  std::optional<std::vector<StoreContact>> contacts() override;
  std::int32_t put_contact(const StoreContact& contact) override;
  bool erase_contact(std::int32_t oid) override;
  bool put_card(const ContactCard& card) override;
  Result<std::vector<ContactCard>> card_names() override;
  Result<std::string> card_text(std::int32_t oid) override;
  std::optional<std::vector<std::pair<Text, int>>> category_texts(int folder) override;

  bool poll() override;
  bool query(const ItemQuery& query, OccurrenceList& list) override;
  Result<std::vector<AppointmentRecord>> records_after(std::int32_t after) override;
  bool restores() const override { return true; }
  bool restore(const AppointmentRecord& record) override;

 protected:
  bool in_transaction() const override { return transaction_.has_value(); }

 private:
  EmbeddedStore(std::unique_ptr<EmbeddedDatabase> database, const Clock& clock);
  static Result<std::unique_ptr<EmbeddedStore>> open(
      Result<std::unique_ptr<EmbeddedDatabase>> database, const Clock& clock);
  bool start_log();

  // Runs `write` in a transaction of its own, or as a part of the one that is open.
  bool change(const std::function<bool()>& write);
  bool failed();
  // A contradiction in what was read.
  bool damaged(const std::string& what);
  template <typename T>
  Result<T> failure() {
    failed();
    return Result<T>::failure(problem_);
  }
  void begin_waiting();
  void forget();
  bool see_changes();
  std::int32_t put(AppointmentRecord record, bool exists);
  bool write_record(AppointmentRecord& record, bool exists);
  // Nothing for an appointment that is not there.
  bool find_categories(std::int32_t oid, std::optional<Text>& categories);
  bool not_there(std::int32_t oid);  // false, with the reason
  bool find_contact(std::int32_t oid, Text& categories);
  bool erase_card(std::int32_t oid);
  bool write_details(const AppointmentRecord& record);
  bool erase_details(std::int32_t oid);
  bool read_item(AppointmentRecord& record, bool& found);
  bool read_item_row(Statement& row, AppointmentRecord& record);
  bool read_exceptions(AppointmentRecord& record);
  bool read_exception_row(Statement& row, AppointmentRecord& record);
  bool read_recipients(AppointmentRecord& record);
  bool read_recipient_row(Statement& row, AppointmentRecord& record);
  bool read_details_of(std::vector<AppointmentRecord>& records);
  bool write_notes(std::int64_t& last);  // `last`: the number of the last one, 0 without
  bool is_logged(std::int64_t note);
  void count_category(int folder, const Text& text, int difference);
  bool follow_changes();
  bool complete_indexes();
  bool knows_indexes();
  bool load_series(const DayBounds& bounds);
  bool read_all_series();
  bool read_alive_series(const SeriesDays& days, std::vector<std::int32_t>& added);
  bool read_changed_series(const SeriesDays& days, std::vector<std::int32_t>& added);
  bool read_series_row(Statement& row, std::vector<std::int32_t>& added);
  bool read_series_exceptions(std::vector<std::int32_t>& added);
  bool read_singles(const ItemQuery& query, OccurrenceList& list);
  bool read_class(int span_class, const ItemQuery& query, OccurrenceList& list);

  std::unique_ptr<EmbeddedDatabase> db_;
  std::unique_ptr<SeriesCache> cache_;
  std::optional<bool> indexed_;  // whether the file has the indexes of the series, once asked
  std::optional<SqliteTransaction> transaction_;
  bool spoilt_ = false;  // a write of the transaction failed: it cannot be committed
  bool limited_wait_ = false;
  int readings_ = 0;  // begin_read less end_read
  std::unique_ptr<ReadScope> reading_;
  int puts_ = 0;        // in this transaction
  unsigned kinds_ = 0;  // of changes in this transaction, a bit each
  std::map<std::pair<int, std::string>, int> category_changes_;
  std::int64_t cache_version_ = 0;
  std::int64_t seen_version_ = 0;
  std::int64_t seen_change_ = 0;
  bool log_started_ = false;
  std::int64_t process_ = 0;  // tells own changes from others' in the log
};

}  // namespace orvello
