// The contracts of the ports behind which the system's own records stand.
#include <windows.h>

#include <fstream>

#include "hosts/shared/file_registry.h"
#include "hosts/win32/builtin_zones.h"
#include "hosts/win32/device_path.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_clock.h"
#include "hosts/win32/win32_files.h"
#include "hosts/win32/win32_locale.h"
#include "hosts/win32/win32_registry.h"
#include "settings/registry_access.h"
#include "tests/contract/clock_contract.h"
#include "tests/contract/files_contract.h"
#include "tests/contract/locale_contract.h"
#include "tests/contract/registry_contract.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

// A part of the registry that only the test knows.
struct ScratchKey {
  ScratchKey() : path(format(u"Software\\Orvello-test-%d", GetCurrentProcessId())) {}
  ~ScratchKey() { RegDeleteTreeW(HKEY_CURRENT_USER, wide(path)); }
  RegistryPlaces places() const {
    return {HKEY_CURRENT_USER, path + u"\\classes\\", HKEY_CURRENT_USER, path + u"\\machine\\"};
  }
  Text path;
};

struct Win32RegistryPlace : RegistryPlace {
  Registry& open() override {
    return *programs.emplace_back(std::make_unique<Win32Registry>(key.places()));
  }
  void close_all() override { programs.clear(); }
  ScratchKey key;
  std::vector<std::unique_ptr<Win32Registry>> programs;
};

struct FileRegistryPlace : RegistryPlace {
  Registry& open() override {
    return *programs.emplace_back(std::make_unique<FileRegistry>(folder / "registry"));
  }
  void close_all() override { programs.clear(); }
  ScratchFolder folder;
  std::vector<std::unique_ptr<FileRegistry>> programs;
};

template <typename Case, typename Made>
Case system_case(const char* name) {
  return {name, [] { return std::make_unique<Made>(); }};
}

INSTANTIATE_TEST_SUITE_P(Win32, RegistryContract,
                         ::testing::Values(system_case<RegistryCase, Win32RegistryPlace>("system"),
                                           system_case<RegistryCase, FileRegistryPlace>("file")));

TEST(Win32Registry, TellsOfOtherProgramsAndOfWhatItCouldNotWrite) {
  const ScratchKey place;
  Win32Registry first(place.places()), second(place.places());
  EXPECT_TRUE(first.is_new());
  const auto mine = first.create(kClasses, kSettingsKey);
  ASSERT_TRUE(mine->set(u"x", number_value(1)) && mine->flush());
  EXPECT_FALSE(first.is_new());
  EXPECT_FALSE(first.changed_outside()) << "its own writing";
  Sleep(20);
  const auto other = second.create(kClasses, kSettingsKey);
  ASSERT_TRUE(other->set(u"y", number_value(2)) && other->flush());
  EXPECT_TRUE(first.changed_outside());
  EXPECT_FALSE(first.changed_outside()) << "it was told";
  mine->set(u"x", number_value(3));
  first.forget_changes();
  EXPECT_EQ(shown(mine->query(u"x")), "1");

  mine->set(Text(20000, u'n'), number_value(5));
  EXPECT_FALSE(mine->flush()) << "no value has such a name";
  EXPECT_NE(first.trouble().find(u"cannot be written"), Text::npos);
  first.forget_changes();

  RegistryPlaces nowhere = place.places();
  nowhere.classes = reinterpret_cast<HKEY>(std::intptr_t{8});  // no key
  Win32Registry broken(nowhere);
  const auto held = broken.create(kClasses, u"A");
  held->set(u"x", number_value(4));
  EXPECT_FALSE(held->flush());
  EXPECT_NE(broken.trouble().find(u"cannot be written"), Text::npos);
  EXPECT_EQ(shown(held->query(u"x")), "4") << "as long as the registry lives";
  broken.forget_changes();
}

INSTANTIATE_TEST_SUITE_P(Win32, ClockContract,
                         ::testing::Values(ClockCase{"built-in", [](const char* zone, auto at) {
                                                       return std::make_unique<Win32Clock>(
                                                           at, *builtin_zone(zone));
                                                     }}));

TEST(Win32Clock, NamesTheSystemsZonesAsTheDatabaseDoesInThePersonsCountry) {
  const struct {
    const char *system_name, *country, *zone;
  } cases[] = {{"W. Europe Standard Time", "DE", "Europe/Berlin"},
               {"W. Europe Standard Time", "AT", "Europe/Vienna"},
               {"W. Europe Standard Time", "", "Europe/Berlin"},
               {"Eastern Standard Time", "CA", "America/Toronto"},
               {"Eastern Standard Time", "US", "America/New_York"},
               {"Russian Standard Time", "US", "Europe/Moscow"},
               {"UTC", "DE", "UTC"},
               {"Klingon Standard Time", "DE", ""}};
  for (const auto& one : cases)
    EXPECT_EQ(zone_of_system_name(one.system_name, one.country), one.zone) << one.country;
}

// The machine's rules for a clock that has no name in the database, and the clock as it is here.
TEST(Win32Clock, GoesByTheMachinesRules) {
  TIME_ZONE_INFORMATION rules{};
  rules.Bias = -60;
  rules.DaylightBias = -60;
  rules.DaylightDate = {0, 3, 0, 5, 2, 0, 0, 0};
  rules.StandardDate = {0, 10, 0, 5, 3, 0, 0, 0};
  const Zone zone = zone_of_rules(rules), berlin = *builtin_zone("Europe/Berlin");
  EXPECT_EQ(zone.name(), "");
  for (int day = 46000; day < 46800; ++day) {
    const UtcSeconds at = utc_at_offset(midnight_of(Day(day)), 0);
    ASSERT_EQ(zone.from_utc(at), berlin.from_utc(at)) << day;
  }
  rules.StandardDate.wMonth = 0;  // no summer
  const UtcSeconds july = utc_at_offset(midnight_of(Day(46220)), 0);
  EXPECT_EQ(zone_of_rules(rules).from_utc(july), berlin.from_utc(july) - 3600) << "never summer";
  SYSTEMTIME shown{};
  GetLocalTime(&shown);
  const SystemTime now = Win32Clock().local_time();
  EXPECT_EQ(now.hour * 60 + now.minute, shown.wHour * 60 + shown.wMinute);
}

TEST(Win32Clock, FollowsAMachineThatIsCarriedElsewhere) {
  DYNAMIC_TIME_ZONE_INFORMATION told{};
  wcscpy(told.TimeZoneKeyName, L"Tokyo Standard Time");
  told.Bias = -9 * 60;
  const LocalSeconds noon = midnight_of(day_of(2026, 11, 22)) + 12 * 3600;
  const Win32Clock clock(noon, [&] { return told; });
  EXPECT_EQ(clock.zone_name(), "Asia/Tokyo");
  const UtcSeconds moment = clock.to_utc(noon);
  wcscpy(told.TimeZoneKeyName, L"Nobody's Standard Time");
  told.Bias = -5 * 60 - 30;
  EXPECT_EQ(clock.to_local(moment), noon) << "not before somebody looks";
  clock.local_time();
  EXPECT_EQ(clock.to_local(moment), noon - (3 * 3600 + 1800));
  EXPECT_EQ(clock.zone_name(), "");
}

struct Win32FilesDevice : FilesDevice {
  Files& files() override { return port; }
  void put(TextView path) override { std::ofstream(place(path)) << "no bitmap"; }
  void put_bitmap(TextView path, const Image& image) override {
    const auto row = static_cast<std::size_t>((image.width * 3 + 3) / 4 * 4);
    std::string pixels;
    for (int y = image.height - 1; y >= 0; --y) {
      std::string line;
      for (int x = 0; x < image.width; ++x)
        for (const int part :
             {blue_of(image.at(x, y)), green_of(image.at(x, y)), red_of(image.at(x, y))})
          line += static_cast<char>(part);
      line.resize(row);
      pixels += line;
    }
    BITMAPFILEHEADER file{};
    BITMAPINFOHEADER info{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = static_cast<DWORD>(file.bfOffBits + pixels.size());
    info.biSize = sizeof info;
    info.biWidth = image.width, info.biHeight = image.height;
    info.biPlanes = 1, info.biBitCount = 24;
    std::ofstream out(place(path), std::ios::binary);
    out.write(reinterpret_cast<const char*>(&file), sizeof file);
    out.write(reinterpret_cast<const char*>(&info), sizeof info);
    out << pixels;
  }
  std::vector<Text> diagnostic_lines() override {
    Text all = to_utf16(content_of(folder / "state/diag.txt"));
    std::erase(all, u'\r');
    std::vector<Text> lines = split(all, u'\n');
    lines.pop_back();  // behind the last line's end
    return lines;
  }
  void fail_appending() override { std::filesystem::remove_all(folder / "state"); }
  static std::filesystem::path place(TextView path) {
    const std::string name = host_path(path);
    return std::filesystem::path(std::u8string(name.begin(), name.end()));
  }
  ScratchFolder folder;
  Win32Files port{{folder.path(), folder.path(), folder / "state"}};
  bool made = std::filesystem::create_directory(folder / "state");
};
INSTANTIATE_TEST_SUITE_P(Win32, FilesContract,
                         ::testing::Values(system_case<FilesCase, Win32FilesDevice>("system")));

LocaleCase system_locale(const char* name) {
  return {name, [name] { return std::make_unique<Win32Locale>(name, name, ""); }};
}
INSTANTIATE_TEST_SUITE_P(Win32, LocaleContract,
                         ::testing::Values(system_locale(""), system_locale("ru-RU"),
                                           system_locale("en-US"), system_locale("de-DE"),
                                           system_locale("pl-PL"), system_locale("hu-HU"),
                                           system_locale("ja-JP"), system_locale("ar-EG")));

TEST(Win32Locale, KnowsTheConventionsOfRegions) {
  const struct {
    const char *name, *long_order, *short_order, *clock, *mark;
    bool monday, mirrored;
  } cases[] = {{"en-US", "0", "0", "0", "/", false, false},
               {"en-GB", "1", "1", "1", "/", true, false},
               {"ru-RU", "1", "1", "1", ".", true, false},
               {"ja-JP", "2", "2", "1", "/", false, false},
               {"he-IL", "1", "1", "1", ".", false, true}};
  for (const auto& one : cases) {
    const LocaleData data = Win32Locale(one.name, one.name, "").data();
    EXPECT_EQ(to_utf8(data.name), one.name);
    EXPECT_EQ(to_utf8(data.long_date_order), one.long_order) << one.name;
    EXPECT_EQ(to_utf8(data.short_date_order), one.short_order) << one.name;
    EXPECT_EQ(to_utf8(data.time_format), one.clock) << one.name;
    EXPECT_EQ(to_utf8(data.date_separator), one.mark) << one.name;
    EXPECT_EQ(data.monday_first, one.monday) << one.name;
    EXPECT_EQ(data.right_to_left, one.mirrored) << one.name;
  }
  // A language of its own for the texts, with the person's region where that has the same one.
  const Win32Locale other("de-DE", "de-DE", "ru");
  EXPECT_EQ(other.language(), u"ru");
  EXPECT_EQ(other.data().month_names, russian_locale().month_names);
  EXPECT_EQ(Win32Locale("en-GB", "de-DE", "en").data().time_format, u"1");
}

}  // namespace
}  // namespace orvello
