#include "settings/category_list.h"

#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

using Labels = std::vector<Text>;

class CategoryListTest : public SettingsTest {
 protected:
  void make_list(const std::vector<Record>& records = {}) {
    ASSERT_TRUE(databases.create(kObjectStore, u"Other Database", 0));
    ASSERT_TRUE(databases.create(kObjectStore, kCategoriesDatabase, 0));
    const auto list = databases.open(kObjectStore, kCategoriesDatabase, 0);
    for (const Record& record : records) ASSERT_NE(databases.write(list, 0, record), 0u);
    databases.close(list);
  }
  // "label number active counts" of each record, as far as it has them.
  Messages records() {
    Messages all;
    const auto list = databases.open(kObjectStore, kCategoriesDatabase, 0);
    const auto add = [&](const Record& record, RecordId) {
      std::string& line = all.emplace_back();
      for (const auto& property : record)
        if (const auto* text = std::get_if<Text>(&property.value))
          line += to_utf8(*text);
        else
          line += " " + std::to_string(std::get<std::int16_t>(property.value));
      return true;
    };
    EXPECT_TRUE(each_record(databases, list, add));
    databases.close(list);
    return all;
  }
  static Record label(TextView text, PropertyId id, std::int16_t number) {
    return {{kListLabel, Text(text)}, {id, number}};
  }
  Labels read(int generation, FolderText folders = nullptr) {
    Labels entries{u"of the one before"};
    readCategoryList(volume, generation, folders, entries);
    return entries;
  }
  Labels joined(const Text& calendar, const Text& tasks, const Text& contacts) {
    return read(3, [&](int folder) {
      return folder == 9 ? calendar : folder == 13 ? tasks : folder == 10 ? contacts : u"wrong";
    });
  }
};

TEST_F(CategoryListTest, FoldersAreJoinedTrimmedAndCut) {
  EXPECT_EQ(joined(u"Work, Home,Work", u"", u""), (Labels{u"Work", u"Home"}));
  EXPECT_EQ(joined(u"b", u"c", u"a,b"), (Labels{u"b", u"c", u"a"}));
  EXPECT_EQ(joined(u"", u"", u""), Labels{});
  EXPECT_EQ(joined(u"", u"Work,", u""), (Labels{u"Work", u""}));
  EXPECT_EQ(joined(u"a,,b\nc,, ", u"", u""), (Labels{u"a", u"", u"b", u"c"}));
  const Text endless(10000, u'x');
  EXPECT_EQ(joined(endless + u"," + endless, u"", u" x"), (Labels{Text(29, u'x'), u"x"}));
}

TEST_F(CategoryListTest, RecordsAreReadAsTheyStand) {
  make_list({{{kListNumber, std::int16_t{20}}, {0x4008001F, Text(u" first text ")}},
             label(u"Twice", kListActive, 0),
             label(u"Twice", kListActive, 1),
             {{kListNumber, std::int16_t{21}}},
             label(Text(40, u'x'), kListActive, 1)});
  EXPECT_EQ(read(0), (Labels{u" first text ", u"Twice", u"Twice", u"", Text(29, u'x')}));
  databases.fail_read_at = 2;
  EXPECT_EQ(read(1).size(), 2u);
  EXPECT_EQ(removeCategory(volume, Text(40, u'x')), 0);
  EXPECT_EQ(addCategory(volume, u"Work"), 0);
  EXPECT_EQ(boxes_shown(), Messages(3, "Error: Handle Read Failure"));
}

TEST_F(CategoryListTest, AListThatCannotBeOpenedSaysSo) {
  EXPECT_EQ(read(2), Labels{});
  EXPECT_EQ(addCategory(volume, u"Work"), 0);
  EXPECT_EQ(boxes_shown(), Messages(2, "Error: The database doesn't exist"));
  make_list();
  databases.fail_open = DatabaseError::not_enough_memory;
  EXPECT_EQ(removeCategory(volume, u"Work"), 0);
  EXPECT_EQ(boxes_shown(), Messages{"Error: Not enough memory"});
}

TEST_F(CategoryListTest, NewLabelsAreNumberedAndUnique) {
  make_list();
  EXPECT_EQ(addCategory(volume, u"Work"), 0);
  EXPECT_EQ(addCategory(volume, u"work"), 0);
  EXPECT_EQ(addCategory(volume, u"Work"), 1);
  EXPECT_EQ(addCategory(volume, Text(40, u'x')), 0);
  EXPECT_EQ(addCategory(volume, Text(30, u'x')), 1);
  EXPECT_EQ(records(),
            (Messages{"Work 20 1 0 0 0", "work 21 1 0 0 0", std::string(29, 'x') + " 22 1 0 0 0"}));
  databases.fail_write = DatabaseError::disk_full;
  EXPECT_EQ(addCategory(volume, u"b"), 0);
  EXPECT_EQ(boxes_shown(), Messages{"Error: Disk Full"});
  // Full only in the middle of a label: no half of it stays.
  databases.fail_write_after = 3;
  databases.fail_write_times = 1;
  EXPECT_EQ(addCategory(volume, u"Half"), 0);
  EXPECT_EQ(records().size(), 3u);
  const std::pair<std::vector<Record>, int> cases[] = {
      {{label(u"a", kListActive, 9)}, 21},
      {{label(u"a", kListNumber, 20), label(u"b", kListNumber, 23), label(u"c", kListTasks, 99)},
       24},
      {{label(u"a", kListNumber, 3)}, 4},
      {{label(u"a", kListNumber, 32767)}, 32767}};
  for (const auto& [present, wanted] : cases) {
    CategoryNumbers numbers;
    for (const Record& record : present) numbers.count(record);
    EXPECT_EQ(numbers.next(), wanted);
  }
}

TEST_F(CategoryListTest, ALabelInUseIsOnlyMarkedWhenThePersonAgrees) {
  make_list({label(u"Free", kListTasks, 0), label(u"Task", kListTasks, 1),
             label(u"Kept", kListContacts, 2)});
  EXPECT_EQ(removeCategory(volume, u"free"), 0);
  EXPECT_EQ(removeCategory(volume, u"Free"), 1);
  EXPECT_EQ(boxes_shown(), Messages{});
  boxes.answers = {BoxAnswer::cancel, BoxAnswer::ok};
  EXPECT_EQ(removeCategory(volume, u"Kept"), 0);
  EXPECT_EQ(removeCategory(volume, u"Task"), 1);
  EXPECT_EQ(records(), (Messages{"Task 1 0", "Kept 2"}));
  ASSERT_EQ(boxes.shown.size(), 2u);
  const ShownBox& asked = boxes.shown[0];
  EXPECT_TRUE(asked.owned && asked.caption == u"Info" && asked.icon == BoxIcon::warning &&
              asked.buttons == BoxButtons::ok_cancel_losing);
  EXPECT_TRUE(starts_with(asked.text, u"This category label is currently being referenced"));
}

}  // namespace
}  // namespace orvello
