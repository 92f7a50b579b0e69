// The tables of the embedded store's file.
#pragma once

#include <cstdint>
#include <string>

namespace orvello {

inline constexpr int kApplicationId = 0x4F72766C;  // "Orvl"
inline constexpr int kFormat = 2;
inline constexpr int kFormatWithoutChecksums = 1;  // else the same

// Times are seconds since 30 December 1899 in the row's own zone; days are whole days of the same.
//
// `span_class` groups items by how many days they may cover, so that those touching a span of days
// are a few short ranges of one index. It depends on nothing but the row: a device that changes its
// zone leaves the file alone.
//
// items_series holds all that the calendar needs of the series; it is read where the indexes below
// are missing: an older program made none.
inline constexpr char kSchema[] = R"sql(
CREATE TABLE items (
  oid INTEGER PRIMARY KEY AUTOINCREMENT,
  uid TEXT NOT NULL UNIQUE,
  recurring INTEGER NOT NULL,
  span_class INTEGER NOT NULL,
  first_day INTEGER NOT NULL,
  last_day INTEGER NOT NULL,
  start INTEGER NOT NULL,
  end INTEGER NOT NULL,
  zone TEXT NOT NULL,
  all_day INTEGER NOT NULL,
  has_notes INTEGER NOT NULL,
  reminder_set INTEGER NOT NULL,
  reminder_minutes INTEGER NOT NULL,
  sensitivity INTEGER NOT NULL,
  busy_status INTEGER NOT NULL,
  subject TEXT NOT NULL,
  location TEXT NOT NULL,
  categories TEXT NOT NULL,
  last_start INTEGER,
  pattern TEXT,
  resolved TEXT,
  modified INTEGER NOT NULL,
  rules TEXT,
  body TEXT,
  body_ink BLOB,
  residue TEXT
);
CREATE INDEX items_days ON items (span_class, first_day, last_day) WHERE recurring = 0;
CREATE INDEX items_series ON items (
  start, end, zone, all_day, has_notes, reminder_set, reminder_minutes, sensitivity, busy_status,
  subject, location, categories, last_start, pattern, resolved
) WHERE recurring = 1;
CREATE TABLE exceptions (
  oid INTEGER NOT NULL,
  position INTEGER NOT NULL,
  original_start INTEGER NOT NULL,
  deleted INTEGER NOT NULL,
  start INTEGER NOT NULL,
  end INTEGER NOT NULL,
  zone TEXT NOT NULL,
  all_day INTEGER NOT NULL,
  has_notes INTEGER NOT NULL,
  reminder_set INTEGER NOT NULL,
  reminder_minutes INTEGER NOT NULL,
  sensitivity INTEGER NOT NULL,
  busy_status INTEGER NOT NULL,
  subject TEXT NOT NULL,
  location TEXT NOT NULL,
  categories TEXT NOT NULL,
  body TEXT,
  body_ink BLOB,
  residue TEXT,
  PRIMARY KEY (oid, position)
) WITHOUT ROWID;
CREATE TABLE recipients (
  oid INTEGER NOT NULL,
  exception INTEGER NOT NULL,  -- from 1; 0 is the item itself
  position INTEGER NOT NULL,
  name TEXT NOT NULL,
  address TEXT NOT NULL,
  PRIMARY KEY (oid, exception, position)
) WITHOUT ROWID;
CREATE TABLE zones (name TEXT PRIMARY KEY, definition TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE foreign_components (
  position INTEGER PRIMARY KEY,
  key TEXT NOT NULL UNIQUE,
  text TEXT NOT NULL
);
CREATE TABLE contacts (
  oid INTEGER PRIMARY KEY AUTOINCREMENT,
  file_as TEXT NOT NULL,
  first_name TEXT NOT NULL,
  middle_name TEXT NOT NULL,
  last_name TEXT NOT NULL,
  company TEXT NOT NULL,
  email1 TEXT NOT NULL,
  email2 TEXT NOT NULL,
  email3 TEXT NOT NULL,
  categories TEXT NOT NULL
);
CREATE INDEX contacts_file_as ON contacts (file_as);
CREATE TABLE category_uses (
  folder INTEGER NOT NULL,
  text TEXT NOT NULL,
  items INTEGER NOT NULL,
  PRIMARY KEY (folder, text)
) WITHOUT ROWID;
CREATE TABLE changes (
  number INTEGER PRIMARY KEY AUTOINCREMENT,
  process INTEGER NOT NULL,
  kind INTEGER NOT NULL
);
)sql";

// What the header says of a file with these tables.
inline std::string format_mark() {
  return "PRAGMA application_id = " + std::to_string(kApplicationId) +
         "; PRAGMA user_version = " + std::to_string(kFormat) + ";";
}

// Series by how many days they last, from the first instance to the end of the last (class 8: for
// ever), so that those alive in a span of days are a few short ranges; and changed occurrences by
// their own times, as these may lie outside of their series. The words are the queries', or the
// indexes would not be used.
#define ORVELLO_SERIES_CLASS                                           \
  "CASE WHEN last_start IS NULL THEN 8"                                \
  " WHEN last_start + end - start < (first_day + 2) * 86400 THEN 0"    \
  " WHEN last_start + end - start < (first_day + 8) * 86400 THEN 1"    \
  " WHEN last_start + end - start < (first_day + 32) * 86400 THEN 2"   \
  " WHEN last_start + end - start < (first_day + 100) * 86400 THEN 3"  \
  " WHEN last_start + end - start < (first_day + 370) * 86400 THEN 4"  \
  " WHEN last_start + end - start < (first_day + 1500) * 86400 THEN 5" \
  " WHEN last_start + end - start < (first_day + 6000) * 86400 THEN 6 ELSE 7 END"
inline constexpr std::int32_t kSeriesDays[] = {2, 8, 32, 100, 370, 1500, 6000, 10000000, 10000000};
inline constexpr int kSeriesClasses = 9;
inline constexpr int kEndlessClass = 8;

#define ORVELLO_LONG_CHANGE "(end - start >= 691200)"
inline constexpr std::int32_t kShortChangeDays = 8;

inline constexpr char kSeriesIndexes[] =
    "CREATE INDEX IF NOT EXISTS items_alive ON items (" ORVELLO_SERIES_CLASS
    ", first_day, last_start, start, end) WHERE recurring = 1;"
    "CREATE INDEX IF NOT EXISTS exceptions_changed ON exceptions (" ORVELLO_LONG_CHANGE
    ", start, end) WHERE deleted = 0;";

}  // namespace orvello
