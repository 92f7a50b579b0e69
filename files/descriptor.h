// An open file's number, closed when it goes.
#pragma once

#include <utility>

#include "files/system_files.h"

namespace orvello {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { close(); }
  explicit operator bool() const { return number_ >= 0; }
  int number() const { return number_; }
  bool close() {
    const int number = std::exchange(number_, -1);
    return number < 0 || close_descriptor(number);
  }
  int release() { return std::exchange(number_, -1); }

 private:
  int number_ = -1;
};

}  // namespace orvello
