// The device's category list follows the calendar, in memory and in a file.
#include "hosts/shared/device_databases.h"

#include <gtest/gtest.h>

#include <map>

#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_files.h"
#include "hosts/headless/memory_record_databases.h"
#include "hosts/headless/memory_store.h"
#include "settings/category_list.h"
#include "store/embedded/sqlite_record_databases.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

class CountingDatabases : public MemoryRecordDatabases {
 public:
  RecordId write(DatabaseHandle database, RecordId id, const Record& properties) override {
    ++writes;
    return MemoryRecordDatabases::write(database, id, properties);
  }
  bool erase(DatabaseHandle database, RecordId id) override {
    ++writes;
    return MemoryRecordDatabases::erase(database, id);
  }
  int writes = 0;
};

class DeviceDatabasesTest : public ::testing::Test {
 protected:
  std::int32_t put(TextView categories) {
    AppointmentRecord record;
    record.fields.categories = categories;
    return store.put(record);
  }
  static std::vector<Text> labels(DeviceDatabases& device, HeadlessBoxes& boxes) {
    MemoryFiles files;
    std::vector<Text> entries;
    readCategoryList({device, boxes, files}, 0, nullptr, entries);
    return entries;
  }
  std::vector<Text> labels() { return labels(device, boxes); }
  // The properties' numbers of each record, in their order.
  std::vector<std::vector<int>> numbers() {
    std::vector<std::vector<int>> all;
    const auto list = databases.open(kObjectStore, kCategoriesDatabase, 0);
    const auto add = [&](const Record& record, RecordId) {
      std::map<PropertyId, int> row;
      for (const auto& property : record)
        if (const auto* number = std::get_if<std::int16_t>(&property.value))
          row[property.id] = *number;
      auto& values = all.emplace_back();
      for (const auto& [property, value] : row) values.push_back(value);
      return true;
    };
    EXPECT_TRUE(each_record(databases, list, add));
    databases.close(list);
    return all;
  }

  HeadlessClock clock;
  MemoryStore store{clock};
  HeadlessBoxes boxes;
  MemoryFiles files;
  CountingDatabases databases;
  DeviceDatabases device{databases, &store};
  const SettingsVolume volume{device, boxes, files};
};

TEST_F(DeviceDatabasesTest, LabelsInUseAreAddedOnceWithTheirCounts) {
  using Rows = std::vector<std::vector<int>>;
  put(u"Work, ,Home,,");
  const auto second = put(u"Work");
  StoreContact contact;
  contact.categories = u"Friends,Work";
  store.put_contact(contact);
  EXPECT_EQ(labels(), (std::vector<Text>{u"Friends", u"Home", u"Work"}));
  EXPECT_EQ(numbers(), (Rows{{20, 1, 0, 0, 1}, {21, 1, 1, 0, 0}, {22, 1, 2, 0, 1}}));
  EXPECT_EQ(databases.writes, 3) << "one a label";
  labels();
  EXPECT_EQ(databases.writes, 3) << "nothing differs";
  store.erase(second);
  addCategory(volume, u"Spare");
  databases.writes = 0;
  EXPECT_EQ(labels().size(), 4u);
  EXPECT_EQ(databases.writes, 0) << "adding looked, too";
  EXPECT_EQ(numbers()[2], (std::vector<int>{22, 1, 1, 0, 1}));
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(DeviceDatabasesTest, AMarkedLabelGoesWhenNothingUsesItAnyMore) {
  const auto item = put(u"Work");
  boxes.answers = {BoxAnswer::ok};
  EXPECT_EQ(removeCategory(volume, u"Work"), 1);
  EXPECT_EQ(boxes.shown.size(), 1u) << "it is in use";
  EXPECT_EQ(labels(), std::vector<Text>{u"Work"});
  EXPECT_EQ(numbers()[0][1], 0) << "still marked";
  store.erase(item);
  EXPECT_EQ(labels(), std::vector<Text>{});
  EXPECT_EQ(removeCategory(volume, u"Work"), 0);
  EXPECT_EQ(boxes.shown.size(), 1u);
}

TEST_F(DeviceDatabasesTest, AMarkedLabelStaysWhileItsUsesCannotBeRead) {
  put(u"Work");
  boxes.answers = {BoxAnswer::ok};
  EXPECT_EQ(removeCategory(volume, u"Work"), 1);
  databases.writes = 0;
  store.faults.unreadable = true;
  EXPECT_EQ(labels(), std::vector<Text>{u"Work"});
  store.faults.unreadable = false;
  databases.fail_read_at = 0;
  labels();
  databases.fail_read_at = -1;
  EXPECT_EQ(databases.writes, 0);
  EXPECT_EQ(labels(), std::vector<Text>{u"Work"});
}

TEST_F(DeviceDatabasesTest, AFailedWriteDoesNotStandInTheWay) {
  put(Text(10000, u'x'));
  put(Text(30, u'x'));
  ASSERT_EQ(labels(), std::vector<Text>{Text(29, u'x')});
  EXPECT_EQ(numbers()[0][2], 2) << "one label once they are cut";
  put(u"Home");
  databases.fail_write = DatabaseError::disk_full;
  EXPECT_EQ(labels().size(), 1u);
  EXPECT_TRUE(boxes.shown.empty());
  databases.fail_write = DatabaseError::none;
  EXPECT_EQ(labels().size(), 2u);
}

TEST_F(DeviceDatabasesTest, VolumesAreLeftAloneAndAMissingStoreToo) {
  DeviceDatabases alone(databases, nullptr);
  EXPECT_TRUE(labels(alone, boxes).empty());
  EXPECT_TRUE(boxes.shown.empty()) << "the list is there";
  put(u"Work");
  const VolumeId mounted = device.mount(u"\\settings.vol");
  EXPECT_EQ(device.open(mounted, kCategoriesDatabase, 0), kInvalidDatabase);
  EXPECT_EQ(device.last_error(), DatabaseError::file_not_found);
  EXPECT_EQ(databases.writes, 0);
}

TEST_F(DeviceDatabasesTest, AFileKeepsTheList) {
  const ScratchFolder folder;
  const auto path_of = [](TextView) { return std::string(); };
  put(u"Work, Home");
  {
    SqliteRecordDatabases file(folder / "device.db", path_of);
    DeviceDatabases kept(file, &store);
    const SettingsVolume kept_volume{kept, boxes, files};
    EXPECT_EQ(labels(kept, boxes), (std::vector<Text>{u"Home", u"Work"}));
    EXPECT_EQ(addCategory(kept_volume, u"Spare"), 0);
    EXPECT_EQ(removeCategory(kept_volume, u"Home"), 1) << "after asking";
  }
  SqliteRecordDatabases file(folder / "device.db", path_of);
  DeviceDatabases kept(file, &store);
  EXPECT_EQ(labels(kept, boxes), (std::vector<Text>{u"Home", u"Work", u"Spare"}));
  EXPECT_EQ(boxes.shown.size(), 1u);
}

}  // namespace
}  // namespace orvello
