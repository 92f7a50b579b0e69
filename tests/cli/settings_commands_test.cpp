#include "cli/settings_commands.h"

#include <gtest/gtest.h>

#include <sstream>

#include "hosts/headless/headless_ports.h"
#include "settings/category_props.h"
#include "settings/pretexts.h"
#include "settings/profiles.h"
#include "settings/program_files.h"
#include "settings/registry_access.h"
#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

// A device of one person's settings, and its commands.
struct Device {
  Device() {
    EnsureSettingsKey(registry);
    files.present.insert(settings_volume_path(files));
    const MountedVolume made(volume);
  }

  // What the command said, with its exit code in front where that is not 0.
  std::string run(const std::vector<std::string>& words) {
    std::ostringstream out, err;
    std::vector<std::string> all{"settings"};
    all.insert(all.end(), words.begin(), words.end());
    const auto line = parse_command_line(all);
    if (!line) return "usage: " + line.reason();
    const int code =
        run_settings(*line, {registry,
                             {databases, files, "settings.vol"},
                             english_locale(),
                             [this](const std::string&) { return Result<std::string>(file); },
                             [this](const std::string&, std::string_view text) {
                               file = text;
                               return Result<std::size_t>(text.size());
                             },
                             out,
                             err});
    return (code == 0 ? "" : std::to_string(code) + " ") + out.str() + err.str();
  }
  std::string exported() {
    EXPECT_EQ(run({"export", "file"}), "");
    return file;
  }

  MemoryRegistry registry;
  MemoryRecordDatabases databases;
  HeadlessBoxes boxes;
  MemoryFiles files;
  SettingsVolume volume{databases, boxes, files};
  std::string file;
};

// A device on which everything differs from the defaults.
void make_own(Device& device) {
  for (const SettingRow& row : setting_table())
    for (int slot = 0; slot < row.count; ++slot) {
      const Text name = setting_name(row, slot);
      if (row.kind == SettingKind::text)
        WriteTextSetting(device.registry, name, format(u"\"%d\" \\;#\n Ж", slot));
      else
        WriteNumberSetting(device.registry, name, row.most - (row.most > 100 ? slot : 0));
    }
  WriteTextSetting(device.registry, u"activeprofilename", u"Дом; \"1\"");
  for (const TextView text : {u"Meet with ", u"; no comment", u"[x]"}) {
    savePreTextToDB(device.volume, text, kSubjectPretexts);
    savePreTextToDB(device.volume, text, kLocationPretexts);
  }
  saveCategoryProps(device.volume, u"Work", 0x123456, 1);
  saveCategoryProps(device.volume, u"Home = #0", 0, -7);
  saveProfileInfoToDatabase(device.volume, u"pfile-Дом; \"1\"", {{u"Work", u"No = x"}, {0, 1}});
  saveProfileInfoToDatabase(device.volume, u"pfile-none", {});
}

TEST(SettingsCommands, WhatIsExportedIsTheSameOnAnotherDevice) {
  Device one, other;
  make_own(one);
  const std::string text = one.exported();
  EXPECT_NE(text.find("\nitemcolor7 = #f8ffff  ; Month view: Date background 1\n"),
            std::string::npos)
      << text;
  EXPECT_EQ(text.find("sendmailcommand"), std::string::npos) << "it would be run there";
  savePreTextToDB(other.volume, u"gone", kSubjectPretexts);
  saveProfileInfoToDatabase(other.volume, u"pfile-kept", {{u"Kept"}, {0}});
  other.file = text;
  EXPECT_EQ(other.run({"import", "file"}), "177 settings and 5 lists taken over\n");
  const std::string again = other.exported();
  const std::size_t kept = again.find("\n[profile \"kept\"]\n\"Kept\"\n");
  ASSERT_NE(kept, std::string::npos) << again;
  // Whatever the order of the profiles.
  Device third;
  third.file = again;
  third.run({"import", "file"});
  third.file = text;
  third.run({"import", "file"});
  EXPECT_EQ(third.exported(), again);
  // A person's editor may end lines otherwise and begin with a mark.
  std::string edited = "\xEF\xBB\xBF";
  for (const char c : text) edited += c == '\n' ? std::string("\r\n") : std::string(1, c);
  other.file = edited;
  EXPECT_EQ(other.run({"import", "file"}), "177 settings and 5 lists taken over\n");
  EXPECT_EQ(other.exported(), again);
  EXPECT_TRUE(one.databases.nothing_open() && other.databases.nothing_open());
}

TEST(SettingsCommands, ABadFileChangesNothingAndIsToldByItsLines) {
  const std::pair<std::string, const char*> faults[] = {
      {"x = 1", "a section such as [settings] comes first"},
      {"[setings]", "there is no section [setings]: is [settings] meant?"},
      {"[settings", "a section's name ends with ]"},
      {"[settings]\nstartmod = 1", "there is no setting startmod: is startmode meant?"},
      {"[settings]\nstartmode", "a line is: name = value"},
      {"[settings]\nstartmode = one", "startmode is a number from 0 to 99"},
      {"[settings]\ndvfontsize = 99999999999", "dvfontsize is a number from 6 to 15"},
      {"[settings]\nshowdays = 2", "showdays is 0 (off) or 1 (on)"},
      {"[settings]\nshowdays = 1 1", "nothing is known about: 1"},
      {"[settings]\nshowdays = 1\nSHOWDAYS = 1", "showdays stands in line 2 too"},
      {"[settings]\nstrdefcategory = Work",
       "strdefcategory is a text: it stands between quotation marks"},
      {"[settings]\nactiveprofilename = \"12345678901234567890123456789012\"",
       "activeprofilename is a text of at most 31 characters"},
      {"[settings]\nsendmailcommand = \"rm\"",
       "sendmailcommand is said of one device and is not taken from another"},
      {"[colours]\nitemcolor7 = #12345", "itemcolor7 is a colour as #rrggbb"},
      {"[colours]\nitemcolor38 = #000000", "there is no setting itemcolor38: is"},
      {"[profile \"All\"]", "a profile's name has 1 to 31 characters and is not \"All\""},
      {"[profile \"A\"]\n[profile \"A\"]", "this profile stands twice"},
      {"[profile \"A\"]\n\"123456789012345678901234567890\"", "a text here has 1 to 29 characters"},
      {"[profile A]", "a profile's section is: [profile \"Name\"]"},
      {"[subject texts]\n\"a\"\n\"a\"", "this text stands in line 2 too"},
      {"[subject texts]\n[subject texts]", "this section stands twice"},
      {"[subject texts]\nopen", "a text stands between quotation marks"},
      {"[category colours]\n\"a\"", "a line is: \"Label\" = #rrggbb"},
      {"[category colours]\n\"a\" = red", "a colour is #rrggbb"},
      {"[category colours]\n\"a\" = #ff0000, flag 99999", "behind the colour stands: flag 0"},
      {"[settings]\nshowdays = 1\n; \xFF", "this line is not UTF-8"}};
  Device device;
  make_own(device);
  const std::string before = device.exported();
  for (const auto& [lines, fault] : faults) {
    const auto at = 1 + std::count(lines.begin(), lines.end(), '\n');
    device.file = lines + "\n[colours]\nitemcolor0 = #010203\n";  // good lines do not help
    const std::string said = device.run({"import", "my settings.txt"});
    EXPECT_NE(said.find("1 orvello: my settings.txt:" + std::to_string(at) + ": " + fault),
              std::string::npos)
        << lines << "\n"
        << said;
    EXPECT_NE(said.find("Nothing was changed."), std::string::npos);
    EXPECT_EQ(device.exported(), before) << lines;
  }
  device.file = "[settings]\nactiveprofilename = \"nobody's\"\n";
  EXPECT_NE(device.run({"import", "f"}).find("there is no profile \"nobody's\""),
            std::string::npos);
  device.file = std::string(100000, 'x') + std::string(500, '\n') + "[x]";
  EXPECT_LT(device.run({"import", "f"}).size(), 5000u) << "faults without end";
  EXPECT_EQ(device.exported(), before);
}

TEST(SettingsCommands, AStoreThatRefusesLeavesBothAsTheyWere) {
  Device one, other;
  make_own(one);
  const std::string text = one.exported(), before = other.exported();
  other.file = text;
  other.databases.fail_write = DatabaseError::disk_full;
  EXPECT_EQ(other.run({"import", "f"}),
            "1 orvello: settings.vol cannot be written: the disk is full.\n"
            "orvello: Nothing was changed.\n");
  EXPECT_EQ(other.exported(), before);
  other.databases.fail_write = DatabaseError::none;
  other.registry.fail_flush = true;
  other.file = text;
  const MemoryRegistry registry = other.registry;
  EXPECT_EQ(other.run({"import", "f"}),
            "1 orvello: The registry is full.\norvello: Nothing was changed.\n");
  other.registry = registry;  // as a process that ends without a further flush leaves it
  other.registry.fail_flush = false;
  EXPECT_EQ(other.exported(), before);
  one.databases.fail_read_after = 9;
  EXPECT_EQ(one.run({"export", "f"}).substr(0, 40), "1 orvello: settings.vol cannot be read: ");
}

TEST(SettingsCommands, OneSettingIsReadAndChangedByItsName) {
  Device device;
  EXPECT_EQ(device.run({"get", "STARTMODE"}), "1\n");
  EXPECT_EQ(device.run({"get", "itemcolor9"}), "#ffd639\n");
  EXPECT_EQ(device.run({"set", "startmode", "2"}), "");
  EXPECT_EQ(device.run({"get", "startmode"}), "2\n");
  EXPECT_EQ(device.run({"set", "itemcolor9", "#102030"}), "");
  EXPECT_EQ(device.registry.get(RegistryRoot::classes_root, kSettingsKey, u"itemcolor9")->number,
            0x302010u);
  EXPECT_EQ(device.run({"set", "strprevlocation", " \"Дом\" "}), "");
  EXPECT_EQ(device.run({"get", "strprevlocation"}), " \"Дом\" \n");
  EXPECT_EQ(device.run({"set", "dvfontsize", "16"}),
            "1 orvello: dvfontsize is a number from 6 to 15\n");
  EXPECT_EQ(device.run({"set", "itemcolour7", "#000000"}),
            "1 orvello: there is no setting itemcolour7: is itemcolor7 meant?\n");
  EXPECT_EQ(device.run({"get", "quux"}), "1 orvello: there is no setting quux\n");
  EXPECT_EQ(device.run({"set", "showdays", "\xFF"}), "1 orvello: showdays is 0 (off) or 1 (on)\n");
  EXPECT_EQ(device.run({"set", "defaultscalendar", "1"}).substr(0, 10), "1 orvello:");
  for (const auto& words : std::vector<std::vector<std::string>>{
           {}, {"lst"}, {"list", "x"}, {"get"}, {"set", "a"}, {"set", "a", "b", "c"}, {"export"}})
    EXPECT_EQ(device.run(words).substr(0, 6), "usage:") << words.size();
  const std::string list = device.run({"list"});
  EXPECT_NE(
      list.find(
          "\nstartmode                 2            1         first view: 0 Day, 1 Month, 2 Year"),
      std::string::npos)
      << list.substr(0, 3000);
  EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 1 + 179);
}

}  // namespace
}  // namespace orvello
