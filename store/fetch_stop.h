// Asks now and then whether a long fetch is to be given up.
#pragma once

#include <functional>

namespace orvello {

class FetchStop {
 public:
  explicit FetchStop(const std::function<bool()>& asked) : asked_(asked) {}

  // Asked for each row, asks every so many rows only; once it is true it stays so.
  bool now() {
    if (!given_up_ && asked_ && rows_++ % kRows == 0) given_up_ = asked_();
    return given_up_;
  }
  bool given_up() const { return given_up_; }

 private:
  static constexpr unsigned kRows = 64;
  const std::function<bool()>& asked_;
  unsigned rows_ = 0;
  bool given_up_ = false;
};

}  // namespace orvello
