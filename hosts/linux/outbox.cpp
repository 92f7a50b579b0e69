#include "hosts/linux/outbox.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sstream>

#include "files/input_file.h"
#include "hosts/linux/command.h"
#include "hosts/linux/mail_identity.h"
#include "hosts/shared/saved_files.h"

namespace orvello {
namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::string base_folder(const char* name, const char* below_home) {
  const std::string value = variable(name), home = variable("HOME");
  if (!value.empty() && value.front() == '/') return value;
  return home.empty() ? home : home + below_home;
}

std::string mail_starter() {
  if (variable("DISPLAY").empty() && variable("WAYLAND_DISPLAY").empty()) return {};
  return find_program("xdg-email");
}

// In a session of its own and nobody's child, so that it outlives the program. False when it could
// not be started at all.
bool start_detached(const std::vector<std::string>& words) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  int report[2];
  if (::pipe2(report, O_CLOEXEC) != 0) return false;
  const pid_t child = ::fork();
  if (child == 0) {
    // Other threads' locks may be held here: nothing but system calls.
    ::setsid();
    for (const int ignored : {SIGPIPE, SIGXFSZ}) ::signal(ignored, SIG_DFL);
    if (::fork() != 0) ::_exit(0);
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int stream : {0, 1, 2}) ::dup2(nothing, stream);
    ::execv(arguments[0], arguments.data());
    const char failed = 1;
    [[maybe_unused]] const auto written = ::write(report[1], &failed, 1);
    ::_exit(127);
  }
  ::close(report[1]);
  char failed = 0;
  ssize_t got = 0;
  if (child > 0) {
    ::waitpid(child, nullptr, 0);
    do got = ::read(report[0], &failed, 1);
    while (got < 0 && errno == EINTR);
  }
  ::close(report[0]);
  return child > 0 && got == 0;
}

// The folder's name is not ours to choose.
bool passes_as_argument(const std::string& folder) {
  return std::none_of(folder.begin(), folder.end(), [](unsigned char c) {
    return c < 0x20 || c == 0x7F || std::strchr("'\"\\,%`$&;?#<>|*", c);
  });
}

// What a mail program may take apart in its own way, too.
bool passes_as_address(const std::string& address) {
  return std::all_of(address.begin(), address.end(), [](unsigned char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           std::strchr("@._+-=", c);
  });
}

}  // namespace

static std::optional<HandedOver> mail(TextView subject, const std::string& calendar,
                                      const std::vector<StoreRecipient>& to) {
  const std::string program = mail_starter(), cache = base_folder("XDG_CACHE_HOME", "/.cache");
  if (program.empty() || cache.empty()) return std::nullopt;
  const std::string folder = cache + "/orvello";
  if (!passes_as_argument(folder)) return std::nullopt;
  forget_old_files(folder);
  const auto path = save_under_free_name(folder, safe_file_name(subject), ".ics", calendar);
  if (!path) return std::nullopt;
  HandedOver handed{true, *path, {}};
  std::vector<std::string> words{program};
  if (!to.empty()) words.insert(words.end(), {"--utf8", "--subject", safe_file_name(subject)});
  words.insert(words.end(), {"--attach", *path});
  for (const StoreRecipient& one : to) {
    const std::string address = to_utf8(one.address);
    (passes_as_address(address) ? words : handed.left_out).push_back(address);
  }
  if (start_detached(words)) return handed;
  ::unlink(path->c_str());
  return std::nullopt;
}

std::string documents_folder() {
  const std::string home = variable("HOME");
  const auto content =
      read_whole_file(base_folder("XDG_CONFIG_HOME", "/.config") + "/user-dirs.dirs", 1 << 20);
  std::istringstream file(content ? *content : "");
  const std::string key = "XDG_DOCUMENTS_DIR=\"";
  for (std::string line; std::getline(file, line);) {
    if (line.rfind(key, 0) != 0) continue;
    std::string value = line.substr(key.size());
    value.resize(std::min(value.find('"'), value.size()));
    while (value.size() > 1 && value.back() == '/') value.pop_back();
    if (value.rfind("$HOME", 0) == 0 && !home.empty()) value.replace(0, 5, home);
    if (!value.empty() && value.front() == '/') return value;
  }
  struct stat info {};
  const std::string usual = home + "/Documents";
  if (home.empty()) return home;
  return ::stat(usual.c_str(), &info) == 0 && S_ISDIR(info.st_mode) ? usual : home;
}

Result<HandedOver> Outbox::hand_over(TextView subject, const std::string& calendar,
                                     const std::vector<StoreRecipient>& to) const {
  if (folder_.empty())
    if (auto mailed = mail(subject, calendar, to)) return std::move(*mailed);
  std::string folder = folder_;
  if (folder.empty()) {
    const std::string documents = documents_folder();
    if (documents.empty())
      return Result<HandedOver>::failure("There is no home folder to save the appointment in.");
    folder = documents + "/Orvello";
  }
  const auto path = save_under_free_name(folder, safe_file_name(subject), ".ics", calendar);
  if (!path) return Result<HandedOver>::failure(path.reason());
  return HandedOver{false, *path, {}};
}

std::string Outbox::run_mailer(std::string_view command, const std::vector<std::string>& more,
                               std::string_view input, std::chrono::milliseconds limit,
                               const std::function<void()>& meanwhile) const {
  auto words = command_words(command);
  words.insert(words.end(), more.begin(), more.end());
  return run_command(words, input, limit, meanwhile);
}

StoreRecipient Outbox::identity() const { return mail_identity(); }

}  // namespace orvello
