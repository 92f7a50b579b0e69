// The list of one day: the Day view's dialog, and the popup over the Month view.
#pragma once

#include <functional>
#include <vector>

#include "calendar/locale_data.h"
#include "ports/dialogs.h"
#include "settings/settings_record.h"
#include "store/day_agenda.h"

namespace orvello {

struct DayContent {
  Text date;
  std::vector<CompactRow> rows;
};

// What the Day view asks the application for.
class DayCommands {
 public:
  virtual ~DayCommands() = default;
  virtual DayContent day_content() = 0;  // of the current date
  virtual void step_days(int days) = 0;  // and show the new date
  virtual void go_to_today() = 0;
};

class DayProcedure : public DialogProcedure {
 public:
  explicit DayProcedure(DayCommands& commands) : commands_(commands) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  DayCommands& commands_;
};

// Shows its content until it is closed.
class DayPopupProcedure : public DialogProcedure {
 public:
  explicit DayPopupProcedure(DayContent content) : content_(std::move(content)) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  DayContent content_;
};

void show_day_content(Dialog& dialog, const DayContent& content);

}  // namespace orvello
