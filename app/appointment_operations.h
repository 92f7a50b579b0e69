// What the menus of the views do with an appointment, or make of what was cut or copied. The view
// says which one it is and what day it was chosen on.
#pragma once

#include <optional>

#include "app/application_state.h"
#include "app/view_commands.h"
#include "ports/host.h"
#include "settings/settings_record.h"
#include "store/operation_context.h"
#include "store/row_key.h"

namespace orvello {

// What Cut or Copy chose, until it is pasted; it outlives the views. At most one oid is not 0.
struct PasteSource {
  std::int32_t copied = 0;
  std::int32_t cut = 0;
  CalendarDate start = kNoDate;  // of the occurrence
  MonthDayYear day;              // shown when it was chosen
  bool any() const { return copied != 0 || cut != 0; }
};

class AppointmentOperations {
 public:
  struct Context {
    Host& host;
    ApplicationState& state;
    SettingsRecord& settings;
    StoreSession& session;
    EditHistory& history;
    ViewCommands& commands;
  };
  // Where something was chosen.
  struct Spot {
    MonthDayYear day;
    Point at;  // of the window, for a month to choose a day from
  };
  explicit AppointmentOperations(const Context& context) : c_(context) {}

  // One of the day's menu. Without an appointment only what needs none does anything.
  void run(std::uint32_t command, const RowKey& key, const Spot& spot);
  // Carries it on by whole days.
  void move_by(const RowKey& key, int days);
  // To another start, of this occurrence alone. False when it was not moved, which is said.
  bool shift(const RowKey& key, CalendarDate start);
  // From a month at a point of the window.
  std::optional<MonthDayYear> ask_date(const MonthDayYear& shown, Point at);

  const PasteSource& source() const { return source_; }

 private:
  OperationContext operation() const;
  void open_editor(const RowKey& key, const MonthDayYear& day);
  void take_source(bool cut, const RowKey& key, const MonthDayYear& day);
  void paste(const MonthDayYear& day);
  void move_to(const RowKey& key, Day day);
  void ask_and_move(const RowKey& key, const Spot& spot);
  void beam(const RowKey& key);
  void erase(const RowKey& key);
  int ask_erase(const RowKey& key);

  Context c_;
  PasteSource source_;
};

}  // namespace orvello
