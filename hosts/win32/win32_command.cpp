#include "hosts/win32/win32_command.h"

#include <windows.h>

#include <algorithm>
#include <sstream>

#include "base/text.h"
#include "files/file_reasons.h"
#include "files/system_files.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using CommandTime = std::chrono::steady_clock;

constexpr DWORD kTurn = 40;  // milliseconds
constexpr std::size_t kMostSaid = 2000, kLongestSaid = 200;

class OwnedHandle {
 public:
  OwnedHandle() = default;
  explicit OwnedHandle(HANDLE handle) : handle_(handle) {}
  ~OwnedHandle() { close(); }
  OwnedHandle(const OwnedHandle&) = delete;
  OwnedHandle& operator=(const OwnedHandle&) = delete;
  void close() {
    if (handle_ && handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    handle_ = nullptr;
  }
  HANDLE get() const { return handle_; }
  HANDLE* out() { return &handle_; }

 private:
  HANDLE handle_ = nullptr;
};

// The input as a file, which waits for no reader, and goes with its last handle.
bool make_input(OwnedHandle& file, std::string_view input) {
  wchar_t folder[MAX_PATH + 1], path[MAX_PATH + 1];
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  if (GetTempPathW(MAX_PATH, folder) == 0 || GetTempFileNameW(folder, L"orv", 0, path) == 0)
    return false;
  *file.out() =
      CreateFileW(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file.get() == INVALID_HANDLE_VALUE) return false;
  while (!input.empty()) {
    DWORD written = 0;
    const auto piece = static_cast<DWORD>(std::min<std::size_t>(input.size(), 1 << 20));
    if (!WriteFile(file.get(), input.data(), piece, &written, nullptr)) return false;
    input.remove_prefix(written);
  }
  return SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN) == 0;
}

// Its writing end goes to the other program.
bool make_error_pipe(OwnedHandle& read, OwnedHandle& write) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  return CreatePipe(read.out(), write.out(), &inherited, 0) &&
         SetHandleInformation(read.get(), HANDLE_FLAG_INHERIT, 0);
}

void read_said(HANDLE pipe, std::string& said) {
  char bytes[512];
  DWORD waiting = 0, count = 0;
  while (PeekNamedPipe(pipe, nullptr, 0, nullptr, &waiting, nullptr) && waiting > 0 &&
         ReadFile(pipe, bytes, sizeof bytes, &count, nullptr))
    if (said.size() < kMostSaid) said.append(bytes, count);
}

std::string first_line_of(const std::string& said) {
  std::istringstream lines(said);
  for (std::string line; std::getline(lines, line);)
    if (const std::string_view words = trimmed(std::string_view(line)); !words.empty())
      return std::string(words.substr(0, kLongestSaid));
  return {};
}

}  // namespace

std::string run_command_line(const std::string& line, std::string_view input,
                             std::chrono::milliseconds limit,
                             const std::function<void()>& meanwhile) {
  const auto not_started = [&] {
    return line + " could not be started: " +
           reason_of(errno_of_system(static_cast<int>(GetLastError()))) + ".";
  };
  OwnedHandle in, err_read, err_write;
  if (!make_input(in, input) || !make_error_pipe(err_read, err_write)) return not_started();
  // All that it starts ends with it.
  const OwnedHandle group(CreateJobObjectW(nullptr, nullptr));
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = in.get(), start.hStdError = err_write.get();
  PROCESS_INFORMATION made{};
  Text words = to_utf16(line);
  if (!CreateProcessW(nullptr, reinterpret_cast<wchar_t*>(words.data()), nullptr, nullptr, TRUE,
                      CREATE_NO_WINDOW | CREATE_SUSPENDED, nullptr, nullptr, &start, &made))
    return not_started();
  const OwnedHandle process(made.hProcess), thread(made.hThread);
  AssignProcessToJobObject(group.get(), process.get());
  ResumeThread(thread.get());
  in.close(), err_write.close();
  std::string said;
  const auto end = CommandTime::now() + limit;
  bool given_up = false;
  while (WaitForSingleObject(process.get(), kTurn) == WAIT_TIMEOUT && !given_up) {
    given_up = CommandTime::now() >= end;
    if (given_up && !TerminateJobObject(group.get(), 1)) TerminateProcess(process.get(), 1);
    read_said(err_read.get(), said);
    if (meanwhile) meanwhile();
  }
  read_said(err_read.get(), said);
  if (given_up)
    return line + " did not end within " +
           std::to_string(std::chrono::ceil<std::chrono::seconds>(limit).count()) +
           " seconds and was ended.";
  DWORD code = 1;
  GetExitCodeProcess(process.get(), &code);
  if (code == 0) return {};
  const std::string first = first_line_of(said);
  return line + " ended with " + std::to_string(code) + (first.empty() ? "." : ": " + first);
}

}  // namespace orvello
