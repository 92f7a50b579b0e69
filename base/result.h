// A value or the reason why there is none. The reason is a sentence for a person (UTF-8) that names
// the file, line or field at fault.
#pragma once

#include <cassert>
#include <optional>
#include <string>
#include <utility>

namespace orvello {

template <typename T>
class Result {
 public:
  Result(T value) : value_(std::move(value)) {}
  static Result failure(std::string reason) {
    Result result;
    result.reason_ = std::move(reason);
    return result;
  }

  explicit operator bool() const { return value_.has_value(); }
  T& operator*() { return assert(value_), *value_; }
  const T& operator*() const { return assert(value_), *value_; }
  T* operator->() { return assert(value_), &*value_; }
  const T* operator->() const { return assert(value_), &*value_; }
  const std::string& reason() const { return reason_; }

 private:
  Result() = default;
  std::optional<T> value_;
  std::string reason_;
};

}  // namespace orvello
