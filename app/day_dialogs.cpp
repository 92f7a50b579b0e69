#include "app/day_dialogs.h"

#include "resources/ids.h"

namespace orvello {

void show_day_content(Dialog& dialog, const DayContent& content) {
  dialog.set_text(kControlDayDate, content.date);
  std::vector<Text> rows;
  rows.reserve(content.rows.size());
  for (const CompactRow& row : content.rows)
    rows.push_back(row.subject.empty() ? row.time : row.time + u"  " + row.subject);
  dialog.set_rows(kControlDayList, rows);
}

void DayProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == DialogEvent::Kind::init) {
    show_day_content(dialog, commands_.day_content());
    dialog.focus(kControlDayList);
  } else if (event.kind == DialogEvent::Kind::command) {
    if (event.control == kControlPreviousDay) commands_.step_days(-1);
    if (event.control == kControlNextDay) commands_.step_days(1);
    if (event.control == kControlToday) commands_.go_to_today();
  }
}

void DayPopupProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == DialogEvent::Kind::init) {
    show_day_content(dialog, content_);
    dialog.focus(kControlDayList);
  } else if (event.kind == DialogEvent::Kind::command && event.control == kControlOk) {
    dialog.close(1);
  }
}

}  // namespace orvello
