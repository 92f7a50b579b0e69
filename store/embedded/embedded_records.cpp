// Whole records in and out of the file.
#include "calendar/rule_days.h"
#include "store/embedded/embedded_database.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/item_columns.h"
#include "store/embedded/series_cache.h"
#include "store/embedded/span_classes.h"
#include "store/embedded/stored_pattern.h"
#include "store/record_rules.h"

namespace orvello {
namespace {

constexpr int kFollowedPuts = 16;

void bind_recurrence(Statement& statement, int at, const AppointmentRecord& record,
                     const Zone* zone) {
  if (!record.recurring()) return;
  if (const auto last = last_start(record, zone)) statement.bind(at, last->count());
  if (record.pattern) {
    statement.bind(at + 1, stored_pattern(*record.pattern));
  } else {
    statement.bind(at + 2, resolved_rules(record, zone));
    statement.bind(at + 3, record.rules);
  }
}

void bind_long(Statement& statement, int at, const AppointmentFields& fields,
               const std::string& residue) {
  if (!fields.body.empty()) statement.bind(at, fields.body);
  if (!fields.body_ink.empty()) statement.bind_blob(at + 1, fields.body_ink);
  if (!residue.empty()) statement.bind(at + 2, residue);
}

}  // namespace

bool EmbeddedStore::write_record(AppointmentRecord& record, bool exists) {
  auto write = exists
                   ? db_->use(
                         "UPDATE items SET uid = ?1, recurring = ?2, span_class = ?3,"
                         " first_day = ?4, last_day = ?5, start = ?6, end = ?7, zone = ?8,"
                         " all_day = ?9, has_notes = ?10, reminder_set = ?11,"
                         " reminder_minutes = ?12, sensitivity = ?13, busy_status = ?14,"
                         " subject = ?15, location = ?16, categories = ?17, last_start = ?18,"
                         " pattern = ?19, resolved = ?20, rules = ?21, modified = ?22, body = ?23,"
                         " body_ink = ?24, residue = ?25 WHERE oid = ?26")
                   : db_->use(
                         "INSERT INTO items (uid, recurring, span_class, first_day, last_day,"
                         " start, end, zone, " ORVELLO_SHARED_COLUMNS
                         ", last_start, pattern, resolved, rules, modified, body, body_ink,"
                         " residue, oid) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11,"
                         " ?12, ?13, ?14, ?15, ?16, ?17, ?18, ?19, ?20, ?21, ?22, ?23, ?24, ?25,"
                         " nullif(?26, 0))");
  const auto zone = time_.zone(record.zone);
  if (!zone) return false;
  const auto first = day_of(record.start), last = day_of(record.end);
  write->bind(1, record.uid)
      .bind(2, record.recurring())
      .bind(3, span_class_of(last - first, !record.zone.empty()))
      .bind(4, day_of(first_start(record, *zone)).number())
      .bind(5, last.number())
      .bind(6, record.start.count())
      .bind(7, record.end.count())
      .bind(8, record.zone);
  bind_shared(write.statement(), 9, record.fields);
  bind_recurrence(write.statement(), 18, record, *zone);
  write->bind(22, record.modified.count());
  bind_long(write.statement(), 23, record.fields, record.residue);
  write->bind(26, record.oid);
  if (!write->run()) return false;
  if (record.oid == 0) record.oid = static_cast<std::int32_t>(db_->last_row());
  return (!exists || erase_details(record.oid)) && write_details(record);
}

bool EmbeddedStore::write_details(const AppointmentRecord& record) {
  const auto write_recipients = [&](int exception, const std::vector<StoreRecipient>& list) {
    for (std::size_t i = 0; i < list.size(); ++i) {
      auto write = db_->use("INSERT INTO recipients VALUES (?1, ?2, ?3, ?4, ?5)");
      write->bind(1, record.oid).bind(2, exception).bind(3, static_cast<std::int64_t>(i));
      if (!write->bind(4, list[i].name).bind(5, list[i].address).run()) return false;
    }
    return true;
  };
  if (!write_recipients(0, record.recipients)) return false;
  for (std::size_t i = 0; i < record.exceptions.size(); ++i) {
    const AppointmentException& exception = record.exceptions[i];
    const int position = static_cast<int>(i) + 1;
    auto write = db_->use(
        "INSERT INTO exceptions (oid, position, original_start, deleted, start, end,"
        " zone, " ORVELLO_SHARED_COLUMNS
        ", body, body_ink, residue) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12,"
        " ?13, ?14, ?15, ?16, ?17, ?18, ?19)");
    write->bind(1, record.oid)
        .bind(2, position)
        .bind(3, exception.original_start.count())
        .bind(4, exception.deleted)
        .bind(5, exception.start.count())
        .bind(6, exception.end.count())
        .bind(7, exception.zone);
    bind_shared(write.statement(), 8, exception.fields);
    bind_long(write.statement(), 17, exception.fields, exception.residue);
    if (!write->run() || !write_recipients(position, exception.recipients)) return false;
  }
  return true;
}

bool EmbeddedStore::erase_details(std::int32_t oid) {
  return db_->use("DELETE FROM exceptions WHERE oid = ?1")->bind(1, oid).run() &&
         db_->use("DELETE FROM recipients WHERE oid = ?1")->bind(1, oid).run();
}

std::int32_t EmbeddedStore::put(const AppointmentRecord& record) {
  return put(record, record.oid != 0);
}

bool EmbeddedStore::restore(const AppointmentRecord& record) {
  return change([&] {
    std::optional<Text> categories;
    return find_categories(record.oid, categories) && put(record, categories.has_value()) != 0;
  });
}

std::int32_t EmbeddedStore::put(AppointmentRecord record, bool exists) {
  const bool written = change([&] {
    if (!complete_record(record, time_)) return false;
    std::optional<Text> old_categories;
    if (exists && !find_categories(record.oid, old_categories)) return false;
    if (exists && !old_categories) return not_there(record.oid);
    if (!write_record(record, exists)) {
      if (db_->violates_constraint())
        fail("An appointment with the UID " + record.uid + " is already in the store.");
      return false;
    }
    if (old_categories) count_category(kFolderCalendar, *old_categories, -1);
    count_category(kFolderCalendar, record.fields.categories, 1);
    kinds_ |= 1u << static_cast<int>(exists ? StoreChange::changed : StoreChange::created);
    return true;
  });
  if (!written) return 0;
  // The cache follows single changes; after many it is cheaper to read it anew. A transaction that
  // is taken back forgets it.
  if (in_transaction() && ++puts_ > kFollowedPuts) {
    cache_->forget();
  } else if (record.recurring()) {
    if (auto series = make_series(record, time_))
      cache_->put(std::move(*series));
    else
      cache_->forget();
  } else if (exists) {
    cache_->erase(record.oid);
  }
  return record.oid;
}

bool EmbeddedStore::find_categories(std::int32_t oid, std::optional<Text>& categories) {
  auto rows = db_->use("SELECT categories FROM items WHERE oid = ?1");
  return rows->bind(1, oid).each([&](Statement& row) { categories = row.text(0); });
}

bool EmbeddedStore::not_there(std::int32_t oid) {
  return refuse("There is no appointment with the number " + std::to_string(oid) + ".");
}

bool EmbeddedStore::erase(std::int32_t oid) {
  const bool erased = change([&] {
    std::optional<Text> categories;
    if (!find_categories(oid, categories)) return false;
    if (!categories) return not_there(oid);
    if (!erase_details(oid) || !db_->use("DELETE FROM items WHERE oid = ?1")->bind(1, oid).run())
      return false;
    count_category(kFolderCalendar, *categories, -1);
    kinds_ |= 1u << static_cast<int>(StoreChange::deleted);
    return true;
  });
  if (erased) cache_->erase(oid);
  return erased;
}

Result<std::optional<std::int32_t>> EmbeddedStore::oid_of_uid(std::string_view uid) {
  problem_.clear();
  begin_waiting();
  std::optional<std::int32_t> oid;
  auto rows = db_->use("SELECT oid FROM items WHERE uid = ?1");
  if (!rows->bind(1, uid).each([&](Statement& row) { oid = row.small(0); }))
    return failure<std::optional<std::int32_t>>();
  return oid;
}

Result<std::optional<AppointmentRecord>> EmbeddedStore::load(std::int32_t oid) {
  using Loaded = Result<std::optional<AppointmentRecord>>;
  problem_.clear();
  begin_waiting();
  ReadScope scope(*db_);
  AppointmentRecord record;
  record.oid = oid;
  bool found = false;
  if (!scope || !read_item(record, found)) return failure<std::optional<AppointmentRecord>>();
  if (!found) return std::nullopt;
  if (!read_exceptions(record) || !read_recipients(record))
    return failure<std::optional<AppointmentRecord>>();
  if (!localize_record(record, time_)) return Loaded::failure(problem_);
  return record;
}

bool EmbeddedStore::read_item(AppointmentRecord& record, bool& found) {
  auto rows = db_->use("SELECT uid, start, end, zone, " ORVELLO_SHARED_COLUMNS
                       ", pattern, rules, modified, body, body_ink, residue, recurring FROM items"
                       " WHERE oid = ?1");
  return rows->bind(1, record.oid).each([&](Statement& row) {
    found = true;
    return read_item_row(row, record);
  });
}

bool EmbeddedStore::read_item_row(Statement& row, AppointmentRecord& record) {
  record.uid = row.string(0);
  record.start = row.moment(1);
  record.end = row.moment(2);
  record.zone = row.string(3);
  read_shared(row, 4, record.fields);
  if (!row.is_null(13)) record.pattern = read_stored_pattern(row.bytes(13));
  record.rules = row.string(14);
  record.modified = UtcSeconds(row.number(15));
  record.fields.body = row.text(16);
  record.fields.body_ink = std::string(row.blob(17));
  record.residue = row.string(18);
  return ((row.is_null(13) || record.pattern) && row.flag(19) == record.recurring()) ||
         damaged("the recurrence of appointment " + std::to_string(record.oid) + " cannot be read");
}

bool EmbeddedStore::read_exceptions(AppointmentRecord& record) {
  auto rows = db_->use("SELECT original_start, deleted, start, end, zone, " ORVELLO_SHARED_COLUMNS
                       ", body, body_ink, residue FROM exceptions WHERE oid = ?1"
                       " ORDER BY position");
  return rows->bind(1, record.oid).each([&](Statement& row) {
    return read_exception_row(row, record);
  });
}

bool EmbeddedStore::read_exception_row(Statement& row, AppointmentRecord& record) {
  if (!record.recurring())
    return damaged("appointment " + std::to_string(record.oid) +
                   " has exceptions and no recurrence");
  AppointmentException exception;
  exception.original_start = row.moment(0);
  exception.deleted = row.flag(1);
  exception.start = row.moment(2);
  exception.end = row.moment(3);
  exception.zone = row.string(4);
  read_shared(row, 5, exception.fields);
  exception.fields.body = row.text(14);
  exception.fields.body_ink = std::string(row.blob(15));
  exception.residue = row.string(16);
  record.exceptions.push_back(std::move(exception));
  return true;
}

bool EmbeddedStore::read_recipients(AppointmentRecord& record) {
  auto rows = db_->use(
      "SELECT exception, name, address FROM recipients WHERE oid = ?1"
      " ORDER BY exception, position");
  return rows->bind(1, record.oid).each([&](Statement& row) {
    return read_recipient_row(row, record);
  });
}

bool EmbeddedStore::read_recipient_row(Statement& row, AppointmentRecord& record) {
  const auto owner = static_cast<std::size_t>(row.number(0));
  if (owner > record.exceptions.size())
    return damaged("a recipient of appointment " + std::to_string(record.oid) +
                   " belongs to no exception");
  auto& list = owner == 0 ? record.recipients : record.exceptions[owner - 1].recipients;
  list.push_back({row.text(1), row.text(2)});
  return true;
}

}  // namespace orvello
