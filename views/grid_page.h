// What the grids of the Month and the Year view have in common: a page that shows the day the
// keyboard stands on. It keeps what was drawn last, knows where everything on it stands and gives
// the worker its drawings. User-interface thread, except the drawings.
#pragma once

#include <cstdint>
#include <optional>

#include "draw/screen_layout.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "store/store_session.h"
#include "views/accessible_text.h"
#include "views/draw_control.h"
#include "views/grid_target.h"
#include "views/read_outcome.h"

namespace orvello {

// What pen and keys do on one grid and not, or otherwise, on the other.
struct GridHabits {
  int months = 1;               // of a page: what a turn of it steps
  bool hold_opens_day = false;  // a press that stays on a day asks for its popup
  bool names_days = false;      // the day under the pointer is named beside it
  bool names_pressed = false;   // also while it is pressed
  std::uint32_t escape = 0;     // the command that Escape is; 0: none
};

struct GridInput {
  ScreenLayout screen;
  MonthDayYear selected;  // its page is the one shown
  MonthDayYear today;
  bool focus_visible = false;
  MonthDayYear marked{};                  // under what the pointer does; year 0: none
  Language language = Language::english;  // of what the page says in words
};

class GridPage {
 public:
  // Settings and session outlive the page and are read when a snapshot is taken.
  GridPage(StoreSession& session, const SettingsRecord& settings)
      : session_(session), settings_(settings) {}
  virtual ~GridPage() = default;

  virtual const GridHabits& habits() const = 0;
  virtual bool same_page(const MonthDayYear& a, const MonthDayYear& b) const = 0;

  // Takes a snapshot. `same_items`: the appointments have not changed, so that the last one serves
  // again if it shows the same page. What cannot be read is shown as it was read last, on a page
  // that was not read yet as empty. Nothing when nothing had to be read.
  virtual std::optional<ReadOutcome> take(const GridInput& input, bool same_items) = 0;
  // The drawing of the last snapshot.
  virtual ViewDrawing drawing() const = 0;

  // Where it stands, after the last snapshot.
  virtual GridTarget hit(Point point) const = 0;
  virtual Rect place_of(const MonthDayYear& date) const = 0;  // empty: not on the page
  virtual AccessibleGrid accessible(const DayCount& count, const AccessibleWords& words) const = 0;
  virtual std::optional<MonthDayYear> date_of_cell(int cell) const = 0;  // of that grid
  // How many appointments the days of the page have that shows this one.
  virtual DayCount count_days_with(const MonthDayYear& shown) const = 0;

 protected:
  bool passes_profile(TextView categories) const;
  // Why a page shows nothing although there are appointments.
  Text profile_note(Language language) const;
  DayCount counted(Day from_day, Day to_day) const;

  StoreSession& session_;
  const SettingsRecord& settings_;
};

}  // namespace orvello
