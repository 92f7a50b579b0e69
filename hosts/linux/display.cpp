#include "hosts/linux/display.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace orvello {
namespace {

constexpr const char* kPlatform = "QT_QPA_PLATFORM";
constexpr const char* kNoDisplay = "ORVELLO_NO_DISPLAY";  // from this program to itself

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

bool answers(const std::string& path, bool abstract_name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() + 2 > sizeof address.sun_path) return false;
  std::memcpy(address.sun_path + (abstract_name ? 1 : 0), path.data(), path.size());
  const int channel = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (channel < 0) return false;
  const auto length =
      abstract_name ? offsetof(sockaddr_un, sun_path) + 1 + path.size() : sizeof address;
  const bool good = ::connect(channel, reinterpret_cast<sockaddr*>(&address),
                              static_cast<socklen_t>(length)) == 0;
  ::close(channel);
  return good;
}

bool x_display_answers(std::string display) {
  if (display.rfind("unix:", 0) == 0) display.erase(0, 4);
  if (display.front() != ':') return true;  // on another machine: the toolkit will find out
  const std::string number = display.substr(1, display.find('.') - 1);
  const std::string path = "/tmp/.X11-unix/X" + number;
  return answers(path, false) || answers(path, true);
}

bool wayland_display_answers(const std::string& display) {
  if (display.front() == '/') return answers(display, false);
  const std::string folder = variable("XDG_RUNTIME_DIR");
  return !folder.empty() && answers(folder + "/" + display, false);
}

}  // namespace

bool display_reachable() {
  if (!variable(kNoDisplay).empty()) return false;
  const std::string platform = variable(kPlatform);
  const bool needs_server =
      platform.empty() || platform.rfind("xcb", 0) == 0 || platform.rfind("wayland", 0) == 0;
  if (!needs_server) return true;
  const std::string x = variable("DISPLAY"), wayland = variable("WAYLAND_DISPLAY");
  return (!x.empty() && x_display_answers(x)) ||
         (!wayland.empty() && wayland_display_answers(wayland));
}

void start_without_this_display() {
  if (!variable(kNoDisplay).empty()) return;
  std::ifstream file("/proc/self/cmdline", std::ios::binary);
  std::vector<std::string> arguments;
  for (std::string one; std::getline(file, one, '\0');) arguments.push_back(one);
  std::vector<char*> pointers;
  for (std::string& one : arguments) pointers.push_back(one.data());
  pointers.push_back(nullptr);
  if (variable(kPlatform).empty())
    ::setenv(kNoDisplay, "1", 1);
  else
    ::unsetenv(kPlatform);
  ::execv("/proc/self/exe", pointers.data());
}

}  // namespace orvello
