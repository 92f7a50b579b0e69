// What every kind of record databases must do.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "ports/record_databases.h"

namespace orvello {

// A device with its volumes: each `open` is another program on it.
struct DatabasesPlace {
  virtual ~DatabasesPlace() = default;
  virtual RecordDatabases& open() = 0;
  // From now on the reads after the next `count` fail; -1: none do.
  virtual void fail_reads_after(int count) = 0;
  // Else such texts are refused as a whole.
  virtual bool keeps_null_units() const { return true; }
};
using DatabasesCase = std::pair<const char*, std::function<std::unique_ptr<DatabasesPlace>()>>;
inline void PrintTo(const DatabasesCase& one, std::ostream* out) { *out << one.first; }

class RecordDatabasesContract : public ::testing::TestWithParam<DatabasesCase> {
 protected:
  static constexpr PropertyId kName = 0x000D001F, kLong = 0x000B0003, kShort = 0x000C0002;

  VolumeId mounted() {
    const VolumeId volume = databases.mount(u"\\data\\test.vol");
    EXPECT_NE(volume, kInvalidVolume);
    return volume;
  }
  DatabaseHandle created(VolumeId volume, TextView name, PropertyId sort = kName) {
    EXPECT_TRUE(databases.create(volume, name, sort));
    const DatabaseHandle database = databases.open(volume, name, sort);
    EXPECT_NE(database, kInvalidDatabase);
    return database;
  }
  static Text name_in(const Record& record) {
    const auto* name = property_of(record, kName);
    return name ? std::get<Text>(name->value) : u"(none)";
  }
  std::vector<Text> names(VolumeId volume, TextView name, PropertyId sort = kName) {
    std::vector<Text> all;
    const DatabaseHandle database = databases.open(volume, name, sort);
    EXPECT_TRUE(each_record(databases, database, [&](const Record& record, RecordId) {
      all.push_back(name_in(record));
      return true;
    }));
    databases.close(database);
    return all;
  }
  std::optional<ReadRecord> next(DatabaseHandle database) {
    std::optional<ReadRecord> record;
    EXPECT_TRUE(databases.read_next(database, record));
    return record;
  }
  // Everything in the volume as lines; nothing when some of it could not be read.
  std::optional<std::vector<Text>> everything(VolumeId volume) {
    const auto all = databases.enumerate(volume);
    if (!all) return std::nullopt;
    std::vector<Text> lines;
    for (const DatabaseInfo& one : *all) {
      const DatabaseHandle database = databases.open(volume, one.name, kName);
      if (database == kInvalidDatabase) return std::nullopt;
      const auto info = databases.info(database);
      if (info) lines.push_back(format(u"%s %d", one.name, static_cast<int>(info->record_count)));
      const bool read = each_record(databases, database, [&](const Record& record, RecordId) {
        lines.push_back(name_in(record));
        return true;
      });
      databases.close(database);
      if (!info || !read) return std::nullopt;
    }
    return lines;
  }
  static const orvello::RecordProperty* property_of(const Record& record, PropertyId id) {
    for (const orvello::RecordProperty& one : record)
      if (one.id == id) return &one;
    return nullptr;
  }

  std::unique_ptr<DatabasesPlace> place = GetParam().second();
  RecordDatabases& databases = place->open();
};

TEST_P(RecordDatabasesContract, DatabasesAreListedInOrderOfCreationAndSurviveUnmounting) {
  VolumeId volume = mounted();
  EXPECT_TRUE(databases.enumerate(volume)->empty());
  for (const TextView name : {u"b", u"A", u"a"}) EXPECT_TRUE(databases.create(volume, name, kName));
  EXPECT_FALSE(databases.create(volume, u"A", kName));
  EXPECT_EQ(databases.last_error(), DatabaseError::already_exists);
  const DatabaseHandle open = databases.open(volume, u"A", kName);
  databases.write(open, 0, {{kName, Text(u"x")}});
  databases.write(open, 0, {{kName, Text(u"x")}});
  EXPECT_EQ(databases.info(open)->record_count, 2u);
  EXPECT_EQ(databases.info(open)->name, u"A");
  databases.close(open);
  EXPECT_TRUE(databases.remove(volume, u"b"));
  EXPECT_FALSE(databases.remove(volume, u"b"));
  EXPECT_EQ(databases.last_error(), DatabaseError::file_not_found);
  EXPECT_TRUE(databases.unmount(volume));
  EXPECT_FALSE(databases.unmount(volume));

  volume = mounted();
  const auto all = databases.enumerate(volume).value();
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[0].name, u"A");
  EXPECT_EQ(all[0].record_count, 2u);
  EXPECT_EQ(all[1].name, u"a");
  EXPECT_NE(all[0].object_id, all[1].object_id);
  EXPECT_TRUE(databases.create(volume, u"b", kName));
  EXPECT_TRUE(names(volume, u"b").empty()) << "records of the deleted one of that name";
  EXPECT_TRUE(databases.enumerate(kObjectStore)->empty());
}

TEST_P(RecordDatabasesContract, RecordsComeInTheOrderOfTheirUnitsAndThenOfCreation) {
  const VolumeId volume = mounted();
  const DatabaseHandle database = created(volume, u"list");
  // U+FF5E is above the first half of U+1F4C5's pair; U+0100 is above U+00FF although its low byte
  // is smaller.
  const Text texts[] = {u"\uFF5E", u"\U0001F4C5", u"b", u"\u0100", u"B",
                        u"\u00FF", u"a",          u"",  u"ab"};
  for (const Text& text : texts) ASSERT_NE(databases.write(database, 0, {{kName, text}}), 0u);
  const RecordId second_a = databases.write(database, 0, {{kName, Text(u"a")}});
  databases.write(database, 0, {{kLong, std::int32_t{1}}});
  databases.close(database);
  EXPECT_EQ(names(volume, u"list"),
            (std::vector<Text>{u"(none)", u"", u"B", u"a", u"a", u"ab", u"b", u"\u00FF", u"\u0100",
                               u"\U0001F4C5", u"\uFF5E"}));
  EXPECT_EQ(names(volume, u"list", 0).front(), u"\uFF5E");
  const DatabaseHandle again = databases.open(volume, u"list", kName);
  for (int i = 0; i < 4; ++i) next(again);
  EXPECT_EQ(next(again)->id, second_a) << "the later of equal ones";
}

TEST_P(RecordDatabasesContract, WritingSetsTheGivenPropertiesAndKeepsTheOthers) {
  const VolumeId volume = mounted();
  const DatabaseHandle database = created(volume, u"props");
  Text odd{u'a', 0, 0xD83D, u'ё'};
  if (!place->keeps_null_units()) {
    EXPECT_EQ(databases.write(database, 0, {{kName, odd}}), 0u);
    EXPECT_EQ(databases.last_error(), DatabaseError::invalid_parameter);
    odd[1] = u'b';
  }
  const RecordId id =
      databases.write(database, 0, {{kName, odd}, {kLong, std::int32_t{-2147483647 - 1}}});
  ASSERT_NE(id, 0u);
  EXPECT_EQ(databases.write(database, id, {{kShort, std::int16_t{-2}}}), id);
  EXPECT_EQ(databases.write(database, id, {{kShort, std::int16_t{-3}}}), id);
  databases.close(database);

  const DatabaseHandle again = databases.open(volume, u"props", kName);
  const auto found = next(again);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->id, id);
  const Record* record = &found->properties;
  ASSERT_EQ(record->size(), 3u);
  EXPECT_EQ(std::get<Text>(property_of(*record, kName)->value), odd);
  EXPECT_EQ(std::get<std::int32_t>(property_of(*record, kLong)->value), -2147483647 - 1);
  EXPECT_EQ(std::get<std::int16_t>(property_of(*record, kShort)->value), -3);
  EXPECT_FALSE(next(again));
  EXPECT_TRUE(databases.seek_first(again));
  EXPECT_TRUE(next(again));
}

TEST_P(RecordDatabasesContract, ErasingRemovesOneRecordAlsoWhileReading) {
  const VolumeId volume = mounted();
  const DatabaseHandle database = created(volume, u"list");
  RecordId last = 0;
  for (const TextView text : {u"a", u"b", u"b", u"c"})
    last = databases.write(database, 0, {{kName, Text(text)}});
  databases.close(database);
  const DatabaseHandle reading = databases.open(volume, u"list", kName);
  next(reading);
  const RecordId second = next(reading)->id;
  EXPECT_TRUE(databases.erase(reading, second));
  EXPECT_FALSE(databases.erase(reading, second));
  EXPECT_EQ(databases.last_error(), DatabaseError::invalid_parameter);
  EXPECT_TRUE(databases.erase(reading, last)) << "which is still to come";
  EXPECT_TRUE(next(reading));
  EXPECT_FALSE(next(reading));
  databases.close(reading);
  EXPECT_EQ(names(volume, u"list"), (std::vector<Text>{u"a", u"b"}));
}

TEST_P(RecordDatabasesContract, WrongCallsAreRefusedWithTheirReason) {
  const VolumeId volume = mounted();
  EXPECT_EQ(databases.open(volume, u"missing", kName), kInvalidDatabase);
  EXPECT_EQ(databases.last_error(), DatabaseError::file_not_found);
  EXPECT_EQ(databases.open(4711, u"x", kName), kInvalidDatabase);
  EXPECT_EQ(databases.last_error(), DatabaseError::invalid_parameter);
  EXPECT_EQ(databases.mount(u""), kInvalidVolume);
  EXPECT_EQ(databases.last_error(), DatabaseError::invalid_parameter);
  for (const DatabaseHandle wrong : {kInvalidDatabase, DatabaseHandle{0}}) {
    EXPECT_FALSE(databases.info(wrong));
    EXPECT_FALSE(each_record(databases, wrong, [](const Record&, RecordId) { return true; }));
    EXPECT_EQ(databases.write(wrong, 0, {{kName, Text(u"x")}}), 0u);
    EXPECT_EQ(databases.last_error(), DatabaseError::invalid_parameter);
  }
  const DatabaseHandle database = created(volume, u"list");
  EXPECT_EQ(databases.write(database, 0, {}), 0u);
  EXPECT_EQ(databases.write(database, 0, {{kName, std::int32_t{1}}}), 0u);
  EXPECT_EQ(databases.write(database, 99, {{kName, Text(u"x")}}), 0u);
  EXPECT_EQ(databases.last_error(), DatabaseError::invalid_parameter);
  EXPECT_TRUE(names(volume, u"list").empty());
  databases.unmount(volume);
  EXPECT_FALSE(databases.info(database)) << "a handle outlives its volume";
}

TEST_P(RecordDatabasesContract, TheObjectStoreIsAlwaysThere) {
  const DatabaseHandle database = created(kObjectStore, u"Categories Database", 0);
  databases.write(database, 0, {{kName, Text(u"z")}});
  databases.write(database, 0, {{kName, Text(u"a")}});
  databases.close(database);
  EXPECT_FALSE(databases.unmount(kObjectStore));
  EXPECT_EQ(names(kObjectStore, u"Categories Database", 0), (std::vector<Text>{u"z", u"a"}));
  EXPECT_TRUE(databases.enumerate(mounted())->empty());
}

TEST_P(RecordDatabasesContract, AnotherProgramSeesWhatWasWritten) {
  const VolumeId volume = mounted();
  const DatabaseHandle database = created(volume, u"shared");
  databases.write(database, 0, {{kName, Text(u"one")}});
  RecordDatabases& other = place->open();
  const VolumeId there = other.mount(u"\\data\\test.vol");
  ASSERT_NE(there, kInvalidVolume);
  const DatabaseHandle shared = other.open(there, u"shared", kName);
  EXPECT_EQ(other.info(shared)->record_count, 1u);
  EXPECT_NE(other.write(shared, 0, {{kName, Text(u"two")}}), 0u);
  EXPECT_EQ(names(volume, u"shared"), (std::vector<Text>{u"one", u"two"}));
}

TEST_P(RecordDatabasesContract, DatabasesComeIntoBeingTogether) {
  const VolumeId volume = mounted();
  const std::vector<NewDatabase> both{{u"a", kName, {{{kName, Text(u"2")}}, {{kName, Text(u"1")}}}},
                                      {u"b", kName, {}}};
  ASSERT_TRUE(databases.create_all(volume, both));
  EXPECT_EQ(everything(volume), (std::vector<Text>{u"a 2", u"1", u"2", u"b 0"}));
  EXPECT_FALSE(databases.create_all(volume, {{u"c", kName, {}}, both[0]}));
  EXPECT_EQ(databases.last_error(), DatabaseError::already_exists);
  EXPECT_FALSE(databases.create_all(volume, {{u"c", kName, {{{kName, std::int32_t{1}}}}}}));
  EXPECT_EQ(databases.last_error(), DatabaseError::invalid_parameter);
  EXPECT_EQ(databases.enumerate(volume)->size(), 2u);
  // In place of others, of which some are not there.
  EXPECT_FALSE(databases.replace(volume, {u"a", u"b"}, {both[1], both[1]}));
  EXPECT_EQ(everything(volume), (std::vector<Text>{u"a 2", u"1", u"2", u"b 0"}));
  ASSERT_TRUE(databases.replace(volume, {u"a", u"z"}, {{u"a", kName, {{{kName, Text(u"3")}}}}}));
  EXPECT_EQ(everything(volume), (std::vector<Text>{u"b 0", u"a 1", u"3"}));
}

TEST_P(RecordDatabasesContract, AFailedReadIsNeverTakenForTheEnd) {
  const VolumeId volume = mounted();
  const Record three[] = {{{kName, Text(u"1")}},
                          {{kName, Text(u"2")}, {kLong, std::int32_t{1}}},
                          {{kName, Text(u"3")}}};
  ASSERT_TRUE(databases.create_all(
      volume, {{u"a", kName, {three[0], three[1], three[2]}}, {u"b", kName, {three[1]}}}));
  const auto sound = everything(volume);
  ASSERT_TRUE(sound);
  int failed = 0;
  for (int count = 0; failed == count; ++count) {
    place->fail_reads_after(count);
    const auto found = everything(volume);
    if (found) {
      EXPECT_EQ(found, sound) << "after " << count << " reads";
    } else {
      ++failed;
      EXPECT_NE(databases.last_error(), DatabaseError::none);
    }
    place->fail_reads_after(-1);
    ASSERT_EQ(everything(volume), sound) << "after " << count << " reads";
  }
  EXPECT_GT(failed, 8) << "each kind of read fails somewhere";
}

}  // namespace orvello
