// The desktop's default calendar, in folders of its own.
#include "hosts/linux/default_calendar.h"

#include <gtest/gtest.h>

#include "hosts/linux/mime_apps.h"
#include "tests/contract/device_shell_contract.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

struct Desktop : ShellDevice {
  explicit Desktop(std::string program = "/opt/my apps/orvello") {
    for (const char* made : {"config", "data/applications", "usr/applications", "etc"})
      std::filesystem::create_directories(folder / made);
    for (const char* other : {"other", "third"}) install(other);
    port = std::make_unique<DefaultCalendar>(
        DesktopFolders{
            folder / "config", folder / "data", {folder / "etc"}, {folder / "usr"}, {"gnome"}},
        program);
  }
  DeviceShell& shell() override { return *port; }
  void install(const std::string& name) {
    put_content(folder / ("usr/applications/" + name + ".desktop"), "[Desktop Entry]\n");
  }
  void choose(const std::string& program) override {
    const std::string line = program.empty() ? "" : "text/calendar=" + program + ".desktop;\n";
    put_content(list, "# mine\n[Default Applications]\n" + line + "image/png=a.desktop\n");
  }
  std::string chosen() override {
    const auto found = applications_for(content_of(list), kDefaultApplications, "text/calendar");
    return found.empty() ? "" : found[0].substr(0, found[0].find('.'));
  }
  void fail_reading() override {
    std::filesystem::remove(list);
    std::filesystem::create_directory(list);
  }
  ScratchFolder folder;
  const std::string list = folder / "config/mimeapps.list";
  const std::string entry = folder / "data/applications/orvello.desktop";
  std::unique_ptr<DefaultCalendar> port;
};

INSTANTIATE_TEST_SUITE_P(Linux, DeviceShellContract,
                         ::testing::Values(ShellCase{"desktop",
                                                     [] { return std::make_unique<Desktop>(); }}));

TEST(DefaultCalendar, LeavesTheRestOfTheListAsItStands) {
  Desktop desktop;
  for (const std::string content :
       {"", "# only a comment\n", "[Added Associations]\nimage/png=a.desktop;\n",
        "[Default Applications]\ntext/calendar=other.desktop;third.desktop;\n\n[X]\nkey=value\n",
        "  [Default Applications]  \r\nimage/png = a.desktop\r\n"}) {
    SCOPED_TRACE(content);
    put_content(desktop.list, content);
    ASSERT_TRUE(desktop.port->start_this_program(true));
    EXPECT_EQ(desktop.chosen(), "orvello");
    const std::string with = content_of(desktop.list);
    ASSERT_TRUE(desktop.port->start_this_program(false));
    const std::string without = content_of(desktop.list);
    for (std::size_t at = 0; at < content.size();) {
      const std::size_t end = content.find('\n', at) + 1;
      const std::string line = content.substr(at, end - at);
      EXPECT_NE(without.find(line), std::string::npos) << line;
      const bool same = line.find("calendar") == std::string::npos;
      EXPECT_TRUE(!same || with.find(line) != std::string::npos) << line;
      at = end;
    }
    EXPECT_EQ(without.size(), content.size()) << without;
  }
}

TEST(DefaultCalendar, AnEntryIsWrittenOnlyWhereNoneIsInstalled) {
  Desktop desktop("/opt/100% \"a\\b$\"/orvello");
  ASSERT_TRUE(desktop.port->start_this_program(true));
  const std::string entry = content_of(desktop.entry);
  EXPECT_NE(entry.find("\nExec=\"/opt/100%% \\\\\"a\\\\\\\\b\\\\$\\\\\"/orvello\" %F\n"),
            std::string::npos)
      << entry;
  ASSERT_TRUE(desktop.port->start_this_program(false));
  EXPECT_FALSE(std::filesystem::exists(desktop.entry));
  put_content(desktop.entry, "[Desktop Entry]\nExec=mine\n");
  for (const bool wanted : {true, false}) {
    ASSERT_TRUE(desktop.port->start_this_program(wanted));
    EXPECT_EQ(content_of(desktop.entry), "[Desktop Entry]\nExec=mine\n");
  }
  Desktop unknown("");
  EXPECT_FALSE(unknown.port->start_this_program(true)) << "nothing could be started";
  unknown.install("orvello");
  EXPECT_TRUE(unknown.port->start_this_program(true));
  EXPECT_FALSE(std::filesystem::exists(unknown.entry));
}

// Lists are asked in their order; what is not installed is passed over.
TEST(DefaultCalendar, TheTruthIsWhatTheDesktopWouldStart) {
  Desktop desktop;
  desktop.install("orvello");
  const std::string head = "[Default Applications]\ntext/calendar=";
  const std::string special = desktop.folder / "config/gnome-mimeapps.list";
  put_content(desktop.folder / "usr/applications/mimeapps.list", head + "orvello.desktop\n");
  EXPECT_EQ(desktop.port->starts_this_program(), true) << "the system's choice";
  put_content(desktop.folder / "etc/mimeapps.list", head + "gone.desktop;other.desktop\n");
  EXPECT_EQ(desktop.port->starts_this_program(), false);
  put_content(desktop.list, head + "gone.desktop;orvello.desktop\n");
  EXPECT_EQ(desktop.port->starts_this_program(), true);
  put_content(special, head + "third.desktop\n");
  EXPECT_EQ(desktop.port->starts_this_program(), false) << "the desktop's own list counts more";
  ASSERT_TRUE(desktop.port->start_this_program(true));
  EXPECT_EQ(desktop.port->starts_this_program(), true);
  ASSERT_TRUE(desktop.port->start_this_program(false));
  EXPECT_EQ(content_of(special), head + "third.desktop;\n");
  put_content(special, "[Removed Associations]\ntext/calendar=orvello.desktop;\n" + head + "x\n");
  ASSERT_TRUE(desktop.port->start_this_program(true));
  EXPECT_TRUE(applications_for(content_of(special), kRemovedAssociations, "text/calendar").empty());
}

}  // namespace
}  // namespace orvello
