#include "settings/category_list.h"

#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

class CategoryListTest : public SettingsTest {
 protected:
  void make_list(const std::vector<Record>& records = {}) {
    ASSERT_TRUE(databases.create(kObjectStore, u"Other Database", 0));
    ASSERT_TRUE(databases.create(kObjectStore, kCategoriesDatabase, 0));
    const auto list = databases.open(kObjectStore, kCategoriesDatabase, 0);
    for (const Record& record : records) ASSERT_NE(databases.write(list, 0, record), 0u);
    databases.close(list);
  }
  std::vector<Record> records() {
    std::vector<Record> all;
    const auto list = databases.open(kObjectStore, kCategoriesDatabase, 0);
    RecordId id = 0;
    while (auto record = databases.read_next(list, id)) all.push_back(std::move(*record));
    databases.close(list);
    return all;
  }
  // The number under that property; -1 without one.
  static int number(const Record& record, PropertyId id) {
    for (const auto& property : record)
      if (property.id == id) return std::get<std::int16_t>(property.value);
    return -1;
  }
  static Record label(TextView text, PropertyId count_id = 0, std::int16_t count = 0) {
    Record record{{kListLabel, Text(text)}};
    if (count_id != 0) record.push_back({count_id, count});
    return record;
  }
  std::vector<Text> read(int generation, FolderText folders = nullptr) {
    std::vector<Text> entries{u"of the one before"};
    readCategoryList(volume, generation, folders, entries);
    return entries;
  }
  std::vector<Text> joined(const Text& calendar, const Text& tasks, const Text& contacts) {
    return read(3, [&](int folder) {
      return folder == 9 ? calendar : folder == 13 ? tasks : folder == 10 ? contacts : u"wrong";
    });
  }
};

TEST_F(CategoryListTest, FoldersAreJoinedTrimmedAndCut) {
  using Labels = std::vector<Text>;
  EXPECT_EQ(joined(u"Work, Home,Work", u"", u""), (Labels{u"Work", u"Home"}));
  EXPECT_EQ(joined(u"b", u"c", u"a,b"), (Labels{u"b", u"c", u"a"}));
  EXPECT_EQ(joined(u"", u"c", u""), Labels{u"c"});
  EXPECT_EQ(joined(u"", u"", u""), Labels{});
  EXPECT_EQ(joined(u"Work,", u"", u""), (Labels{u"Work", u""}));
  EXPECT_EQ(joined(u"a,,b\nc,, ", u"", u""), (Labels{u"a", u"", u"b", u"c"}));
  const Text endless(10000, u'x');
  EXPECT_EQ(joined(endless + u"," + endless, u"", u" x"), (Labels{Text(29, u'x'), u"x"}));
  EXPECT_EQ(boxes_shown(), Messages{});
}

TEST_F(CategoryListTest, RecordsAreReadAsTheyStand) {
  make_list({{{kListNumber, std::int16_t{20}}, {0x4008001F, Text(u" first text ")}},
             label(u"Twice", kListActive, 0),
             label(u"Twice"),
             {{kListNumber, std::int16_t{21}}},
             label(Text(40, u'x'))});
  EXPECT_EQ(read(0), (std::vector<Text>{u" first text ", u"Twice", u"Twice", u"", Text(29, u'x')}));
  databases.fail_read_at = 2;
  EXPECT_EQ(read(1).size(), 2u);
  EXPECT_EQ(boxes_shown(), Messages{"Error: Handle Read Failure"});
}

TEST_F(CategoryListTest, AListThatCannotBeOpenedSaysSo) {
  const Messages missing{"Error: The database doesn't exist"};
  EXPECT_TRUE(read(2).empty());
  EXPECT_EQ(boxes_shown(), missing);
  EXPECT_EQ(addCategory(volume, u"Work"), 0);
  EXPECT_EQ(boxes_shown(), missing);
  make_list();
  databases.fail_open = DatabaseError::not_enough_memory;
  EXPECT_EQ(removeCategory(volume, u"Work"), 0);
  EXPECT_EQ(boxes_shown(), Messages{"Error: Not enough memory"});
  databases.fail_open = DatabaseError::none;
  EXPECT_TRUE(read(2).empty());
  EXPECT_EQ(removeCategory(volume, u"Work"), 0);
  EXPECT_EQ(boxes_shown(), Messages{});
}

TEST_F(CategoryListTest, NewLabelsAreNumbered) {
  make_list();
  EXPECT_EQ(addCategory(volume, u"Work"), 0);
  EXPECT_EQ(addCategory(volume, u"work"), 0);
  EXPECT_EQ(addCategory(volume, u"Work"), 1);
  auto all = records();
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(number(all[0], kListNumber), 20);
  EXPECT_EQ(number(all[1], kListNumber), 21);
  EXPECT_EQ(number(all[1], kListActive), 1);
  for (const PropertyId count : {kListAppointments, kListTasks, kListContacts})
    EXPECT_EQ(number(all[1], count), 0);
  addCategory(volume, Text(40, u'x'));
  EXPECT_EQ(std::get<Text>(records()[2][0].value), Text(29, u'x'));
  EXPECT_EQ(addCategory(volume, Text(30, u'x')), 1);
  EXPECT_EQ(boxes_shown(), Messages{});
}

TEST_F(CategoryListTest, NumbersFollowTheLargest) {
  const std::pair<std::vector<Record>, int> cases[] = {
      {{}, 20},
      {{label(u"a")}, 21},
      {{label(u"a", kListNumber, 20), label(u"b", kListNumber, 23), label(u"c")}, 24},
      {{label(u"a", kListNumber, 3)}, 4},
      {{label(u"a", kListNumber, 32767)}, 32767}};
  for (const auto& [present, wanted] : cases) {
    CategoryNumbers numbers;
    for (const Record& record : present) numbers.count(record);
    EXPECT_EQ(numbers.next(), wanted);
  }
}

TEST_F(CategoryListTest, AFailedAdditionShowsOneMessageAndLeavesNothing) {
  make_list({label(u"a")});
  databases.fail_write = DatabaseError::disk_full;
  addCategory(volume, u"b");
  EXPECT_EQ(boxes_shown(), Messages{"Error: Unknown Error"});
  databases.fail_read_at = 0;
  EXPECT_EQ(addCategory(volume, u"a"), 0);
  EXPECT_EQ(boxes_shown(), Messages{"Error: Handle Read Failure"});
  databases.fail_read_at = -1;
  EXPECT_EQ(records().size(), 1u);
}

TEST_F(CategoryListTest, ALabelInUseIsOnlyMarkedWhenThePersonAgrees) {
  make_list({label(u"Free"), label(u"Task", kListTasks, 1), label(u"Kept", kListContacts, 2)});
  EXPECT_EQ(removeCategory(volume, u"free"), 0);
  EXPECT_EQ(removeCategory(volume, u"Free"), 1);
  EXPECT_EQ(boxes_shown(), Messages{});
  boxes.answers = {BoxAnswer::cancel, BoxAnswer::ok};
  EXPECT_EQ(removeCategory(volume, u"Kept"), 0);
  EXPECT_EQ(removeCategory(volume, u"Task"), 1);
  ASSERT_EQ(boxes.shown.size(), 2u);
  EXPECT_EQ(boxes.shown[0].caption, u"Info");
  EXPECT_EQ(boxes.shown[0].icon, BoxIcon::warning);
  EXPECT_EQ(boxes.shown[0].buttons, BoxButtons::ok_cancel);
  EXPECT_TRUE(boxes.shown[0].owned);
  EXPECT_TRUE(starts_with(boxes.shown[0].text, u"This category label is currently being"));
  boxes.shown.clear();
  const auto all = records();
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(number(all[0], kListActive), 0);
  EXPECT_EQ(number(all[1], kListActive), -1) << "untouched";
  databases.fail_read_at = 1;
  EXPECT_EQ(removeCategory(volume, u"Kept"), 0);
  EXPECT_EQ(boxes_shown(), Messages{"Error: Handle Read Failure"});
}

}  // namespace
}  // namespace orvello
