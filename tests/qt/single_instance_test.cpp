#include <gtest/gtest.h>
#include <poll.h>

#include "tests/processes.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

using Joined = SingleInstance::Joined;

TEST(SingleInstance, ASecondProcessHandsItsFilesOverAndEnds) {
  ScratchFolder folder;
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
  const std::vector<std::string> odd{"/tmp/a b.ics", "/tmp/\xD0\xB1.ics", "/tmp/two\nlines\\"};
  const std::vector<std::string> many(30000, std::string(100, 'x'));  // 3 MB
  std::vector<std::vector<std::string>> calls;
  window.on_files = [&](std::vector<std::string> files) { calls.push_back(std::move(files)); };
  const pid_t child = start_process([&] {
    SingleInstance second(folder.path());
    if (second.join(odd) != Joined::handed_over) return 11;
    if (second.join(many) != Joined::handed_over) return 12;
    if (second.join({}) != Joined::handed_over) return 13;
    QtWindowOptions asked;
    asked.data_folder = folder.path();
    asked.new_appointment = true;
    return QtMainWindow(asked).activate_other_instance(u"Orvello", u"Orvello") ? 0 : 14;
  });
  EXPECT_TRUE(wait_until([&] { return calls.size() == 4; }));
  EXPECT_EQ(end_of(child), 0);
  ASSERT_EQ(calls.size(), 4u);
  EXPECT_EQ(calls[0], odd);
  EXPECT_EQ(calls[1], many);
  EXPECT_TRUE(calls[2].empty());
  EXPECT_EQ(calls[3], std::vector<std::string>{kNewAppointmentCall});
  EXPECT_FALSE(window.shell()->isMinimized());
}

// What is said not to be opened never is, and what is said to be was taken.
TEST(SingleInstance, OneThatDoesNotAnswerGetsNothing) {
  ScratchFolder folder;
  SingleInstance first(folder.path());
  ASSERT_TRUE(first.become_first());
  const auto calling = [&] {
    return start_process([&] {
      ::unsetenv("XDG_RUNTIME_DIR");  // another environment finds the way as well
      return static_cast<int>(SingleInstance(folder.path()).join({"/tmp/a.ics"}));
    });
  };
  const pid_t patient = calling();
  EXPECT_EQ(end_of(patient), static_cast<int>(Joined::unanswered));
  EXPECT_FALSE(first.take_call()) << "it was told that they are not opened";
  const pid_t next = calling();
  std::optional<std::vector<std::string>> taken;
  EXPECT_TRUE(wait_until([&] { return (taken = first.take_call()).has_value(); }));
  EXPECT_EQ(end_of(next), static_cast<int>(Joined::handed_over));
  EXPECT_EQ(taken, std::vector<std::string>{"/tmp/a.ics"});
}

TEST(SingleInstance, OneThatEndsMeanwhileIsTakenOverFrom) {
  ScratchFolder folder;
  ToldProcess child([&](auto tell) {
    SingleInstance first(folder.path());
    if (!first.become_first() || !tell()) return 1;
    pollfd called{first.listening_socket(), POLLIN, 0};
    return ::poll(&called, 1, 5000) == 1 ? 0 : 2;  // and ends without having answered
  });
  ASSERT_TRUE(child.told());
  EXPECT_EQ(SingleInstance(folder.path()).join({"/tmp/a.ics"}), Joined::first);
  EXPECT_EQ(child.end(), 0);
}

TEST(SingleInstance, OneThatWasKilledKeepsNobodyOut) {
  ScratchFolder folder;
  ToldProcess child([&](auto tell) {
    SingleInstance first(folder.path());
    if (first.become_first() && first.listening_socket() >= 0) tell();
    for (;;) ::pause();
    return 0;
  });
  ASSERT_TRUE(child.told());
  SingleInstance second(folder.path());
  EXPECT_FALSE(second.become_first());
  child.kill();
  EXPECT_TRUE(second.become_first());
  EXPECT_GE(second.listening_socket(), 0) << "the socket left behind is replaced";
}

TEST(SingleInstance, OtherFoldersHaveTheirOwnAndLinksToOneDoNot) {
  ScratchFolder one, other;
  SingleInstance first(one.path()), second(other.path());
  EXPECT_TRUE(first.become_first());
  EXPECT_TRUE(second.become_first());
  std::filesystem::create_directory_symlink(one.path(), other / "link");
  SingleInstance third(other / "link");
  EXPECT_FALSE(third.become_first());
}

}  // namespace
}  // namespace orvello
