// Work in a process of its own, where none can be divided: the test program runs once more and does
// what it finds under a name. Each program with such work has one ProcessWork.DISABLED_Run.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <map>
#include <string>

namespace orvello {

using NamedWork = int (*)(const std::string& argument);
using ChildProcess = HANDLE;

inline std::map<std::string, NamedWork>& known_works() {
  static std::map<std::string, NamedWork> works;
  return works;
}
struct KnownWork {
  KnownWork(const char* name, NamedWork work) { known_works()[name] = work; }
};
#define PROCESS_WORK(name)                             \
  static int name(const std::string& argument);        \
  static const KnownWork name##_is_known(#name, name); \
  static int name(const std::string& argument)

// What the other process does; see start_work.
inline int do_named_work() {
  const HANDLE begun = OpenEventA(EVENT_MODIFY_STATE, FALSE, std::getenv("ORVELLO_WORK_BEGUN"));
  SetEvent(begun);
  return known_works().at(std::getenv("ORVELLO_WORK"))(std::getenv("ORVELLO_WORK_ARGUMENT"));
}

// Answers when the work has begun.
#define start_work(work, argument) start_named_work(#work, argument)
inline ChildProcess start_named_work(const char* name, const std::string& argument) {
  static int number = 0;
  const std::string event =
      "orvello-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++number);
  const HANDLE begun = CreateEventA(nullptr, TRUE, FALSE, event.c_str());
  SetEnvironmentVariableA("ORVELLO_WORK", name);
  SetEnvironmentVariableA("ORVELLO_WORK_ARGUMENT", argument.c_str());
  SetEnvironmentVariableA("ORVELLO_WORK_BEGUN", event.c_str());
  char program[MAX_PATH];
  GetModuleFileNameA(nullptr, program, MAX_PATH);
  std::string line = std::string("\"") + program +
                     "\" --gtest_also_run_disabled_tests --gtest_brief=1"
                     " --gtest_filter=ProcessWork.DISABLED_Run";
  STARTUPINFOA start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;  // it says nothing
  PROCESS_INFORMATION made{};
  if (!CreateProcessA(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                      &made))
    return nullptr;
  CloseHandle(made.hThread);
  const HANDLE either[] = {begun, made.hProcess};
  WaitForMultipleObjects(2, either, FALSE, 30000);
  CloseHandle(begun);
  return made.hProcess;
}

// The value of its work; -1 when it was killed.
inline int end_of(ChildProcess child) {
  DWORD code = static_cast<DWORD>(-1);
  WaitForSingleObject(child, 60000);
  GetExitCodeProcess(child, &code);
  CloseHandle(child);
  return static_cast<int>(code);
}

inline void kill_process(ChildProcess child) {
  TerminateProcess(child, static_cast<UINT>(-1));
  end_of(child);
}

#define killed_after(delay, work, argument) kill_after(delay, start_work(work, argument))
inline void kill_after(int microseconds, ChildProcess child) {
  Sleep(static_cast<DWORD>(microseconds / 1000));
  kill_process(child);
}

}  // namespace orvello
