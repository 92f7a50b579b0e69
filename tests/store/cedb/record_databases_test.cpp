// The device's record databases over a stand-in for the platform's calls.
#include <set>
#include <thread>

#include "settings/category_list.h"
#include "settings/category_props.h"
#include "settings/pretexts.h"
#include "settings/profiles.h"
#include "store/cedb/cedb_record_databases.h"
#include "tests/contract/record_databases_contract.h"
#include "tests/settings/settings_fixture.h"
#include "tests/store/cedb/volumes_stand_in.h"

namespace orvello {
namespace {

constexpr PropertyId kNameProperty = 0x000A001F;

struct CedbPlace : DatabasesPlace {
  ~CedbPlace() override {
    programs.clear();
    EXPECT_TRUE(device.nothing_left()) << "a handle, a mount or a buffer";
  }
  RecordDatabases& open() override {
    programs.push_back(std::make_unique<CedbRecordDatabases>(device.program()));
    return *programs.back();
  }
  void fail_reads_after(int count) override {
    device.fault = nullptr;
    if (count < 0) return;
    device.fault = [left = count](const std::string& call) mutable -> DWORD {
      static const std::set<std::string> reads{"CeFindFirstDatabaseEx", "CeFindNextDatabaseEx",
                                               "CeOidGetInfoEx", "CeOpenDatabaseEx",
                                               "CeReadRecordPropsEx"};
      return reads.count(call) && left-- <= 0 ? ERROR_FILE_CORRUPT : 0;
    };
  }
  bool keeps_null_units() const override { return false; }
  // The `count`th call from now on fails, or, where `then` is given, that happens at it.
  void fail_call(int count, DWORD error, std::function<void()> then = nullptr) {
    failed = false;
    device.fault = [this, left = count, error, then](const std::string&) mutable -> DWORD {
      if (--left != 0) return 0;
      failed = true;
      if (then) then();
      return then ? 0 : error;
    };
  }
  bool failed = false;
  VolumesStandIn device;
  std::vector<std::unique_ptr<CedbRecordDatabases>> programs;
};

INSTANTIATE_TEST_SUITE_P(Cedb, RecordDatabasesContract,
                         ::testing::Values(DatabasesCase{
                             "cedb", [] { return std::make_unique<CedbPlace>(); }}));

constexpr TextView kVolumePath = u"\\Orvello\\settings.vol";

// Each database with its records' texts, as another program finds them.
std::vector<Text> everything_on(CedbPlace& place) {
  place.device.fault = nullptr;
  RecordDatabases& other = place.open();
  const VolumeId there = other.mount(kVolumePath);
  EXPECT_NE(there, kInvalidVolume);
  std::vector<Text> lines;
  const auto all = other.enumerate(there).value();
  for (const DatabaseInfo& one : all) {
    lines.push_back(one.name);
    const DatabaseHandle database = other.open(there, one.name, kNameProperty);
    EXPECT_TRUE(each_record(other, database, [&](const Record& record, RecordId) {
      lines.push_back(*text_of(record, kNameProperty));
      return true;
    }));
    other.close(database);
  }
  EXPECT_TRUE(other.unmount(there));
  return lines;
}

class CedbTest : public ::testing::Test {
 protected:
  std::vector<Text> everything() { return everything_on(place); }
  static NewDatabase database(TextView name, std::vector<Text> texts) {
    NewDatabase made{Text(name), kNameProperty, {}};
    for (Text& text : texts) made.records.push_back({{kNameProperty, std::move(text)}});
    return made;
  }
  Messages boxes_shown() { return take_messages(boxes); }

  MemoryFiles files;
  HeadlessBoxes boxes;
  CedbPlace place;
  RecordDatabases& databases = place.open();
  SettingsVolume volume{databases, boxes, files};
};

// What a change of several databases is stopped by at each of its calls in turn.
enum class Stop { failed_call, dead_process, lost_power, lost_records };

class CedbChangeTest : public CedbTest, public ::testing::WithParamInterface<Stop> {};

TEST_P(CedbChangeTest, IsAllOrNothingWhereverItStops) {
  const std::vector<NewDatabase> before{database(u"pfile-Work", {u"a", u"b"}),
                                        database(u"pfile-Home", {u"c"}), database(u"list", {})};
  const std::vector<NewDatabase> after{database(u"pfile-Work", {u"d"}),
                                       database(u"pfile-New", {u"e", u"f"})};
  const std::vector<Text> old_lines{u"pfile-Work", u"a", u"b", u"pfile-Home", u"c", u"list"};
  const std::vector<Text> new_lines{u"list", u"pfile-Work", u"d", u"pfile-New", u"e", u"f"};
  bool stopped = true, came_about = false;
  int stops = 0, late = 0;
  for (int call = 1; stopped; ++call, ++stops) {
    CedbPlace fresh;
    RecordDatabases& program = fresh.open();
    const VolumeId there = program.mount(kVolumePath);
    ASSERT_TRUE(program.create_all(there, before));
    ASSERT_EQ(everything_on(fresh), old_lines);
    std::function<void()> then;
    if (GetParam() == Stop::dead_process) then = [&] { fresh.device.kill(0); };
    using Lost = VolumesStandIn::Lost;
    if (GetParam() == Stop::lost_power) then = [&] { fresh.device.lose_power(Lost::everything); };
    if (GetParam() == Stop::lost_records) then = [&] { fresh.device.lose_power(Lost::records); };
    fresh.fail_call(call, ERROR_DISK_FULL, then);
    const bool changed = program.replace(there, {u"pfile-Work", u"pfile-Home", u"none"}, after);
    const auto reason = program.last_error();
    stopped = fresh.failed;
    const auto found = everything_on(fresh);
    // Only the last flush of a living program comes after what it was to keep.
    if (!changed && found == new_lines && GetParam() == Stop::failed_call) ++late;
    came_about = came_about || found == new_lines;
    EXPECT_EQ(found, came_about ? new_lines : old_lines) << "at call " << call;
    EXPECT_NE(changed, reason != DatabaseError::none);
    EXPECT_TRUE(found == new_lines || !changed) << "at call " << call;
    EXPECT_LE(late, 1) << "at call " << call;
  }
  EXPECT_TRUE(came_about);
  EXPECT_GT(stops, 20);
}
INSTANTIATE_TEST_SUITE_P(Cedb, CedbChangeTest,
                         ::testing::Values(Stop::failed_call, Stop::dead_process, Stop::lost_power,
                                           Stop::lost_records));

// Which needs no plan.
TEST_F(CedbTest, OneNewDatabaseIsThereWithItsRecordsOrNotAtAll) {
  bool stopped = true, came_about = false;
  for (int call = 1; stopped; ++call) {
    CedbPlace fresh;
    RecordDatabases& program = fresh.open();
    const VolumeId there = program.mount(kVolumePath);
    fresh.fail_call(call, 0, [&] { fresh.device.lose_power(VolumesStandIn::Lost::records); });
    program.create_all(there, {database(u"one", {u"a", u"b"})});
    stopped = fresh.failed;
    const auto found = everything_on(fresh);
    came_about = came_about || !found.empty();
    EXPECT_EQ(found, came_about ? (std::vector<Text>{u"one", u"a", u"b"}) : std::vector<Text>())
        << "at call " << call;
  }
  EXPECT_TRUE(came_about);
}

TEST_F(CedbTest, OldDatabaseInUseElsewhereIsPutBack) {
  const VolumeId there = databases.mount(kVolumePath);
  ASSERT_TRUE(databases.create_all(there, {database(u"a", {u"1"}), database(u"b", {u"2"})}));
  // Names can be changed while it is open, and what stepped aside is deleted later.
  const DatabaseHandle open = databases.open(there, u"a", 0);
  EXPECT_TRUE(databases.replace(there, {u"a"}, {database(u"a", {u"3"})}));
  databases.close(open);
  EXPECT_EQ(everything(), (std::vector<Text>{u"b", u"2", u"a", u"3"}));
  // A change whose own undoing failed is undone before the next use.
  int calls = 0;
  place.device.fault = [&](const std::string& call) -> DWORD {
    return call == "CeSetDatabaseInfoEx" && ++calls >= 2 ? ERROR_SHARING_VIOLATION : 0;
  };
  EXPECT_FALSE(databases.replace(there, {u"a", u"b"}, {database(u"a", {u"4"})}));
  EXPECT_FALSE(databases.enumerate(there)) << "half a change is seen";
  EXPECT_EQ(databases.last_error(), DatabaseError::sharing_violation);
  place.device.fault = nullptr;
  EXPECT_EQ(databases.enumerate(there)->size(), 2u);
  EXPECT_EQ(everything(), (std::vector<Text>{u"b", u"2", u"a", u"3"}));
}

TEST_F(CedbTest, LocksAreWaitedForOnceAndNotForLong) {
  int locked = 5;
  place.device.fault = [&](const std::string& call) -> DWORD {
    return call == "CeMountDBVol" && locked-- > 0 ? ERROR_SHARING_VIOLATION : 0;
  };
  const VolumeId there = databases.mount(kVolumePath);
  EXPECT_NE(there, kInvalidVolume);
  place.device.clock += 3000;
  for (const bool by_turn : {false, true}) {
    place.device.turn_of = by_turn ? -2 : -1;
    locked = by_turn ? 0 : 1000;
    const DWORD since = place.device.clock;
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(databases.mount(kVolumePath), kInvalidVolume);
      EXPECT_EQ(databases.last_error(), DatabaseError::sharing_violation);
    }
    EXPECT_LT(place.device.clock - since, 500u);
    EXPECT_GE(place.device.clock - since, 300u);
    place.device.clock += 3000;
  }
  EXPECT_FALSE(databases.enumerate(there));
  place.device.turn_of = -1;
  EXPECT_TRUE(databases.enumerate(there));
  place.device.coarse_clock = true;
  locked = 1000;
  EXPECT_EQ(databases.mount(kVolumePath), kInvalidVolume) << "also by ticks that are far apart";
}

TEST_F(CedbTest, KeepsWhatFitsThePlatformAndRefusesTheRest) {
  const VolumeId there = databases.mount(kVolumePath);
  const Text longest(31, u'n');
  EXPECT_FALSE(databases.create(there, longest + u'x', 0)) << "two names could become one";
  EXPECT_EQ(databases.last_error(), DatabaseError::invalid_parameter);
  EXPECT_EQ(databases.open(there, longest + u'x', 0), kInvalidDatabase);
  EXPECT_EQ(databases.last_error(), DatabaseError::file_not_found);
  EXPECT_FALSE(databases.create(there, u"orvello~plan", 0));
  std::vector<Text> texts;
  for (std::size_t i = 0; i < 60; ++i) texts.push_back(Text(i % 2 ? 1 : 200 + i, u'ж'));
  ASSERT_TRUE(databases.create_all(there, {database(longest, texts)}));
  std::sort(texts.begin(), texts.end());
  texts.insert(texts.begin(), longest);
  EXPECT_EQ(everything(), texts);
  EXPECT_EQ(databases.mount(Text(300, u'x')), kInvalidVolume);
  EXPECT_EQ(databases.last_error(), DatabaseError::invalid_parameter);
}

TEST(CedbTurns, AProgramThatEndsInItsTurnLeavesItToTheNext) {
  CedbCalls one, next;
  ASSERT_TRUE(add_turns(one) && add_turns(next));
  std::thread([&] { EXPECT_TRUE(one.take_turn(0)); }).join();
  EXPECT_TRUE(next.take_turn(0));
  std::thread([&] { EXPECT_FALSE(one.take_turn(0)); }).join();
  next.end_turn();
}

// What people are told when a call of an operation fails.
TEST_F(CedbTest, FailuresAreToldInTheOperationsOwnWords) {
  std::vector<Text> texts;
  const auto save = [&] { savePreTextToDB(volume, u"x", kLocationPretexts); };
  const auto save_first = [&] { savePreTextToDB(volume, u"x", kSubjectPretexts); };
  const auto load_profile = [&] { EXPECT_FALSE(loadProfile(volume, u"Work", texts)); };
  const auto drop_profile = [&] { deleteSettingsDatabase(volume, u"pfile-Work"); };
  const auto read_list = [&] { EXPECT_FALSE(readCategoryList(volume, 1, nullptr, texts)); };
  const auto add_to = [&] { addCategory(volume, u"Home"); };
  struct Fault {
    std::function<void()> operation;
    const char* call;
    DWORD error;
    Messages boxes;
  };
  const std::string saver = "Error: savePreTextToDB(): Error in call to OpenCreateDB";
  const Fault faults[] = {
      {save, "CeMountDBVol", 112, {"Error: Database mount failed: Disk Full"}},
      {save, "CeMountDBVol", 14, {"Error: Database mount failed: Not Enough Memory"}},
      {save, "CeMountDBVol", 1392, {"Error: Database mount failed: Invalid Parameter"}},
      {save, "CeMountDBVol", 32, {"Error: Database mount failed: In Use By Another Program"}},
      {save, "CeMountDBVol", 19, {"Error: Database mount failed: Access Denied"}},
      {save, "CeMountDBVol", 0x2000, {}},
      {save, "CeOidGetInfoEx", 1392, {"Error: Database mount failed: Invalid Parameter"}},
      {save, "CeOpenDatabaseEx", 8, {"Error: Not enough memory!", saver}},
      {save, "CeOpenDatabaseEx", 1392, {saver}},
      {save_first, "CeCreateDatabaseEx", 112, {"Error: Database creation failed", saver}},
      {save, "CeReadRecordPropsEx", 1018, {"error: savePreTextToDB(): Failed to read record"}},
      {save, "CeWriteRecordProps", 8, {"Error: Not enough memory"}},
      {save, "CeWriteRecordProps", 39, {"Error: Disk Full"}},
      {save, "CeFlushDBVol", 1392, {"Error: Unknown Error"}},
      {load_profile, "CeOpenDatabaseEx", 8, {"Error: OpenCreateDB_profile: Not enough memory!"}},
      {load_profile, "CeReadRecordPropsEx", 1392, {"error: Failed to read record 1"}},
      {drop_profile, "CeDeleteDatabaseEx", 32, {"Error: error in CeDeleteDatabaseEx!"}},
      {read_list, "CeOpenDatabaseEx", 14, {"Error: Not enough memory"}},
      {read_list, "CeOpenDatabaseEx", 2, {"Error: The database doesn't exist"}},
      {read_list, "CeReadRecordPropsEx", 1392, {"Error: Handle Read Failure"}},
      {add_to, "CeReadRecordPropsEx", 1392, {"Error: Handle Read Failure"}},
      {add_to, "CeWriteRecordProps", 112, {"Error: Disk Full"}},
  };
  ASSERT_TRUE(databases.create(kObjectStore, kCategoriesDatabase, 0));
  addCategory(volume, u"Work");
  save();
  saveProfileInfoToDatabase(volume, u"pfile-Work", {{u"Work"}, {0}});
  for (const Fault& fault : faults) {
    savePreTextToDB(volume, u"x", kLocationPretexts);
    deletePreTextFromDB(volume, u"x", kLocationPretexts);
    place.device.clock += 3000;
    place.device.fault = [&](const std::string& call) {
      return call == fault.call ? fault.error : 0;
    };
    fault.operation();
    place.device.fault = nullptr;
    EXPECT_EQ(boxes_shown(), fault.boxes) << fault.call << " " << fault.error;
    EXPECT_TRUE(place.device.nothing_left()) << fault.call;
  }
}

// Each operation on the volume and on the device's list, with each of its calls failing in turn.
TEST_F(CedbTest, NoFailureLeavesAnythingOpenOrBreaksWhatWasThere) {
  const auto list = databases.create(kObjectStore, kCategoriesDatabase, 0);
  ASSERT_TRUE(list);
  addCategory(volume, u"Work");
  savePreTextToDB(volume, u"Lunch", kSubjectPretexts);
  const ListSelection labels{{u"Work", u"Home"}, {0, 1}};
  std::vector<Text> texts;
  std::vector<CategoryProp> props;
  const std::function<void()> operations[] = {
      [&] { savePreTextToDB(volume, u"Dinner", kSubjectPretexts); },
      [&] { loadPreTextToLB(volume, texts, kSubjectPretexts); },
      [&] { saveCategoryProps(volume, u"Work", 1, 1); },
      [&] { loadCategoryProps(volume, props); },
      [&] { saveProfileInfoToDatabase(volume, u"pfile-Work", labels); },
      [&] {
        EXPECT_TRUE(loadProfile(volume, u"Work", texts) || !boxes.shown.empty() || place.failed);
      },
      [&] { stored_profiles(volume); },
      [&] { addCategory(volume, u"Home"); },
      [&] { readCategoryList(volume, 1, nullptr, texts); },
      [&] { removeCategory(volume, u"Home"); },
      [&] { deletePreTextFromDB(volume, u"Dinner", kSubjectPretexts); },
      [&] { deleteSettingsDatabase(volume, u"pfile-Work"); },
  };
  for (const auto& operation : operations) {
    place.failed = true;
    for (int call = 1; place.failed; ++call) {
      place.fail_call(call, ERROR_DISK_FULL);
      operation();
      EXPECT_TRUE(place.device.nothing_left()) << "call " << call;
    }
    boxes.shown.clear();
  }
  place.device.fault = nullptr;
  ASSERT_TRUE(loadPreTextToLB(volume, texts = {}, kSubjectPretexts));
  EXPECT_EQ(texts, std::vector<Text>{u"Lunch"});
  ASSERT_TRUE(loadCategoryProps(volume, props));
  EXPECT_EQ(props, (std::vector<CategoryProp>{{u"Work", 1, 1}}));
  EXPECT_EQ(stored_profiles(volume)->size(), 0u);
  ASSERT_TRUE(readCategoryList(volume, 1, nullptr, texts = {}));
  EXPECT_EQ(texts, std::vector<Text>{u"Work"});
  EXPECT_EQ(boxes_shown(), Messages{});
}

}  // namespace
}  // namespace orvello
