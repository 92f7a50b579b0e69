// Whether a store has failed, and why it did the first time: it may have worked since, and then has
// nothing to say.
#pragma once

#include <string>

#include "store/record_store.h"

namespace orvello {

class FirstFault {
 public:
  explicit FirstFault(const RecordStore& store) : store_(store) {}
  explicit operator bool() const { return failed_; }
  const std::string& reason() const { return reason_; }

  FirstFault& operator|=(bool failed) {
    if (failed && !failed_) reason_ = store_.problem();
    failed_ |= failed;
    return *this;
  }
  FirstFault& operator|=(const FirstFault& other) {
    if (other.failed_ && !failed_) reason_ = other.reason_;
    failed_ |= other.failed_;
    return *this;
  }

 private:
  const RecordStore& store_;
  bool failed_ = false;
  std::string reason_;
};

}  // namespace orvello
