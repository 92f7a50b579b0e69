// One appointment as a whole: what a store keeps, and what import and export exchange.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "calendar/recurrence_pattern.h"
#include "calendar/zone.h"
#include "ports/calendar_store.h"

namespace orvello {

// An occurrence that differs from its series, or is missing from it.
struct AppointmentException {
  LocalSeconds original_start;  // in the record's zone; all-day: midnight
  bool deleted = false;
  AppointmentFields fields;  // device-local times; unused when deleted
  // The changed times in `zone` (or floating), from which `fields` are computed.
  LocalSeconds start;
  LocalSeconds end;
  std::string zone;
  std::vector<StoreRecipient> recipients;
  std::string residue;  // as in AppointmentRecord
};

struct AppointmentRecord {
  std::int32_t oid = 0;      // 0: not stored yet
  std::string uid;           // unique in a store; made up when empty
  AppointmentFields fields;  // start and end are device-local, computed from those below

  // Times in the record's own zone: "" is floating (the device's local time, whatever it is),
  // "UTC", or the name of a zone kept in the store. All-day items are floating: `start` is midnight
  // of the first day, `end` 23:59 of the last.
  std::string zone;
  LocalSeconds start;
  LocalSeconds end;

  // At most one of the two: a pattern (in the record's zone), or recurrence lines that no pattern
  // can hold: "RRULE:...\nRDATE:...\nEXRULE:..." where RDATE lists YYYYMMDDTHHMMSS in the record's
  // zone. Excluded dates are exceptions with `deleted`.
  std::optional<RecurrencePattern> pattern;
  std::string rules;
  std::vector<AppointmentException> exceptions;

  std::vector<StoreRecipient> recipients;
  UtcSeconds modified;  // the last change
  // What an exchanged file said and no field holds; only exchange/ reads it.
  std::string residue;

  bool recurring() const { return pattern.has_value() || !rules.empty(); }
};

// A part of an exchanged file that is no appointment and comes back on export unchanged.
struct ForeignComponent {
  std::string key;  // unique: a kind and a UID, or a calendar and a property
  std::string text;
};

// What an exchanged file said of a contact, which comes back on export with what no field holds.
struct ContactCard {
  std::int32_t oid = 0;  // the contact's
  std::string uid;       // unique
  std::string text;
};

}  // namespace orvello
