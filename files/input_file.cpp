#include "files/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <stdexcept>

#include "files/file_reasons.h"

namespace orvello {
namespace {

constexpr std::size_t kPiece = 1 << 16;
constexpr std::uint64_t kLargestChosen = std::uint64_t{1} << 30;

}  // namespace

Result<std::shared_ptr<Descriptor>> open_regular_file(const std::string& path, std::uint64_t most) {
  using Opened = Result<std::shared_ptr<Descriptor>>;
  const auto refuse = [](int error, std::string reason) {
    errno = error;
    return Opened::failure(std::move(reason));
  };
  auto file = std::make_shared<Descriptor>(
      ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!*file) return refuse(errno, cannot_be_read(path, errno));
  struct stat info {};
  if (::fstat(file->number(), &info) != 0) return refuse(errno, cannot_be_read(path, errno));
  if (S_ISDIR(info.st_mode)) return refuse(EISDIR, cannot_be_read(path, EISDIR));
  if (!S_ISREG(info.st_mode))
    return refuse(EINVAL, path + " cannot be read: it is a pipe or a device, not a file.");
  if (static_cast<std::uint64_t>(info.st_size) > most)
    return refuse(EFBIG, path + " cannot be read: with " + std::to_string(info.st_size >> 20) +
                             " MiB it is too large.");
  return file;
}

Result<std::string> read_whole_file(const std::string& path, std::uint64_t most) {
  auto file = open_regular_file(path, most);
  if (!file) return Result<std::string>::failure(file.reason());
  std::string content;
  char block[kPiece];
  for (;;) {
    const ssize_t count = ::read((*file)->number(), block, sizeof block);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return Result<std::string>::failure(cannot_be_read(path, errno));
    if (count == 0) return content;
    content.append(block, static_cast<std::size_t>(count));
  }
}

InputFile::InputFile(const std::string& path, std::uint64_t most) : InputStream(nullptr) {
  buffer_.path = path;
  auto file = open_regular_file(path, most);
  if (file) {
    buffer_.file = std::move(*file);
    buffer_.bytes.resize(kPiece);
    rdbuf(&buffer_);
  } else {
    buffer_.problem = file.reason();
    setstate(std::ios::badbit);
  }
}

std::uint64_t InputFile::size() const {
  struct stat info {};
  if (!buffer_.file || ::fstat(buffer_.file->number(), &info) != 0) return 0;
  return static_cast<std::uint64_t>(info.st_size);
}

std::unique_ptr<InputStream> open_input_file(const std::string& path) {
  return std::make_unique<InputFile>(path, kLargestChosen);
}

InputFile::Buffer::int_type InputFile::Buffer::underflow() {
  ssize_t count = 0;
  do count = ::read(file->number(), bytes.data(), bytes.size());
  while (count < 0 && errno == EINTR);
  if (count < 0) {
    problem = cannot_be_read(path, errno);
    throw std::runtime_error(problem);  // the stream around it turns this into bad()
  }
  if (count == 0) return traits_type::eof();
  setg(bytes.data(), bytes.data(), bytes.data() + count);
  return traits_type::to_int_type(*gptr());
}

}  // namespace orvello
