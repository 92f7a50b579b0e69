#include <gtest/gtest.h>

#include <chrono>
#include <list>
#include <thread>

#include "hosts/linux/outbox.h"
#include "hosts/shared/saved_files.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;

// A home, and nothing of the real session.
class OutboxTest : public testing::Test {
 protected:
  OutboxTest() {
    fs::create_directories(home / "bin");
    set("HOME", home.path());
    set("PATH", (home / "bin") + ":/usr/bin:/bin");
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "DISPLAY", "WAYLAND_DISPLAY"})
      set(name, "");
  }
  ~OutboxTest() override {
    while (!guards_.empty()) guards_.pop_back();  // a variable may have been set twice
  }
  void set(const char* name, const std::string& value) { guards_.emplace_back(name, value); }
  void write_program(const std::string& text) const {
    put_content(home / "bin/xdg-email", text);
    fs::permissions(home / "bin/xdg-email", fs::perms::owner_all);
  }
  ScratchFolder home;

 private:
  std::list<VariableGuard> guards_;
};

TEST_F(OutboxTest, SavesForTheOwnerAloneAndNeverOverAnotherFile) {
  const Outbox outbox(home / "data/outbox");
  set("DISPLAY", ":0");
  write_program("#!/bin/sh\nexit 1\n");
  for (const char* name : {"Dentist.ics", "Dentist-2.ics", "Dentist-3.ics"}) {
    const auto handed = outbox.hand_over(u"Dentist", name);
    ASSERT_TRUE(handed) << handed.reason();
    EXPECT_FALSE(handed->mailed) << "a folder of its own is never mailed from";
    EXPECT_EQ(handed->path, (home / "data/outbox/") + name);
    EXPECT_EQ(content_of(handed->path), name);
    EXPECT_EQ(mode_of(handed->path), 0600u);
  }
  std::ofstream(home / "file") << "x";
  EXPECT_FALSE(Outbox(home / "file").hand_over(u"Dentist", "x"));
}

TEST_F(OutboxTest, NamesAreSafeWhateverTheSubjectIs) {
  EXPECT_EQ(safe_file_name(u"Встреча: в 10:00"), "Встреча в 10 00");
  EXPECT_EQ(safe_file_name(u"../../etc/passwd"), "etc passwd");
  EXPECT_EQ(safe_file_name(u"-rf\n\u0007x "), "rf x");
  EXPECT_EQ(safe_file_name(u"a',b='%27$(x)`y`;&#+z\"!"), "a b 27 x y z");
  EXPECT_EQ(safe_file_name(u"-- O'Brien\u202Egpj\u0085\u2028x"), "O Brien gpj x");
  for (const char16_t* empty : {u"", u" . ", u"///", u"..."})
    EXPECT_EQ(safe_file_name(empty), "appointment");
  EXPECT_EQ(safe_file_name(Text(200, u'ж')).size(), 120u);
  EXPECT_EQ(safe_file_name(Text(59, u'a') + u"\U0001F600").size(), 59u) << "no half of a pair";
}

TEST_F(OutboxTest, FindsTheDocumentsFolderOfTheDesktop) {
  EXPECT_EQ(documents_folder(), home.path());
  fs::create_directories(home / "Documents");
  EXPECT_EQ(documents_folder(), home / "Documents");
  fs::create_directories(home / ".config");
  std::ofstream(home / ".config/user-dirs.dirs")
      << "# a comment\nXDG_MUSIC_DIR=\"$HOME/Musik\"\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n";
  EXPECT_EQ(documents_folder(), home / "Dokumente");
  const auto handed = Outbox("").hand_over(u"Lunch", "BEGIN");
  ASSERT_TRUE(handed) << handed.reason();
  EXPECT_EQ(handed->path, home / "Dokumente/Orvello/Lunch.ics");
}

TEST_F(OutboxTest, StartsTheMailProgramWhereADesktopIs) {
  const std::string note = home / "note";
  write_program("#!/bin/sh\necho \"$1 $(cat \"$2\")\" > " + note + ".part\nmv " + note + ".part " +
                note + "\n");
  const auto saved = Outbox("").hand_over(u"Lunch", "BEGIN");
  ASSERT_TRUE(saved);
  EXPECT_FALSE(saved->mailed) << "without a session";
  set("WAYLAND_DISPLAY", "wayland-0");
  const auto mailed = Outbox("").hand_over(u"Lunch, & more", "BEGIN");
  ASSERT_TRUE(mailed);
  EXPECT_TRUE(mailed->mailed);
  for (int i = 0; i < 500 && !fs::exists(note); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(content_of(note), "--attach BEGIN\n");
  EXPECT_EQ(mode_of(mailed->path), 0600u);
  EXPECT_EQ(mailed->path, home / ".cache/orvello/Lunch more.ics");
  set("XDG_CACHE_HOME", home / "it's, 100%");
  EXPECT_FALSE(Outbox("").hand_over(u"Lunch", "BEGIN")->mailed) << "not by that path";
  set("XDG_CACHE_HOME", "");
  write_program("#!/no/such/program\n");
  const auto failed = Outbox("").hand_over(u"Tea", "BEGIN");
  ASSERT_TRUE(failed);
  EXPECT_FALSE(failed->mailed);
  EXPECT_EQ(failed->path, home / "Orvello/Tea.ics");
}

}  // namespace
}  // namespace orvello
