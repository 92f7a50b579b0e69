// One day's appointments as rows: the Day view's list with what is kept beside each row, and the
// two-column rows of the small day lists.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "base/color.h"
#include "ports/calendar_store.h"
#include "settings/settings_record.h"
#include "store/row_key.h"

namespace orvello {

// Whether an appointment's whole category text passes the active profile.
using ProfileFilter = std::function<bool(TextView categories)>;

struct DayRow {
  enum class Kind {
    timed,
    all_day,
    location,    // goes on with the appointment above: where it is
    wrapped,     // goes on with the row above: the rest of its subject
    nothing,     // in the place of appointments: there are none
    unreadable,  // likewise: they could not be read
  };
  Text time;
  Text icons;  // "n" notes, "r" reminder, "c" category; " " on a location row
  Text subject;
  std::int32_t oid = -1;  // -1 on the row that says there is nothing
  Text first_category;    // "(None)" for an appointment without categories
  Kind kind = Kind::timed;
  // Of the occurrence, which it tells from others of its series; kNoDate on a row that stands for
  // many of them.
  CalendarDate start = kNoDate;

  bool continues() const { return kind == Kind::location || kind == Kind::wrapped; }
  bool is_appointment() const { return kind < Kind::nothing; }
  friend bool operator==(const DayRow&, const DayRow&) = default;
};

struct DayAgenda {
  enum class Emptiness {
    has_rows,
    all_filtered,   // the store had items, but none for this list: one row "No Appointments"
    nothing_found,  // the store had none: likewise
  };
  Emptiness emptiness = Emptiness::nothing_found;
  bool failed = false;  // the store could not be read whole: rows may be missing
  std::vector<DayRow> rows;
  // One entry a row each.
  std::vector<CalendarDate> row_ends;
  std::vector<Color> row_colors;
  std::vector<int> row_shades;
  // What the width of the icon column follows.
  bool notes_seen = false;
  bool reminder_seen = false;
  bool category_icon_seen = false;
};

// `items` is a fresh collection of the calendar folder, or null, which is a failure. In order of
// start. Subjects are
// whole: who wraps them adds rows, with entries in the arrays, and builds the shades again.
DayAgenda full_agenda(StoreItems* items, Day day, const SettingsRecord& settings,
                      const ProfileFilter& passes);

// A day whose one row says that it could not be read.
DayAgenda unreadable_agenda(Text words);

// 1 and 0 by turns; a row that goes on keeps the shade of the row above.
std::vector<int> build_row_shades(const std::vector<DayRow>& rows);

struct CompactRow {
  Text time;
  Text subject;
  DayRow::Kind kind = DayRow::Kind::timed;
  RowKey key{};

  bool is_appointment() const { return kind < DayRow::Kind::nothing; }
  friend bool operator==(const CompactRow&, const CompactRow&) = default;
};

// The same rows without icons, locations and arrays; a day without rows is one row "No
// Appointments". Nothing when the store could not be read.
std::optional<std::vector<CompactRow>> compact_agenda(StoreItems* items, Day day, bool clock24,
                                                      const ProfileFilter& passes);

}  // namespace orvello
