// The columns that items, exceptions and the series index share, in one order: all_day, has_notes,
// reminder_set, reminder_minutes, sensitivity, busy_status, subject, location, categories.
#pragma once

#include "ports/calendar_store.h"
#include "store/embedded/embedded_database.h"

namespace orvello {

#define ORVELLO_SHARED_COLUMNS                                                             \
  "all_day, has_notes, reminder_set, reminder_minutes, sensitivity, busy_status, subject," \
  " location, categories"

inline void bind_shared(Statement& statement, int at, const AppointmentFields& fields) {
  statement.bind(at, fields.all_day)
      .bind(at + 1, !fields.body.empty() || !fields.body_ink.empty())
      .bind(at + 2, fields.reminder_set)
      .bind(at + 3, fields.reminder_minutes)
      .bind(at + 4, fields.sensitivity)
      .bind(at + 5, static_cast<std::int32_t>(fields.busy_status))
      .bind(at + 6, fields.subject)
      .bind(at + 7, fields.location)
      .bind(at + 8, fields.categories);
}

// Into AppointmentFields or AppointmentSummary; `has_notes` is the caller's. Texts that are not
// wanted are left alone: they are what costs.
template <typename Target>
void read_shared(Statement& row, int at, Target& target,
                 AppointmentFieldSet wanted = AppointmentFieldSet::all()) {
  target.all_day = row.flag(at);
  target.reminder_set = row.flag(at + 2);
  target.reminder_minutes = row.small(at + 3);
  target.sensitivity = row.small(at + 4);
  target.busy_status = static_cast<BusyStatus>(row.small(at + 5));
  if (wanted.has(AppointmentField::subject)) target.subject = row.text(at + 6);
  if (wanted.has(AppointmentField::location)) target.location = row.text(at + 7);
  if (wanted.has(AppointmentField::categories)) target.categories = row.text(at + 8);
}

inline std::shared_ptr<const AppointmentSummary> read_summary(
    Statement& row, int at, std::int32_t oid, bool recurring,
    AppointmentFieldSet wanted = AppointmentFieldSet::all()) {
  auto summary = std::make_shared<AppointmentSummary>();
  read_shared(row, at, *summary, wanted);
  summary->oid = oid;
  summary->recurring = recurring;
  summary->has_notes = row.flag(at + 1);
  return summary;
}

}  // namespace orvello
