// What the TZIDs of one calendar mean.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "calendar/zone.h"
#include "exchange/content_line.h"
#include "exchange/first_fault.h"
#include "exchange/problem_list.h"
#include "ports/clock.h"
#include "store/record_store.h"

namespace orvello {

class ZoneTable {
 public:
  // `writes`: zones that are used are put into the store.
  ZoneTable(RecordStore& store, const Clock& clock, bool writes)
      : store_(store), clock_(clock), writes_(writes), failed_(store) {}

  void start_file() { missed_.clear(); }
  void start_calendar();
  void define(const Component& vtimezone, ProblemList& problems);

  // The zone that a TZID (see tzid_of) means: the device's own of that name where it has one that
  // the calendar's definition does not contradict, else that definition. Named as in the store
  // ("UTC" for Coordinated Universal Time); null when nobody knows the name. Stays valid until the
  // next calendar.
  const Zone* find(std::string_view tzid);
  // The zone that records have by that name.
  const Zone* find_named(const std::string& name);
  const Zone* utc() const { return &utc_; }
  // Whether this unknown name is asked for the first time since the file began.
  bool first_miss(const std::string& tzid) { return missed_.insert(tzid).second; }
  const FirstFault& fault() const { return failed_; }

 private:
  struct Definition {
    std::vector<Observance> observances;
    std::string place;  // that it claims to describe, often empty
  };
  using Kept = std::map<std::string, std::unique_ptr<Zone>, std::less<>>;

  const Zone* look_up(const std::string& tzid);
  const Zone* known_by(std::string_view tzid);
  const Zone* known(const std::string& place);
  const Zone* own(const std::string& tzid, const Definition& definition);
  const Zone* stored(const std::string& name);
  const Zone* keep(Zone zone);

  RecordStore& store_;
  const Clock& clock_;
  bool writes_;
  FirstFault failed_;
  Zone utc_;
  std::set<std::string> missed_;
  std::map<std::string, Definition, std::less<>> defined_;
  std::map<std::string, const Zone*, std::less<>> found_;  // null: unknown
  // Null: there is none.
  Kept known_;   // by name in the database
  Kept stored_;  // by name in the store
};

// The observances of a VTIMEZONE; those that cannot be read are left out.
std::vector<Observance> read_observances(const Component& vtimezone, ProblemList& problems);

// A VTIMEZONE that says what the zone says, under this name.
std::string vtimezone_text(const Zone& zone, std::string_view tzid);

}  // namespace orvello
