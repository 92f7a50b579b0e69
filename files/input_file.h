// Reading files that anybody may have put there: only regular files of a sensible size are opened,
// and a pipe or a device in their place is refused without waiting for it.
#pragma once

#include <cstdint>
#include <memory>
#include <streambuf>
#include <string>
#include <vector>

#include "base/input_stream.h"
#include "base/result.h"
#include "files/descriptor.h"

namespace orvello {

// Fails with a sentence that names the file and the reason; `errno` tells a missing file (ENOENT).
Result<std::shared_ptr<Descriptor>> open_regular_file(const std::string& path, std::uint64_t most);

Result<std::string> read_whole_file(const std::string& path, std::uint64_t most);

// A regular file as a stream. A read that fails sets `bad()`, and problem() says why.
class InputFile : public InputStream {
 public:
  InputFile(const std::string& path, std::uint64_t most);
  const std::string& problem() const override { return buffer_.problem; }
  std::uint64_t size() const override;

 private:
  struct Buffer : std::streambuf {
    int_type underflow() override;
    std::string path, problem;
    std::shared_ptr<Descriptor> file;
    std::vector<char> bytes;
  };
  Buffer buffer_;
};

// For what a person chose to read: of at most 1 GiB.
std::unique_ptr<InputStream> open_input_file(const std::string& path);

}  // namespace orvello
