#include "hosts/linux/command.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>

#include <cstdlib>
#include <cstring>
#include <sstream>

#include "files/descriptor.h"

namespace orvello {
namespace {

using CommandClock = std::chrono::steady_clock;

constexpr std::size_t kMostSaid = 2000, kLongestSaid = 200;
constexpr int kTurn = 40;  // milliseconds

// The input as a file, which waits for no reader.
Descriptor file_with(std::string_view input) {
  Descriptor file(::memfd_create("input", MFD_CLOEXEC));
  const bool whole =
      file && write_all(file.number(), input) && ::lseek(file.number(), 0, SEEK_SET) == 0;
  return whole ? std::move(file) : Descriptor();
}

struct ErrorPipe {
  Descriptor read, write;
  ErrorPipe() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
    read = Descriptor(ends[0]);
    write = Descriptor(ends[1]);
  }
};

// Ends with 127, and says why, when it cannot be started.
[[noreturn]] void become(const std::string& path, char* const* arguments, int input, int errors) {
  // Other threads' locks may be held here: nothing but system calls.
  ::setpgid(0, 0);
  for (const int ignored : {SIGPIPE, SIGXFSZ}) ::signal(ignored, SIG_DFL);
  const int nothing = ::open("/dev/null", O_WRONLY);
  ::dup2(input, 0);
  ::dup2(nothing, 1);
  ::dup2(errors, 2);
  ::fcntl(2, F_SETFL, 0);
  ::execv(path.c_str(), arguments);
  ::_exit(127);
}

void read_said(int pipe, std::string& said) {
  char bytes[512];
  for (;;) {
    const ssize_t count = ::read(pipe, bytes, sizeof bytes);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    if (said.size() < kMostSaid) said.append(bytes, static_cast<std::size_t>(count));
  }
}

std::string first_line(const std::string& said) {
  std::istringstream lines(said);
  for (std::string line; std::getline(lines, line);)
    if (line.find_first_not_of(" \t\r") != std::string::npos) return line.substr(0, kLongestSaid);
  return {};
}

std::string end_of_command(const std::string& name, int status, const std::string& said) {
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return {};
  std::string text = name;
  if (WIFSIGNALED(status))
    text += " was ended by signal " + std::to_string(WTERMSIG(status));
  else
    text += " ended with " + std::to_string(WEXITSTATUS(status));
  const std::string line = first_line(said);
  return text + (line.empty() ? "." : ": " + line);
}

}  // namespace

std::vector<std::string> command_words(std::string_view line) {
  std::vector<std::string> words;
  std::string word;
  char quote = 0;
  bool begun = false;
  for (const char c : line) {
    if (quote ? c == quote : c == '"' || c == '\'') {
      quote = quote ? '\0' : c;
      begun = true;
    } else if (!quote && (c == ' ' || c == '\t')) {
      if (begun) words.push_back(std::exchange(word, {}));
      begun = false;
    } else {
      word += c;
      begun = true;
    }
  }
  if (begun) words.push_back(word);
  return words;
}

std::string find_program(const std::string& name) {
  const auto runs = [](const std::string& path) { return ::access(path.c_str(), X_OK) == 0; };
  if (name.find('/') != std::string::npos) return runs(name) ? name : std::string();
  const char* folders_text = std::getenv("PATH");
  std::istringstream folders(folders_text ? folders_text : "");
  for (std::string folder; std::getline(folders, folder, ':');)
    if (!folder.empty() && runs(folder + "/" + name)) return folder + "/" + name;
  return {};
}

std::string run_command(const std::vector<std::string>& words, std::string_view input,
                        std::chrono::milliseconds limit, const std::function<void()>& meanwhile) {
  const std::string name = words.empty() ? std::string() : words[0];
  const std::string path = name.empty() ? name : find_program(name);
  const auto not_started = [&](int error) {
    return name + " could not be started: " + std::strerror(error) + ".";
  };
  if (path.empty()) return not_started(ENOENT);
  const Descriptor file = file_with(input);
  ErrorPipe errors;
  if (!file || !errors.read) return not_started(errno);
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const pid_t child = ::fork();
  if (child < 0) return not_started(errno);
  if (child == 0) become(path, arguments.data(), file.number(), errors.write.number());
  ::setpgid(child, child);
  errors.write.close();

  std::string said;
  int status = 0;
  const auto end = CommandClock::now() + limit;
  while (::waitpid(child, &status, WNOHANG) == 0) {
    if (CommandClock::now() >= end) {
      ::kill(-child, SIGKILL);
      ::waitpid(child, nullptr, 0);
      return name + " did not end within " +
             std::to_string(std::chrono::ceil<std::chrono::seconds>(limit).count()) +
             " seconds and was ended.";
    }
    pollfd ready{errors.read.number(), POLLIN, 0};
    if (::poll(&ready, 1, kTurn) > 0 && (ready.revents & POLLIN) == 0)
      ::poll(nullptr, 0, kTurn);  // it has closed its end, and goes on
    read_said(errors.read.number(), said);
    if (meanwhile) meanwhile();
  }
  read_said(errors.read.number(), said);
  return end_of_command(name, status, said);
}

}  // namespace orvello
