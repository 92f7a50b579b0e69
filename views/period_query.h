// The appointments of a span of days, as the store's period queries return them. User-interface
// thread; the answer is a value that a drawing keeps for itself.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "calendar/month_grid_range.h"
#include "ports/calendar_store.h"

namespace orvello {

// Just what a drawing needs, and small: a full month has tens of thousands.
struct PeriodItem {
  CalendarDate start = 0;
  CalendarDate end = 0;
  std::int32_t categories = 0;  // index of the text
  BusyStatus busy_status = BusyStatus::busy;
  bool all_day = false;
  bool passes_profile = true;
};

struct PeriodItems {
  std::vector<PeriodItem> items;
  std::vector<Text> categories;  // the distinct texts
};

// A fresh collection of the calendar folder's items; null when the store gives none.
using ItemsSource = std::function<std::unique_ptr<StoreItems>()>;
// Whether the active profile shows appointments with this categories text.
using ProfileTest = std::function<bool(TextView categories)>;

// Sees an item as the store has it, its subject too, beside what is kept of it.
using ItemVisit = std::function<void(const StoreItem& item, const PeriodItem& kept)>;

// The three texts in their order: what reaches into the leading days, the month, what follows it.
std::array<Text, 3> period_restrictions(const MonthGrid& grid);

// In the order of the restrictions, each sorted by start; an item that several of them select is
// there once. Nothing when the store could not be read whole: a drawing of a part would say that
// the rest of the days is free. Subjects are read only for `visit`, which may be empty.
std::optional<PeriodItems> fetch_period(const ItemsSource& source, const MonthGrid& grid,
                                        const ProfileTest& passes, const ItemVisit& visit = {});

// The whole days, as offsets from the grid's first, that an item covers there: from `first` to
// `last`, empty when first > last.
struct CellSpan {
  int first = 0;
  int last = -1;
};
CellSpan cells_of(const PeriodItem& item, const MonthGrid& grid);

}  // namespace orvello
