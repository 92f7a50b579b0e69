// What a view asks of the program around it.
#pragma once

#include <cstdint>

#include "calendar/dates.h"
#include "ports/canvas.h"
#include "resources/strings.h"
#include "store/row_key.h"
#include "views/read_outcome.h"

namespace orvello {

class ViewCommands {
 public:
  virtual ~ViewCommands() = default;
  virtual void set_current_date(const MonthDayYear& date) = 0;
  // In the Day view, standing at the row of `key`, if there is one.
  virtual void show_day(const MonthDayYear& date, const RowKey& key = {}) = 0;
  virtual void send_command(std::uint32_t command) = 0;
  // Tells what came of reading what the view shows.
  virtual void note_read(ReadOutcome outcome) = 0;
  // Appointments changed; `reconnect` when the store's session has to be opened anew.
  virtual void appointments_changed(bool reconnect) = 0;
  virtual bool is_free() const = 0;        // nothing modal stands
  virtual Canvas& measuring_canvas() = 0;  // to measure texts with, on the user-interface thread
  virtual Language language() const = 0;
};

}  // namespace orvello
