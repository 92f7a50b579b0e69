#include <fstream>
#include <iterator>
#include <utility>

#include "settings/category_props.h"
#include "settings/color_schemes.h"
#include "settings/colors.h"
#include "settings/pretexts.h"
#include "settings/program_files.h"
#include "settings/setting_table.h"
#include "tests/data_path.h"
#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

// Written down independently of the table: name, default on an English device, field.
struct NumberDefault {
  TextView name;
  std::int32_t value;
  std::int32_t SettingsRecord::*field;
};
const NumberDefault kNumbers[] = {
    {u"timeformat", 0, &SettingsRecord::timeformat},
    {u"cleartype", 0, &SettingsRecord::cleartype},
    {u"showdays", 0, &SettingsRecord::showdays},
    {u"colorexpired", 0, &SettingsRecord::colorexpired},
    {u"showindicator", 0, &SettingsRecord::showindicator},
    {u"showfree", 1, &SettingsRecord::showfree},
    {u"showholiday", 0, &SettingsRecord::showholiday},
    {u"showlocation", 0, &SettingsRecord::showlocation},
    {u"wrapsubject", 0, &SettingsRecord::wrapsubject},
    {u"coloryearview", 0, &SettingsRecord::coloryearview},
    {u"showdaylabel", 0, &SettingsRecord::showdaylabel},
    {u"timeA", 12, &SettingsRecord::timeA},
    {u"timeB", 24, &SettingsRecord::timeB},
    {u"timeC", 34, &SettingsRecord::timeC},
    {u"timeD", 42, &SettingsRecord::timeD},
    {u"rowcolorindex", 0, &SettingsRecord::rowcolorindex},
    {u"calendarcolorstyle", 0, &SettingsRecord::calendarcolorstyle},
    {u"alarmflag", 1, &SettingsRecord::alarmflag},
    {u"startmode", 1, &SettingsRecord::startmode},
    {u"weeknumberformat", 0, &SettingsRecord::weeknumberformat},
    {u"weekstartmonth", 1, &SettingsRecord::weekstartmonth},
    {u"weekstartday", 1, &SettingsRecord::weekstartday},
    {u"firstdayofweek", 0, &SettingsRecord::firstdayofweek},
    {u"dvfontsize", 12, &SettingsRecord::dvfontsize},
    {u"coloroffdays", 0, &SettingsRecord::coloroffdays},
    {u"categoryiconflag", 0, &SettingsRecord::categoryiconflag},
    {u"usecategorycolorforbar", 0, &SettingsRecord::usecategorycolorforbar},
    {u"dayviewheaderformat", 3, &SettingsRecord::dayviewheaderformat},
    {u"defremindme", 0, &SettingsRecord::defremindme},
    {u"defremindtime", 30, &SettingsRecord::defremindtime},
    {u"defremindunits", 0, &SettingsRecord::defremindunits},
    {u"defaultscalendar", 0, &SettingsRecord::defaultscalendar},
    {u"juliandate", 0, &SettingsRecord::juliandate},
};

void expect_defaults(const SettingsRecord& settings) {
  for (const auto& number : kNumbers)
    EXPECT_EQ(settings.*number.field, number.value) << to_utf8(number.name);
  EXPECT_EQ(settings.activeprofilename, u"All");
  EXPECT_EQ(settings.strdefcategory, u"(None)");
  EXPECT_EQ(settings.strprevlocation, u"");
  EXPECT_EQ(settings.default_start, (HourMinute{12, 0}));
  EXPECT_EQ(settings.default_end, (HourMinute{12, 30}));
  for (int slot = 0; slot < 48; ++slot) {
    EXPECT_EQ(settings.displayicon[static_cast<std::size_t>(slot)], slot);
    EXPECT_EQ(settings.displayiconstring[static_cast<std::size_t>(slot)], u"");
  }
}

TEST_F(SettingsTest, MissingValuesAndAMissingKeyGiveTheSameDefaults) {
  expect_defaults(load());
  registry = MemoryRegistry();
  expect_defaults(load());
}

TEST_F(SettingsTest, EveryStoredNumberIsReadAndSavedUnderItsOwnName) {
  load();  // the first use is over
  for (const auto& number : kNumbers) {
    registry = MemoryRegistry();
    EnsureSettingsKey(registry);
    const bool counts_from_one = number.name.substr(0, 9) == u"weekstart";
    const std::int32_t other = number.value == 0 || counts_from_one ? number.value + 1 : 0;
    const std::int32_t stored_value = number.name == u"dvfontsize" ? 15 : other;
    store(number.name, static_cast<std::uint32_t>(stored_value));
    SettingsRecord settings = load();
    EXPECT_EQ(settings.*number.field, stored_value) << to_utf8(number.name);
    settings.*number.field = number.value;
    expect_defaults(settings);
    ASSERT_TRUE(save_setting(registry, settings, number.name));
    EXPECT_EQ(stored(number.name)->number, static_cast<std::uint32_t>(number.value));
  }
}

TEST_F(SettingsTest, TextsAndFamiliesSurviveSavingAndLoading) {
  SettingsRecord settings = load();
  settings.activeprofilename = u"Work";
  settings.strdefcategory = u"Дом";
  settings.strprevlocation = u"Room \"5\" ";
  settings.displayicon[47] = 3;
  settings.displayiconstring[47] = u"12345678901234567890123456789";
  settings.default_start = {24, 30};  // what slot 1 is read as
  settings.default_end = {23, 30};
  settings.item_colors[37] = 0x123456;
  for (const TextView name : {u"activeprofilename", u"strdefcategory", u"strprevlocation",
                              u"defaultStartTimeIndex", u"defaultEndTimeIndex"})
    EXPECT_TRUE(save_setting(registry, settings, name));
  for (const TextView name : {u"displayicon%d", u"displayiconstring%d"})
    EXPECT_TRUE(save_setting(registry, settings, name, 47));
  EXPECT_TRUE(save_setting(registry, settings, u"itemcolor%d", 37));
  EXPECT_FALSE(save_setting(registry, settings, u"itemcolor%d", 38));
  EXPECT_EQ(stored(u"displayicon47")->number, 3u);
  EXPECT_EQ(stored(u"defaultStartTimeIndex")->number, 1u);

  const SettingsRecord again = load();
  EXPECT_EQ(again.activeprofilename, settings.activeprofilename);
  EXPECT_EQ(again.strdefcategory, settings.strdefcategory);
  EXPECT_EQ(again.strprevlocation, settings.strprevlocation);
  EXPECT_EQ(again.displayicon, settings.displayicon);
  EXPECT_EQ(again.displayiconstring, settings.displayiconstring);
  EXPECT_EQ(again.default_start, settings.default_start);
  EXPECT_EQ(again.default_end, settings.default_end);
  EXPECT_EQ(again.item_colors, settings.item_colors);
}

TEST_F(SettingsTest, LocaleDecidesTheClockAndTheHeader) {
  LocaleData locale = russian_locale();
  EXPECT_EQ(load(locale).timeformat, 1);
  EXPECT_EQ(load(locale).dayviewheaderformat, 4);
  locale.long_date_order = u"2";
  EXPECT_EQ(load(locale).dayviewheaderformat, 5);
  store(u"dayviewheaderformat", 0);
  store(u"timeformat", 0u);
  EXPECT_EQ(load(locale).dayviewheaderformat, 0);
  EXPECT_EQ(load(locale).timeformat, 0);
}

TEST_F(SettingsTest, TimeMarksAreFractionsInSinglePrecision) {
  store(u"timeA", 0u);  // midnight, not a whole day
  const SettingsRecord settings = load();
  EXPECT_EQ(settings.time_fraction[0], 0.0);
  EXPECT_EQ(settings.time_fraction[1], 0.5);
  EXPECT_EQ(settings.time_fraction[2], static_cast<double>(static_cast<float>(17 / 24.0)));
  EXPECT_EQ(settings.time_fraction[3], 0.875);
}

TEST_F(SettingsTest, IconsOfBothResolutionsAndOfThePerson) {
  files.bitmaps[u"\\Program Files\\Orvello\\icons.bmp"] = {90, 9, std::vector<Color>(810)};
  const SettingsRecord low = load(), high = load(english_locale(), false);
  EXPECT_EQ(low.icon_cell, 9);
  EXPECT_EQ(low.builtin_icon_count, 46);
  EXPECT_EQ(low.total_icon_count, 56);
  EXPECT_EQ(high.icon_cell, 18);
  EXPECT_EQ(high.builtin_icon_count, 61);
  EXPECT_EQ(high.total_icon_count, 66);
  EXPECT_TRUE(high.has_user_icons);
  EXPECT_NE(low.notes_glyph, high.notes_glyph);
  EXPECT_FALSE(low.reminder_glyph.empty());

  files.bitmaps.clear();
  files.present.insert(u"\\Program Files\\Orvello\\icons.bmp");  // there, and no bitmap
  EXPECT_FALSE(load().has_user_icons);
  EXPECT_EQ(load().total_icon_count, 46);
}

TEST_F(SettingsTest, FirstUseAsksForAGreetingOnceAndSeedsTheSubjects) {
  clock.set({2027, 2, 0, 28, 23, 59, 0, 0});
  const SettingsRecord settings = load();
  EXPECT_EQ(settings.today, (MonthDayYear{2, 28, 2027}));
  EXPECT_EQ(settings.shown, settings.today);
  EXPECT_EQ(stored(kGreetingDue)->number, 1u);
  store(kGreetingDue, 0);
  std::vector<Text> subjects, locations;
  loadPreTextToLB(volume, subjects, kSubjectPretexts);
  ASSERT_EQ(subjects.size(), 20u);
  EXPECT_EQ(subjects.front(), u"Anniversary");
  EXPECT_EQ(subjects.back(), u"Visit ");
  EXPECT_EQ(std::count_if(subjects.begin(), subjects.end(),
                          [](const Text& text) { return text.back() == u' '; }),
            9);
  loadPreTextToLB(volume, locations, kLocationPretexts);
  EXPECT_TRUE(locations.empty());

  deletePreTextFromDB(volume, u"Task", kSubjectPretexts);
  load();
  subjects.clear();
  loadPreTextToLB(volume, subjects, kSubjectPretexts);
  EXPECT_EQ(subjects.size(), 19u);
  EXPECT_EQ(stored(kGreetingDue)->number, 0u);
  EXPECT_EQ(boxes_shown(), Messages{});
}

TEST_F(SettingsTest, ANewCalendarsWeeksStartAsInItsCountryAndOtherCalendarsKeepTheirs) {
  EXPECT_EQ(load(russian_locale()).firstdayofweek, 1);
  EXPECT_EQ(stored(u"firstdayofweek")->number, 1u);
  EXPECT_EQ(load(english_locale()).firstdayofweek, 1) << "it is not new any more";
  store(u"firstdayofweek", 0);
  EXPECT_EQ(load(russian_locale()).firstdayofweek, 0);
}

TEST_F(SettingsTest, AFirstUseKeepsTheStartOfWeeksThatWasChosenBefore) {
  store(u"firstdayofweek", 0);  // such as by the command line
  EXPECT_EQ(load(russian_locale()).firstdayofweek, 0);
}

TEST_F(SettingsTest, ACalendarThatLostItsVolumeKeepsTheStartOfItsWeeks) {
  store(kGreetingDue, 0);  // it was used before; a default is not stored
  EXPECT_EQ(load(russian_locale()).firstdayofweek, 0);
  EXPECT_FALSE(stored(u"firstdayofweek"));
}

TEST_F(SettingsTest, AFirstUseOnADarkDesktopTakesTheDarkColors) {
  EXPECT_EQ(load(english_locale(), true, true).item_colors, dark_scheme().colors);
  EXPECT_EQ(load().item_colors, dark_scheme().colors) << "and keeps them";
  EXPECT_EQ(load(english_locale(), true, true).item_colors, dark_scheme().colors);
  // Only a first use does, and only where nobody has chosen any colours.
  registry = MemoryRegistry();
  EnsureSettingsKey(registry);
  EXPECT_EQ(scheme_of(load(english_locale(), true, true).item_colors), 0);
  files.present.clear();
  store(u"itemcolor3", 0x010203u);
  const ItemColors own = load(english_locale(), true, true).item_colors;
  EXPECT_EQ(own[3], 0x010203u);
  EXPECT_EQ(own[7], kWhite);
}

TEST_F(SettingsTest, AFirstUseThatBrokeOffIsDoneAgain) {
  databases.fail_write = DatabaseError::disk_full;
  load();
  EXPECT_EQ(boxes_shown(), Messages{"Error: Disk Full"});
  EXPECT_TRUE(FileExists(files, settings_volume_path(files)));
  databases.fail_write = DatabaseError::none;
  std::vector<CategoryProp> properties;
  EXPECT_TRUE(loadCategoryProps(volume, properties)) << "the same start goes on, and makes these";
  databases.fail_read_after = 0;  // whether it was done cannot be told
  load();
  databases.fail_read_after = -1;
  load();
  std::vector<Text> subjects;
  loadPreTextToLB(volume, subjects, kSubjectPretexts);
  EXPECT_EQ(subjects.size(), 20u);
  EXPECT_EQ(stored(kGreetingDue)->number, 1u);
}

TEST_F(SettingsTest, ResettingColorsTouchesOneGroupOrAll) {
  SettingsRecord settings;
  const auto reset_slots = [&](int group) {
    settings.item_colors.fill(1);
    ResetItemColors(settings, group);
    std::pair<int, int> span{-1, -1};
    for (int slot = 0; slot < kColorSlots; ++slot)
      if (settings.item_colors[static_cast<std::size_t>(slot)] != 1)
        span = {span.first < 0 ? slot : span.first, slot};
    return span;
  };
  EXPECT_EQ(reset_slots(0), std::pair(0, 13));
  EXPECT_EQ(reset_slots(1), std::pair(14, 22));
  EXPECT_EQ(reset_slots(2), std::pair(23, 31));
  EXPECT_EQ(reset_slots(3), std::pair(32, 35));
  EXPECT_EQ(reset_slots(4), std::pair(36, 37));
  EXPECT_EQ(reset_slots(5), std::pair(-1, -1));
  EXPECT_EQ(reset_slots(kAllColorGroups), std::pair(0, 37));
  // Some that differ from their neighbours, by what they are for.
  EXPECT_EQ(settings.color(ColorSlot::month_off_background), rgb(242, 255, 144));
  EXPECT_EQ(settings.color(ColorSlot::day_header_background), rgb(9, 9, 165));
  EXPECT_EQ(settings.color(ColorSlot::day_expired_text), rgb(128, 128, 128));
  EXPECT_EQ(settings.color(ColorSlot::year_month_background_2), rgb(231, 231, 181));
  EXPECT_EQ(settings.color(ColorSlot::year_today_background), rgb(255, 214, 57));
  EXPECT_EQ(settings.color(ColorSlot::popup_header_background), rgb(0, 0, 165));
  EXPECT_EQ(settings.color(ColorSlot::notes_background), rgb(255, 255, 132));
}

TEST(SettingTable, HoldsEveryStoredValueOnce) {
  std::set<Text> names;
  std::size_t values = 0;
  for (const SettingRow& row : setting_table())
    for (int slot = 0; slot < row.count; ++slot, ++values) names.insert(setting_name(row, slot));
  EXPECT_EQ(names.size(), values);
  std::set<Text> expected = {u"defaultStartTimeIndex",
                             u"defaultEndTimeIndex",
                             u"colorselectionmode",
                             u"colorpickerselectionmode",
                             u"abcbarshow",
                             u"adddeletebarshow",
                             u"activeprofilename",
                             u"strdefcategory",
                             u"strprevlocation",
                             u"organizername",
                             u"organizeraddress",
                             u"sendmailcommand"};
  for (const auto& number : kNumbers) expected.emplace(number.name);
  for (int i = 0; i < 48; ++i) {
    expected.insert(format(u"displayicon%d", i));
    expected.insert(format(u"displayiconstring%d", i));
  }
  for (int i = 0; i < 38; ++i) expected.insert(format(u"itemcolor%d", i));
  EXPECT_EQ(names, expected);
}

TEST(SettingTable, ReferencePageIsUpToDate) {
  std::ifstream file(ORVELLO_SOURCE_DIR "/docs/settings.md", std::ios::binary);
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  const std::string made = setting_table_as_markdown();
  if (page == made) return;
  std::ofstream("settings.md", std::ios::binary) << made;
  FAIL() << "docs/settings.md differs from the table; the new page is in settings.md here";
}

// Where opening a key is a look at a file, the values would each wait for one.
TEST_F(SettingsTest, LoadingOpensTheKeyAFewTimesOnly) {
  struct Counting : MemoryRegistry {
    std::unique_ptr<RegistryKey> open(RegistryRoot root, TextView path) override {
      return ++opened, MemoryRegistry::open(root, path);
    }
    int opened = 0;
  } counting;
  SettingsRecord settings;
  EnsureSettingsKey(counting);
  LoadSettings(settings, counting, volume, clock, english_locale(), false, false);
  const int first = std::exchange(counting.opened, 0);
  LoadSettings(settings, counting, volume, clock, english_locale(), false, false);
  EXPECT_LE(counting.opened, 10);
  EXPECT_LE(first, 20);
}

TEST_F(SettingsTest, WindowsReadTheirOwnSettings) {
  EXPECT_EQ(stored_number(registry, u"colorpickerselectionmode"), 1);
  EXPECT_EQ(stored_number(registry, u"abcbarshow"), 0);
  store(u"abcbarshow", 1);
  EXPECT_EQ(stored_number(registry, u"abcbarshow"), 1);
}

}  // namespace
}  // namespace orvello
