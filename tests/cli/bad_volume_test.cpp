// Every operation on a settings volume that is damaged, locked or without room: what is shown, once
// each, and that the program goes on.
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>

#include "settings/category_props.h"
#include "settings/pretexts.h"
#include "settings/profiles.h"
#include "settings/program_files.h"
#include "store/embedded/sqlite_record_databases.h"
#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

class BadVolume : public ::testing::Test {
 protected:
  BadVolume() { std::filesystem::create_directories(folder); }
  ~BadVolume() override { std::filesystem::remove_all(folder); }

  void change_everything() {
    savePreTextToDB(volume, u"Meet", kSubjectPretexts);
    saveCategoryProps(volume, u"Work", 1, 1);
    saveProfileInfoToDatabase(volume, u"pfile-Work", {{u"a", u"b"}, {0, 1}});
  }
  // What could be read, all together.
  std::size_t read_everything() {
    std::vector<Text> texts, labels;
    std::vector<CategoryProp> props;
    std::vector<MenuItem> menu;
    loadPreTextToLB(volume, texts, kSubjectPretexts);
    loadCategoryProps(volume, props);
    profile_read = loadProfile(volume, u"Work", labels);
    return texts.size() + props.size() + labels.size() +
           static_cast<std::size_t>(listProfilesInMenu(volume, u"All", menu));
  }
  void delete_everything() {
    deletePreTextFromDB(volume, u"Meet", kSubjectPretexts);
    deleteSettingsDatabase(volume, u"pfile-Work");
  }
  Messages boxes_shown() { return take_messages(boxes); }
  // Whether `check` holds in a process that can make no file longer than that.
  template <typename Check>
  static bool with_room(std::uintmax_t bytes, Check check) {
    const pid_t child = ::fork();
    if (child == 0) {
      ::signal(SIGXFSZ, SIG_IGN);
      const rlimit limit{bytes, bytes};
      ::setrlimit(RLIMIT_FSIZE, &limit);
      ::_exit(check() ? 0 : 1);
    }
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
  }
  static bool same(const std::vector<std::string>& shown, const std::vector<std::string>& wanted) {
    if (shown != wanted)
      for (const std::string& text : shown) std::cerr << "shown: " << text << "\n";
    return shown == wanted;
  }

  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("orvello-volume-" + std::to_string(::getpid()));
  const std::string path = folder / "settings.vol";
  SqliteRecordDatabases databases{folder / "device.db", [this](TextView) { return path; }};
  bool profile_read = false;
  HeadlessBoxes boxes;
  MemoryFiles files;
  const SettingsVolume volume{databases, boxes, files};
};

TEST_F(BadVolume, ADamagedOneIsNamedByEachOperationAndLeftAsItIs) {
  const std::string text = "Error: Database mount failed: Invalid Parameter";
  std::ofstream(path) << std::string(5000, '?');
  change_everything();
  EXPECT_EQ(boxes_shown(), Messages(3, text));
  EXPECT_EQ(read_everything(), 0u);
  EXPECT_EQ(boxes_shown(), Messages(4, text));
  delete_everything();
  EXPECT_EQ(boxes_shown(), Messages(2, text));
  EXPECT_EQ(std::filesystem::file_size(path), 5000u);
  std::filesystem::remove(path);
  change_everything();
  EXPECT_EQ(read_everything(), 5u);
}

TEST_F(BadVolume, ALockedOneIsReadAndAFailedChangeShownOnce) {
  change_everything();
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(savePreTextToDB(volume, u"More", kSubjectPretexts), 0);
  EXPECT_EQ(boxes_shown(), Messages{"Error: In Use By Another Program"});
  EXPECT_EQ(read_everything(), 5u);
  EXPECT_EQ(boxes_shown(), Messages{});
  sqlite3_close(other);
  EXPECT_EQ(savePreTextToDB(volume, u"More", kSubjectPretexts), 1);
}

TEST_F(BadVolume, AFullDiskKeepsItFromBeingMade) {
  const std::string text = "Error: Database mount failed: Disk Full";
  EXPECT_TRUE(with_room(100, [&] {
    change_everything();
    const bool changing = same(boxes_shown(), Messages(3, text));
    const bool nothing = read_everything() == 0;
    const bool reading = same(boxes_shown(), Messages(4, text));
    delete_everything();
    return changing && nothing && reading && same(boxes_shown(), Messages(2, text));
  }));
}

TEST_F(BadVolume, AFullDiskKeepsWhatItHolds) {
  change_everything();
  const Text longer(70000, u'x');
  EXPECT_TRUE(with_room(std::filesystem::file_size(path), [&] {
    savePreTextToDB(volume, longer, kSubjectPretexts);
    saveCategoryProps(volume, longer, 1, 1);
    saveProfileInfoToDatabase(volume, u"pfile-Work", {{longer, longer}, {0, 1}});
    return same(boxes_shown(), Messages(3, "Error: Disk Full")) && read_everything() == 5 &&
           same(boxes_shown(), {});
  }));
  EXPECT_EQ(read_everything(), 5u);
}

// Killed as soon as there is a file, and a little later each time: the next start does it again.
TEST_F(BadVolume, AFirstStartThatIsKilledLosesNoReadyMadeText) {
  HeadlessClock clock;
  MemoryRegistry registry;
  EnsureSettingsKey(registry);
  const auto first_start = [&] {
    if (std::filesystem::exists(path)) files.present.insert(settings_volume_path(files));
    SettingsRecord settings;
    LoadSettings(settings, registry, volume, clock, english_locale(), true);
  };
  for (int i = 0; i < 8; ++i) {
    for (const char* name : {"settings.vol", "settings.vol-journal"})
      std::filesystem::remove(folder / name);
    files.present.clear();
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      first_start();
      ::_exit(0);
    }
    while (!std::filesystem::exists(path)) ::usleep(100);
    ::usleep(static_cast<useconds_t>(i * 2000));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    first_start();
    std::vector<Text> texts;
    EXPECT_TRUE(loadPreTextToLB(volume, texts, kSubjectPretexts));
    EXPECT_EQ(texts.size(), 20u) << "round " << i;
    EXPECT_EQ(boxes_shown(), Messages{});
  }
}

TEST_F(BadVolume, ALockIsWaitedForOnceByARowOfOperations) {
  change_everything();
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
