#include "files/input_file.h"

#include <cerrno>
#include <stdexcept>

#include "files/file_reasons.h"

namespace orvello {
namespace {

constexpr std::size_t kPiece = 1 << 16;
constexpr std::uint64_t kLargestChosen = std::uint64_t{1} << 30;

std::string no_file(const std::string& path) {
  return path + " cannot be read: it is a pipe or a device, not a file.";
}

}  // namespace

Result<std::shared_ptr<Descriptor>> open_regular_file(const std::string& path, std::uint64_t most) {
  using Opened = Result<std::shared_ptr<Descriptor>>;
  const auto refuse = [](int error, std::string reason) {
    errno = error;
    return Opened::failure(std::move(reason));
  };
  auto file = std::make_shared<Descriptor>(open_file_to_read(path));
  if (!*file && errno == EINVAL) return refuse(errno, no_file(path));
  if (!*file) return refuse(errno, cannot_be_read(path, errno));
  const auto status = status_of_file(file->number());
  if (!status) return refuse(errno, cannot_be_read(path, errno));
  if (status->kind == FileKind::folder) return refuse(EISDIR, cannot_be_read(path, EISDIR));
  if (status->kind != FileKind::file) return refuse(EINVAL, no_file(path));
  if (status->size > most)
    return refuse(EFBIG, path + " cannot be read: with " + std::to_string(status->size >> 20) +
                             " MiB it is too large.");
  return file;
}

Result<std::string> read_whole_file(const std::string& path, std::uint64_t most) {
  auto file = open_regular_file(path, most);
  if (!file) return Result<std::string>::failure(file.reason());
  std::string content;
  char block[kPiece];
  for (;;) {
    const std::int64_t count = read_bytes((*file)->number(), block, sizeof block);
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
  const auto status =
      buffer_.file ? status_of_file(buffer_.file->number()) : std::optional<FileStatus>();
  return status ? status->size : 0;
}

std::unique_ptr<InputStream> open_input_file(const std::string& path) {
  return std::make_unique<InputFile>(path, kLargestChosen);
}

InputFile::Buffer::int_type InputFile::Buffer::underflow() {
  const std::int64_t count = read_bytes(file->number(), bytes.data(), bytes.size());
  if (count < 0) {
    problem = cannot_be_read(path, errno);
    throw std::runtime_error(problem);  // the stream around it turns this into bad()
  }
  if (count == 0) return traits_type::eof();
  setg(bytes.data(), bytes.data(), bytes.data() + count);
  return traits_type::to_int_type(*gptr());
}

}  // namespace orvello
