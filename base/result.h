// A value or the reason why there is none. The reason is a sentence for a person (UTF-8) that names
// the file, line or field at fault.
#pragma once

#include <cassert>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace orvello {

template <typename T>
class [[nodiscard]] Result {
 public:
  // From whatever a T is made of without being asked: a Result of an optional takes both what the
  // optional holds and nullopt.
  template <typename Value = T>
  requires(std::is_convertible_v<Value, T> && !std::is_same_v<std::decay_t<Value>, Result>)
      Result(Value&& value)
      : value_(std::in_place, std::forward<Value>(value)) {}
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
