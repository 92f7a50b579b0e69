#include "store/cedb/cedb_replacement.h"

#include <algorithm>

#include "base/text.h"
#include "ports/record_order.h"
#include "store/cedb/cedb_records.h"

namespace orvello {
namespace {

constexpr TextView kChangePrefix = u"orvello~", kPlanName = u"orvello~plan";
constexpr PropertyId kPlannedName = 0x0001001F, kPlannedNumber = 0x00020003,
                     kPlannedOld = 0x00030002;

// One name that changes hands.
struct NameChange {
  Text name;
  CeOid old = 0;   // the database that has it
  CeOid made = 0;  // the one that gets it
};

Text aside_name(std::size_t number) { return format(u"orvello~old-%d", static_cast<int>(number)); }

const DatabaseInfo* named(const std::vector<DatabaseInfo>& all, TextView name) {
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const DatabaseInfo& one) { return one.name == name; });
  return found == all.end() ? nullptr : &*found;
}

// The steps of a change; after one that failed nothing more is done.
class CedbSteps {
 public:
  explicit CedbSteps(CedbVolume& volume) : volume_(volume) {}
  DatabaseError error = DatabaseError::none;
  bool good() const { return error == DatabaseError::none; }

  void rename(CeOid database, TextView name) {
    if (good()) error = volume_.rename(database, name);
  }
  void remove(CeOid database) {
    if (good()) error = volume_.remove(database);
  }
  void flush() {
    if (good()) error = volume_.flush();
  }
  CeOid write(TextView name, PropertyId sort_property, const std::vector<Record>& records) {
    CeOid made = 0;
    CedbHandle opened;
    if (good()) error = volume_.create(name, sort_property, made);
    if (good() && !records.empty()) error = volume_.open(name, sort_property, made, opened);
    for (const Record& record : records) {
      CeOid id = 0;
      if (good()) error = write_record(volume_.calls(), opened.get(), id, record);
    }
    return made;
  }

 private:
  CedbVolume& volume_;
};

// Names are looked at before anything is written, and each is there once afterwards.
DatabaseError plan_names(const std::vector<DatabaseInfo>& present, const std::vector<Text>& removed,
                         const std::vector<NewDatabase>& databases,
                         std::vector<NameChange>& changes) {
  const auto change_of = [&](TextView name) {
    return std::find_if(changes.begin(), changes.end(),
                        [&](const NameChange& one) { return one.name == name; });
  };
  for (const Text& name : removed)
    if (const DatabaseInfo* old = named(present, name); old && change_of(name) == changes.end())
      changes.push_back({name, old->object_id, 0});
  std::vector<Text> made;
  for (const NewDatabase& one : databases) {
    if (!fits_name(one.name) || is_of_change(one.name) ||
        !std::all_of(one.records.begin(), one.records.end(), fits_record))
      return DatabaseError::invalid_parameter;
    const bool taken = named(present, one.name) && change_of(one.name) == changes.end();
    if (taken || std::find(made.begin(), made.end(), one.name) != made.end())
      return DatabaseError::already_exists;
    made.push_back(one.name);
  }
  for (const Text& name : made)
    if (change_of(name) == changes.end()) changes.push_back({name, 0, 0});
  return DatabaseError::none;
}

void write_new(CedbSteps& steps, const std::vector<NewDatabase>& databases,
               std::vector<NameChange>& changes) {
  for (std::size_t i = 0; i < databases.size(); ++i) {
    const NewDatabase& one = databases[i];
    const CeOid made =
        steps.write(format(u"orvello~new-%d", static_cast<int>(i)), one.sort_property, one.records);
    for (NameChange& change : changes)
      if (change.name == one.name) change.made = made;
  }
}

CeOid write_plan(CedbSteps& steps, const std::vector<NameChange>& changes) {
  std::vector<Record> plan;
  for (std::size_t i = 0; i < changes.size(); ++i)
    plan.push_back({{kPlannedName, changes[i].name},
                    {kPlannedNumber, static_cast<std::int32_t>(i)},
                    {kPlannedOld, static_cast<std::int16_t>(changes[i].old != 0)}});
  const CeOid made = steps.write(kPlanName, 0, plan);
  steps.flush();
  return made;
}

void change_names(CedbSteps& steps, const std::vector<NameChange>& changes) {
  steps.flush();
  if (changes.size() == 1 && (changes[0].old == 0 || changes[0].made == 0)) {
    // One call, which needs no plan.
    if (changes[0].made != 0) steps.rename(changes[0].made, changes[0].name);
    if (changes[0].old != 0) steps.remove(changes[0].old);
    steps.flush();
    return;
  }
  const CeOid plan = write_plan(steps, changes);
  for (std::size_t i = 0; i < changes.size(); ++i) {
    if (changes[i].old != 0) steps.rename(changes[i].old, aside_name(i));
    if (changes[i].made != 0) steps.rename(changes[i].made, changes[i].name);
  }
  steps.flush();
  steps.remove(plan);
  steps.flush();
}

DatabaseError read_plan(CedbVolume& volume, CeOid plan, std::vector<ReadRecord>& records) {
  CedbHandle opened;
  const DatabaseError error = volume.open(kPlanName, 0, plan, opened);
  if (error != DatabaseError::none) return error;
  return read_records(volume.calls(), opened.get(), records);
}

// Each name goes back to the database that had it. Doing it twice does no harm.
void put_back(CedbSteps& steps, const std::vector<DatabaseInfo>& present,
              const std::vector<ReadRecord>& plan) {
  for (const ReadRecord& planned : plan) {
    const auto* name = find_property(planned.properties, kPlannedName);
    const auto* number = find_property(planned.properties, kPlannedNumber);
    const auto* had = find_property(planned.properties, kPlannedOld);
    if (!name || !number || !had) continue;
    const DatabaseInfo* now = named(present, std::get<Text>(name->value));
    const DatabaseInfo* old =
        named(present, aside_name(static_cast<std::size_t>(std::get<std::int32_t>(number->value))));
    const bool is_new = old || std::get<std::int16_t>(had->value) == 0;
    if (now && is_new) steps.remove(now->object_id);
    if (old) steps.rename(old->object_id, std::get<Text>(name->value));
  }
}

}  // namespace

bool is_of_change(TextView name) { return name.substr(0, kChangePrefix.size()) == kChangePrefix; }

DatabaseError undo_unfinished_change(CedbVolume& volume) {
  std::vector<DatabaseInfo> present;
  CedbSteps steps(volume);
  steps.error = volume.list(present);
  const auto unfinished = [&] {
    return std::any_of(present.begin(), present.end(),
                       [](const DatabaseInfo& one) { return is_of_change(one.name); });
  };
  if (!steps.good() || !unfinished()) return steps.error;
  if (const DatabaseInfo* plan = named(present, kPlanName)) {
    std::vector<ReadRecord> planned;
    steps.error = read_plan(volume, plan->object_id, planned);
    put_back(steps, present, planned);
    steps.flush();
    steps.remove(plan->object_id);
    steps.flush();
    if (!steps.good()) return steps.error;
    steps.error = volume.list(present);
  }
  // The rest has no names that anybody knows; what cannot be deleted now can be later.
  if (!steps.good()) return steps.error;
  for (const DatabaseInfo& one : present)
    if (is_of_change(one.name)) volume.remove(one.object_id);
  volume.flush();
  return DatabaseError::none;
}

DatabaseError replace_databases(CedbVolume& volume, const std::vector<Text>& removed,
                                const std::vector<NewDatabase>& databases, bool& undone) {
  undone = true;
  std::vector<DatabaseInfo> present;
  std::vector<NameChange> changes;
  CedbSteps steps(volume);
  steps.error = volume.list(present);
  if (steps.good()) steps.error = plan_names(present, removed, databases, changes);
  if (!steps.good() || changes.empty()) return steps.error;
  write_new(steps, databases, changes);
  change_names(steps, changes);
  const DatabaseError error = steps.error;
  // After a change that stands only the old ones are left to be deleted, now or later.
  const bool cleared = undo_unfinished_change(volume) == DatabaseError::none;
  undone = cleared || error == DatabaseError::none;
  return error;
}

}  // namespace orvello
