#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/qt/test_window.h"

namespace orvello {
namespace {

// Runs `work` in a process of its own, which ends with the value that it returns.
pid_t start_process(const std::function<int()>& work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work());
  return child;
}

int end_of(pid_t child) {
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SingleInstance, ASecondProcessHandsItsFilesOverAndEnds) {
  TemporaryFolder folder;
  need_application();
  QtWindowOptions options;
  options.data_folder = folder.path();
  options.screen = Size{240, 320};
  QtMainWindow window(options);
  EXPECT_FALSE(window.activate_other_instance(u"Orvello", u"Orvello"));
  Recorder recorder;
  window.create(u"Orvello", u"Orvello", 0, recorder);
  window.show();
  settle();
  window.shell()->showMinimized();
  std::vector<std::vector<std::string>> calls;
  window.on_files = [&](std::vector<std::string> files) { calls.push_back(std::move(files)); };
  const pid_t child = start_process([&] {
    SingleInstance second(folder.path());
    if (second.become_first()) return 10;
    if (!second.hand_over({"/tmp/a b.ics", "/tmp/\xD0\xB1.ics"})) return 11;
    return second.hand_over({}) ? 0 : 12;
  });
  EXPECT_TRUE(wait_until([&] { return calls.size() == 2; }));
  EXPECT_EQ(end_of(child), 0);
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0], (std::vector<std::string>{"/tmp/a b.ics", "/tmp/\xD0\xB1.ics"}));
  EXPECT_TRUE(calls[1].empty());
  EXPECT_FALSE(window.shell()->isMinimized());
}

TEST(SingleInstance, OneThatWasKilledKeepsNobodyOut) {
  TemporaryFolder folder;
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = start_process([&] {
    SingleInstance first(folder.path());
    const char answer = first.become_first() && first.listening_socket() >= 0 ? 'y' : 'n';
    if (::write(ready[1], &answer, 1) != 1) return 1;
    for (;;) ::pause();
  });
  char answer = 0;
  ASSERT_EQ(::read(ready[0], &answer, 1), 1);
  EXPECT_EQ(answer, 'y');
  SingleInstance second(folder.path());
  EXPECT_FALSE(second.become_first());
  ::kill(child, SIGKILL);
  end_of(child);
  EXPECT_TRUE(second.become_first());
  EXPECT_GE(second.listening_socket(), 0) << "the socket left behind is replaced";
  ::close(ready[0]);
  ::close(ready[1]);
}

TEST(SingleInstance, OtherFoldersHaveTheirOwnAndLinksToOneDoNot) {
  TemporaryFolder one, other;
  SingleInstance first(one.path()), second(other.path());
  EXPECT_TRUE(first.become_first());
  EXPECT_TRUE(second.become_first());
  std::filesystem::create_directory_symlink(one.path(), other / "link");
  SingleInstance third(other / "link");
  EXPECT_FALSE(third.become_first());
}

}  // namespace
}  // namespace orvello
