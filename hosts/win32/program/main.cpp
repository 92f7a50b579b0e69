#include <windows.h>

#include <shellapi.h>

#include <iostream>

#include "hosts/shared/fault_teller.h"
#include "hosts/shared/program.h"
#include "hosts/win32/program/win32_system.h"
#include "hosts/win32/standard_streams.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

constexpr int kFailed = 1;

// The words behind the program's name.
std::vector<std::string> command_line_words() {
  int count = 0;
  wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> all;
  for (int i = 1; words && i < count; ++i) all.push_back(to_utf8(from_wide(words[i])));
  LocalFree(words);
  return all;
}

// What keeps the program from starting is told by whoever finds it; here is what nobody has.
int tell_last_fault() {
  const std::string sentence = caught_sentence(true);
  Win32System().tell_start_fault(sentence);
  return kFailed;
}

int run_words() {
  StandardStreams streams;
  int code = kFailed;
  try {
    Win32System system;
    code = run_program(command_line_words(), system, streams.content());
  } catch (...) {
    return tell_last_fault();
  }
  const auto unwritten = streams.finish();
  if (!unwritten) return code;
  std::cerr << "orvello: " << *unwritten << "\n";
  return kFailed;
}

}  // namespace
}  // namespace orvello

// The words come from the platform, which has them wide.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) { return orvello::run_words(); }
