#include "settings/program_files.h"
#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

TEST_F(SettingsTest, ReadingNumbersKeepsThePresetUnlessFourBytesAreThere) {
  std::int32_t value = 7;
  EXPECT_EQ(ReadNumberSetting(registry, u"startmode", value), 1);
  EXPECT_EQ(value, 7);
  store(u"STARTMODE", 0xFFFFFFFE);
  EXPECT_EQ(ReadNumberSetting(registry, u"startmode", value), 0);
  EXPECT_EQ(value, -2);
  store(u"startmode", u"A");  // a text of four bytes with its terminator is read as a number
  EXPECT_EQ(ReadNumberSetting(registry, u"startmode", value), 0);
  EXPECT_EQ(value, 65);
  store(u"startmode", u"AB");
  EXPECT_EQ(ReadNumberSetting(registry, u"startmode", value), 1);
  EXPECT_EQ(value, 65);

  MemoryRegistry without_key;
  EXPECT_EQ(ReadNumberSetting(without_key, u"startmode", value), 0);
  EXPECT_EQ(value, 65);
  Color color = 5;
  EXPECT_EQ(ReadItemColor(without_key, u"itemcolor0", color), 0);
  EXPECT_EQ(ReadItemColor(registry, u"itemcolor0", color), 1);
  EXPECT_EQ(color, 5u);
}

TEST_F(SettingsTest, WritingNeedsTheKeyAndMayBeRefused) {
  MemoryRegistry without_key;
  EXPECT_EQ(WriteNumberSetting(without_key, u"startmode", 1), 1);
  EXPECT_EQ(WriteTextSetting(without_key, u"strdefcategory", u"x"), 1);
  EXPECT_FALSE(FlushSettings(without_key));
  EXPECT_FALSE(without_key.open(RegistryRoot::classes_root, kSettingsKey));
  registry.unwritable = true;
  EXPECT_EQ(WriteItemColor(registry, u"itemcolor0", 1), 1);
  EXPECT_EQ(WriteNumberSetting(registry, u"startmode", 1), 1);
  registry.unwritable = false;
  EXPECT_EQ(WriteNumberSetting(registry, u"startmode", -3), 0);
  EXPECT_EQ(stored(u"startmode")->number, 0xFFFFFFFDu);
}

TEST_F(SettingsTest, TextsBeyondTheBufferAreReadAsEmpty) {
  Text text = u"before";
  EXPECT_EQ(ReadTextSetting(registry, u"strprevlocation", text), 1);
  EXPECT_EQ(text, u"");
  store(u"strprevlocation", Text(511, u'x'));
  EXPECT_EQ(ReadTextSetting(registry, u"strprevlocation", text), 0);
  EXPECT_EQ(text.size(), 511u);
  for (const std::size_t length : {512u, 600u}) {
    store(u"strprevlocation", Text(length, u'x'));
    EXPECT_EQ(ReadTextSetting(registry, u"strprevlocation", text), 1);
    EXPECT_EQ(text, u"");
  }
  EXPECT_EQ(WriteTextSetting(registry, u"strprevlocation", Text(600, u'y')), 0);
  EXPECT_EQ(ReadTextSetting(registry, u"strprevlocation", text), 0);
  EXPECT_EQ(text, Text(511, u'y'));
  store(u"strprevlocation", 0x00420041);  // a number's bytes as two units
  EXPECT_EQ(ReadTextSetting(registry, u"strprevlocation", text), 0);
  EXPECT_EQ(text, u"AB");
}

TEST_F(SettingsTest, DeviceCalendarHandlerIsTheQuotedProgramOrTheDevices) {
  HeadlessShell shell;
  const auto handler = [&] {
    return registry.get(RegistryRoot::local_machine, kShellCalendarKey, u"1");
  };
  EXPECT_EQ(SetDeviceCalendarHandler(registry, files, shell, 1), 1);
  EXPECT_FALSE(handler());
  EXPECT_EQ(shell.starts, "device") << "without the key nothing is changed";
  EnsureShellCalendarKey(registry);
  EnsureShellCalendarKey(registry);
  EXPECT_EQ(registry.flushes, 2) << "of its own making alone";
  const int flushes = registry.flushes;
  EXPECT_EQ(SetDeviceCalendarHandler(registry, files, shell, 1), 0);
  EXPECT_EQ(handler()->text, u"\"\\Program Files\\Orvello\\Orvello.exe\"");
  EXPECT_EQ(registry.flushes, flushes + 1);
  EXPECT_TRUE(IsDeviceCalendarHandler(shell, 0));
  EXPECT_EQ(SetDeviceCalendarHandler(registry, files, shell, 0), 0);
  EXPECT_EQ(handler()->text, u":MSPOUTLOOK calendar");
  EXPECT_EQ(shell.starts, "device");
  EXPECT_FALSE(IsDeviceCalendarHandler(shell, 1)) << "whatever the setting says";
  shell.unreadable = true;
  EXPECT_TRUE(IsDeviceCalendarHandler(shell, 1));
  EXPECT_FALSE(IsDeviceCalendarHandler(shell, 0));
  EXPECT_EQ(SetDeviceCalendarHandler(registry, files, shell, 1), 1) << "the shell refuses";
  shell.unreadable = false;
  files.module = u"\\" + Text(300, u'm');
  EXPECT_EQ(SetDeviceCalendarHandler(registry, files, shell, 1), 0);
  EXPECT_EQ(handler()->text.size(), 200u);
  registry.unwritable = true;
  EXPECT_EQ(SetDeviceCalendarHandler(registry, files, shell, 0), 1);
}

TEST_F(SettingsTest, FilesLieBesideTheProgram) {
  const auto volume_of = [](TextView module) {
    return to_utf8(settings_volume_path(MemoryFiles(Text(module))));
  };
  EXPECT_EQ(volume_of(u"\\Program Files\\Orvello\\Orvello.exe"),
            "\\Program Files\\Orvello\\settings.vol");
  EXPECT_EQ(volume_of(u"\\Orvello.exe"), "\\settings.vol");
  EXPECT_EQ(volume_of(u"Orvello.exe"), "\\settings.vol");
  EXPECT_FALSE(FileExists(files, u"\\a"));
  files.present.insert(u"\\a");
  EXPECT_TRUE(FileExists(files, u"\\a"));
}

TEST_F(SettingsTest, AnInaccessibleRegistryLeavesTheDefaults) {
  MemoryRegistry refusing;
  refusing.unwritable = true;
  EXPECT_FALSE(EnsureSettingsKey(refusing));
  refusing.unwritable = false;
  refusing.fail_flush = true;
  EXPECT_FALSE(EnsureSettingsKey(refusing));
  EXPECT_TRUE(refusing.open(RegistryRoot::classes_root, kSettingsKey));
}

}  // namespace
}  // namespace orvello
