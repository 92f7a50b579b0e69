#include "hosts/linux/linux_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/input_file.h"
#include "hosts/linux/device_path.h"
#include "hosts/shared/bitmap_file.h"

namespace orvello {
namespace {

constexpr std::uint64_t kLargestBitmap = 256 << 20;

}  // namespace

Text LinuxFiles::module_file_name() const { return device_path(paths_.data + "/orvello"); }

bool LinuxFiles::exists(TextView path) const {
  struct stat info {};
  return ::stat(host_path(path).c_str(), &info) == 0;
}

std::optional<Image> LinuxFiles::load_bitmap(TextView path) const {
  const auto bytes = read_whole_file(host_path(path), kLargestBitmap);
  if (!bytes) return std::nullopt;
  return read_bitmap(*bytes);
}

bool LinuxFiles::append_diagnostic_line(TextView line) {
  const std::string path = paths_.state + "/diag.txt";
  const int file =
      ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC, 0600);
  if (file < 0) return false;
  const std::string bytes = to_utf8(line) + "\n";
  // One write, so that two processes do not mix their lines.
  const bool written = ::write(file, bytes.data(), bytes.size()) == ssize_t(bytes.size());
  return (::close(file) == 0) && written;
}

}  // namespace orvello
