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
#include "exchange/problem_list.h"
#include "store/record_store.h"

namespace orvello {

class ZoneTable {
 public:
  // `writes`: zones that are used are put into the store.
  ZoneTable(RecordStore& store, bool writes) : store_(store), writes_(writes) {}

  void start_file() { missed_.clear(); }
  void start_calendar() { known_.clear(), defined_.clear(); }
  void define(const Component& vtimezone, ProblemList& problems);

  // The zone, named as in the store ("UTC" for Coordinated Universal Time); null when nobody knows
  // the name. Stays valid until the next calendar.
  const Zone* find(std::string_view tzid);
  // The store's zone of that name.
  const Zone* find_named(const std::string& name);
  const Zone* utc() const { return &utc_; }
  // Whether this unknown name is asked for the first time since the file began.
  bool first_miss(const std::string& tzid) { return missed_.insert(tzid).second; }
  bool failed() const { return failed_; }

 private:
  std::optional<Zone> look_up(const std::string& tzid);
  std::optional<Zone> own_definition(const std::string& tzid);

  RecordStore& store_;
  bool writes_;
  bool failed_ = false;
  Zone utc_;
  std::set<std::string> missed_;
  std::map<std::string, std::vector<Observance>, std::less<>> defined_;
  std::map<std::string, std::unique_ptr<Zone>, std::less<>> known_;  // null: unknown
  std::map<std::string, std::unique_ptr<Zone>, std::less<>> named_;
};

// The observances of a VTIMEZONE; those that cannot be read are left out.
std::vector<Observance> read_observances(const Component& vtimezone, ProblemList& problems);

// A VTIMEZONE that says what the zone says, under this TZID.
std::string vtimezone_text(const Zone& zone, std::string_view tzid);

}  // namespace orvello
