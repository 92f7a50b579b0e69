// A store in memory that fails on demand, and a clock in a zone of fixed offset.
#pragma once

#include <map>
#include <string>

#include "hosts/headless/headless_ports.h"
#include "store/record_store.h"

namespace orvello {

class FakeStore : public RecordStore {
 public:
  struct Content {
    std::map<std::int32_t, AppointmentRecord> records;
    std::map<std::string, std::int32_t, std::less<>> uids;
    std::map<std::string, Zone, std::less<>> zones;
    std::vector<ForeignComponent> foreign;
    std::int32_t next = 1;
  };
  Content now;
  int puts_until_failure = -1;
  int calls_until_failure = -1;  // of any kind; then one fails, and those after it work again
  int writes = 0;

  bool begin() override { return before_ = now, true; }
  bool commit() override { return true; }
  void rollback() override { now = before_; }
  bool begin_read() override { return true; }
  void end_read() override {}

  Result<std::optional<std::int32_t>> oid_of_uid(std::string_view uid) override {
    if (fails()) return Result<std::optional<std::int32_t>>::failure(problem());
    const auto known = now.uids.find(uid);
    if (known == now.uids.end()) return std::nullopt;
    return known->second;
  }
  Result<std::optional<AppointmentRecord>> load(std::int32_t oid) override {
    if (fails()) return Result<std::optional<AppointmentRecord>>::failure(problem());
    const auto known = now.records.find(oid);
    if (known == now.records.end()) return std::nullopt;
    return known->second;
  }
  std::int32_t put(const AppointmentRecord& record) override {
    ++writes;
    if (fails()) return 0;
    if (puts_until_failure >= 0 && puts_until_failure-- == 0) return 0;
    AppointmentRecord stored = record;
    if (stored.oid == 0) stored.oid = now.next++;
    now.uids[stored.uid] = stored.oid;
    now.records[stored.oid] = stored;
    return stored.oid;
  }
  bool erase(std::int32_t oid) override {
    ++writes;
    if (fails()) return false;
    const auto known = now.records.find(oid);
    if (known == now.records.end()) return false;
    now.uids.erase(known->second.uid);
    now.records.erase(known);
    return true;
  }
  // Good enough for single appointments: those that start within the days.
  Result<std::vector<std::int32_t>> oids(std::optional<std::int32_t> from,
                                         std::optional<std::int32_t> to) override {
    std::vector<std::int32_t> found;
    for (const auto& [oid, record] : now.records) {
      const auto day = static_cast<std::int32_t>(record.fields.start);
      if ((!from || day >= *from) && (!to || day <= *to)) found.push_back(oid);
    }
    return found;
  }
  bool put_zone(const Zone& zone) override {
    ++writes;
    if (fails()) return false;
    now.zones.insert_or_assign(zone.name(), zone);
    return true;
  }
  Result<std::optional<Zone>> zone(std::string_view name) override {
    if (fails()) return Result<std::optional<Zone>>::failure(problem());
    const auto known = now.zones.find(name);
    if (known == now.zones.end()) return std::nullopt;
    return known->second;
  }
  bool put_foreign(const ForeignComponent& component) override {
    ++writes;
    if (fails()) return false;
    if (component.text.empty()) {
      std::erase_if(now.foreign, [&](const auto& one) { return one.key == component.key; });
      return true;
    }
    for (ForeignComponent& known : now.foreign)
      if (known.key == component.key) return known = component, true;
    now.foreign.push_back(component);
    return true;
  }
  Result<std::vector<ForeignComponent>> foreign() override {
    if (fails()) return Result<std::vector<ForeignComponent>>::failure(problem());
    return now.foreign;
  }
  std::string problem() const override { return "fake.db: the disk is full"; }

  AppointmentRecord* of_uid(std::string_view uid) {
    const auto known = now.uids.find(uid);
    return known == now.uids.end() ? nullptr : &now.records[known->second];
  }

 private:
  bool fails() { return calls_until_failure >= 0 && calls_until_failure-- == 0; }
  Content before_;
};

// Two hours east of Greenwich, always.
inline HeadlessClock eastern_clock() {
  HeadlessClock clock({2026, 11, 6, 21, 12, 0, 0, 0});
  clock.set_zone(Zone("", {{0, 7200, 7200, std::nullopt, {}}}));
  return clock;
}

}  // namespace orvello
