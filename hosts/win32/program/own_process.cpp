#include "hosts/win32/program/own_process.h"

#include <utility>

#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

constexpr int kLookMilliseconds = 200;
constexpr DWORD kMostSaid = 60000, kPipe = 1 << 16, kCutShort = 1;

class HandleOwner {
 public:
  explicit HandleOwner(HANDLE handle = nullptr) : handle_(handle) {}
  ~HandleOwner() { close(); }
  HandleOwner(const HandleOwner&) = delete;
  HandleOwner& operator=(const HandleOwner&) = delete;
  void close() {
    if (handle_ && handle_ != INVALID_HANDLE_VALUE) CloseHandle(std::exchange(handle_, nullptr));
  }
  HANDLE get() const { return handle_; }
  HANDLE* out() { return &handle_; }

 private:
  HANDLE handle_;
};

class RunningProcess : public OwnRun {
 public:
  explicit RunningProcess(OwnRuns::Ended ended) : ended_(std::move(ended)) {}
  ~RunningProcess() override {
    if (!process_.get()) return;
    TerminateProcess(process_.get(), kCutShort);
    WaitForSingleObject(process_.get(), INFINITE);
  }
  RunningProcess(const RunningProcess&) = delete;
  RunningProcess& operator=(const RunningProcess&) = delete;

  bool start(const std::wstring& program, std::wstring line, ProgramLoop& loop) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HandleOwner end;
    if (!CreatePipe(said_.out(), end.out(), &inherited, kPipe)) return false;
    SetHandleInformation(said_.get(), HANDLE_FLAG_INHERIT, 0);
    HandleOwner nothing(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING,
                                    0, nullptr));
    STARTUPINFOW how{};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESTDHANDLES;
    how.hStdInput = how.hStdOutput = nothing.get();
    how.hStdError = end.get();
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE,
                        IDLE_PRIORITY_CLASS | CREATE_NO_WINDOW, nullptr, nullptr, &how, &process))
      return false;
    CloseHandle(process.hThread);
    *process_.out() = process.hProcess;
    look_ = loop.every(kLookMilliseconds, [this] { look(); });
    return true;
  }

 private:
  void look() {
    if (WaitForSingleObject(process_.get(), 0) != WAIT_OBJECT_0) return;
    look_.reset();
    DWORD code = kCutShort;
    GetExitCodeProcess(process_.get(), &code);
    process_.close();
    // A little is said, and all of it waits in the pipe.
    DWORD waiting = 0, got = 0;
    PeekNamedPipe(said_.get(), nullptr, 0, nullptr, &waiting, nullptr);
    std::string said(std::min(waiting, kMostSaid), '\0');
    if (!said.empty() &&
        !ReadFile(said_.get(), said.data(), static_cast<DWORD>(said.size()), &got, nullptr))
      got = 0;
    said.resize(got);
    ended_(static_cast<int>(code), said);
  }

  OwnRuns::Ended ended_;
  HandleOwner process_, said_;
  std::unique_ptr<LoopTimer> look_;
};

}  // namespace

std::wstring own_program() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (length < name.size()) {
      name.resize(length);
      return name;
    }
    name.resize(name.size() * 2);
  }
}

std::wstring quoted_word(const std::wstring& word) {
  if (!word.empty() && word.find_first_of(L" \t\n\v\"") == std::wstring::npos) return word;
  std::wstring quoted = L"\"";
  std::size_t slashes = 0;
  for (const wchar_t c : word) {
    if (c == L'\\') {
      ++slashes;
      continue;
    }
    // Before a quote each of them needs another one.
    quoted.append(c == L'"' ? slashes * 2 + 1 : slashes, L'\\').append(1, c);
    slashes = 0;
  }
  return quoted.append(slashes * 2, L'\\') + L'"';
}

std::unique_ptr<OwnRun> OwnProcesses::start(const std::vector<std::string>& words, Ended ended) {
  if (!loop_ || program_.empty()) return nullptr;
  std::wstring line = quoted_word(program_);
  for (const std::string& word : words) line += L' ' + quoted_word(wide(to_utf16(word)));
  auto run = std::make_unique<RunningProcess>(std::move(ended));
  if (!run->start(program_, std::move(line), *loop_)) return nullptr;
  return run;
}

}  // namespace orvello
