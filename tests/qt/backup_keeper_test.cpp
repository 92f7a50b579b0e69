#include "hosts/shared/backup_keeper.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "calendar/rule_text.h"
#include "hosts/linux/system_clock.h"
#include "hosts/qt/loop_timer.h"
#include "hosts/qt/qt_own_runs.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

struct PlainLoop : ProgramLoop {
  std::unique_ptr<LoopTimer> once(int milliseconds, std::function<void()> action) override {
    return std::make_unique<QtLoopTimer>(milliseconds, true, std::move(action));
  }
  std::unique_ptr<LoopTimer> every(int milliseconds, std::function<void()> action) override {
    return std::make_unique<QtLoopTimer>(milliseconds, false, std::move(action));
  }
  void draw_meanwhile() override {}
};

TEST(BackupKeeper, StartsTheProgramWhenACopyIsDueAndTellsOneFailure) {
  need_application();
  ScratchFolder folder;
  std::ofstream(folder / "calendar.db") << "changed";
  const std::string program = folder / "program", calls = folder / "calls";
  std::ofstream(program) << "#!/bin/sh\necho \"$@\" >>'" << calls
                         << "'\necho 'orvello: no copy was made: the disk is full.' >&2\nexit 1\n";
  ::chmod(program.c_str(), 0700);
  CommandLine line;
  line.data_folder = folder.path();
  const SystemClock clock(parse_moment("20261121T093000").value());
  const WindowParts parts{line, {folder.path(), folder.path(), folder.path()}, clock, nullptr, ""};
  std::vector<std::string> told;
  QtOwnRuns runs(program);
  PlainLoop loop;
  BackupKeeper keeper(parts, loop, runs,
                      [&](const std::string& reason) { told.push_back(reason); });
  keeper.begin(1, 20);
  const auto lines = [&] {
    std::ifstream file(calls);
    std::vector<std::string> all;
    for (std::string one; std::getline(file, one);) all.push_back(one);
    return all;
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return lines().size() >= 3; }, 10000));
  EXPECT_EQ(lines()[0], "backup --data " + folder.path());
  ASSERT_EQ(told.size(), 1u) << "a full disk is told once";
  EXPECT_EQ(told[0], "no copy was made: the disk is full.");
}

}  // namespace
}  // namespace orvello
