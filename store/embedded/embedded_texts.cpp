// Many records at a time, without what is long and not looked at.
#include "store/embedded/embedded_database.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/item_columns.h"

namespace orvello {
namespace {

constexpr int kRecordsAtOnce = 500;

// Rows and records are both in order of oid: the record that the row belongs to, from `at` on.
AppointmentRecord* owner_of(std::vector<AppointmentRecord>& records, std::size_t& at,
                            std::int32_t oid) {
  while (at < records.size() && records[at].oid < oid) ++at;
  return at < records.size() && records[at].oid == oid ? &records[at] : nullptr;
}

}  // namespace

Result<std::vector<AppointmentRecord>> EmbeddedStore::records_after(std::int32_t after) {
  problem_.clear();
  begin_waiting();
  time_.follow_device_zone();
  ReadScope scope(*db_);
  std::vector<AppointmentRecord> records;
  const auto read = [&] {
    auto rows = db_->use("SELECT uid, start, end, zone, " ORVELLO_SHARED_COLUMNS
                         ", pattern, rules, modified, body, NULL, NULL, recurring, oid FROM items"
                         " WHERE oid > ?1 ORDER BY oid LIMIT ?2");
    return rows->bind(1, after).bind(2, kRecordsAtOnce).each([&](Statement& row) {
      records.emplace_back().oid = row.small(20);
      return read_item_row(row, records.back());
    });
  };
  if (!scope || !follow_changes() || !read() || !read_details_of(records))
    return failure<std::vector<AppointmentRecord>>();
  return records;
}

// A row without its record is left alone, as it is where one record is read.
bool EmbeddedStore::read_details_of(std::vector<AppointmentRecord>& records) {
  if (records.empty()) return true;
  std::size_t at = 0;
  auto exceptions =
      db_->use("SELECT original_start, deleted, start, end, zone, " ORVELLO_SHARED_COLUMNS
               ", body, NULL, NULL, oid FROM exceptions"
               " WHERE oid BETWEEN ?1 AND ?2 ORDER BY oid, position");
  exceptions->bind(1, records.front().oid).bind(2, records.back().oid);
  if (!exceptions->each([&](Statement& row) {
        AppointmentRecord* record = owner_of(records, at, row.small(17));
        return !record || read_exception_row(row, *record);
      }))
    return false;
  at = 0;
  auto recipients = db_->use(
      "SELECT exception, name, address, oid FROM recipients"
      " WHERE oid BETWEEN ?1 AND ?2 ORDER BY oid, exception, position");
  recipients->bind(1, records.front().oid).bind(2, records.back().oid);
  return recipients->each([&](Statement& row) {
    AppointmentRecord* record = owner_of(records, at, row.small(3));
    return !record || read_recipient_row(row, *record);
  });
}

}  // namespace orvello
