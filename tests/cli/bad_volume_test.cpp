// Operations on a settings volume whose writer is killed, or that another program holds for long.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <thread>

#include "files/system_files.h"
#include "settings/category_props.h"
#include "settings/pretexts.h"
#include "settings/profiles.h"
#include "settings/program_files.h"
#include "store/embedded/sqlite_record_databases.h"
#include "tests/processes.h"
#include "tests/scratch.h"
#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

class BadVolume : public ::testing::Test {
 protected:
  // What could be read, all together.
  std::size_t read_everything() {
    std::vector<Text> texts, labels;
    std::vector<CategoryProp> props;
    std::vector<MenuItem> menu;
    loadPreTextToLB(volume, texts, kSubjectPretexts);
    loadCategoryProps(volume, props);
    const bool read = loadProfile(volume, u"Work", labels);
    EXPECT_EQ(read, !labels.empty());
    return texts.size() + props.size() + labels.size() +
           static_cast<std::size_t>(listProfilesInMenu(volume, u"All", menu));
  }
  Messages boxes_shown() { return take_messages(boxes); }

  ScratchFolder folder;
  const std::string path = folder / "settings.vol";
  SqliteRecordDatabases databases{folder / "device.db", [this](TextView) { return path; }};
  HeadlessBoxes boxes;
  MemoryFiles files;
  const SettingsVolume volume{databases, boxes, files};
};

// The settings of a folder's volume, as the program's start reads or makes them.
PROCESS_WORK(first_start) {
  const std::string path = path_in(argument, "settings.vol");
  SqliteRecordDatabases databases(path_in(argument, "device.db"), [&](TextView) { return path; });
  HeadlessBoxes boxes;
  MemoryFiles files;
  HeadlessClock clock;
  MemoryRegistry registry;
  EnsureSettingsKey(registry);
  if (std::filesystem::exists(path)) files.present.insert(settings_volume_path(files));
  SettingsRecord settings;
  LoadSettings(settings, registry, {databases, boxes, files}, clock, english_locale(), true);
  return static_cast<int>(take_messages(boxes).size());
}

// Killed as soon as there is a file, and a little later each time: the next start does it again.
TEST_F(BadVolume, AFirstStartThatIsKilledLosesNoReadyMadeText) {
  using std::chrono::milliseconds;
  for (int i = 0; i < 8; ++i) {
    for (const char* name : {"settings.vol", "settings.vol-journal"})
      std::filesystem::remove(folder / name);
    const ChildProcess child = start_work(first_start, folder.path());
    while (!std::filesystem::exists(path)) std::this_thread::sleep_for(milliseconds(1));
    std::this_thread::sleep_for(milliseconds(i * 2));
    kill_process(child);
    EXPECT_EQ(first_start(folder.path()), 0) << "boxes";
    std::vector<Text> texts;
    EXPECT_TRUE(loadPreTextToLB(volume, texts, kSubjectPretexts));
    EXPECT_EQ(texts.size(), 20u) << "round " << i;
    EXPECT_EQ(boxes_shown(), Messages{});
  }
}

TEST_F(BadVolume, ALockIsWaitedForOnceByARowOfOperations) {
  savePreTextToDB(volume, u"Meet", kSubjectPretexts);
  saveCategoryProps(volume, u"Work", 1, 1);
  saveProfileInfoToDatabase(volume, u"pfile-Work", {{u"a", u"b"}, {0, 1}});
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  LockPatience patience;
  int waits = 0;
  while (patience.wait(waits)) ++waits;
  EXPECT_GT(waits, 0);
  EXPECT_LE(waits, 40) << "of a hundredth of a second each";
  EXPECT_FALSE(patience.wait(waits)) << "nothing more for the next operation";
  EXPECT_EQ(read_everything(), 0u);
  EXPECT_EQ(boxes_shown(), Messages(4, "Error: Database mount failed: In Use By Another Program"));
  sqlite3_close(other);
  EXPECT_EQ(read_everything(), 5u);
}

}  // namespace
}  // namespace orvello
