// What is read from a file or another source that its owner opened: a stream that can say why a
// read failed.
#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <memory>
#include <string>

namespace orvello {

class InputStream : public std::istream {
 public:
  using std::istream::istream;
  // A sentence that names the source, once the stream is bad(); else empty.
  virtual const std::string& problem() const = 0;
  virtual std::uint64_t size() const { return 0; }  // in bytes; 0: not known
};

// Opens a source by its name; one that cannot be opened is a stream with a problem.
using OpenInput = std::function<std::unique_ptr<InputStream>(const std::string& name)>;

}  // namespace orvello
