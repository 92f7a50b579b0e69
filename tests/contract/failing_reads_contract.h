// What every calendar store does when one of its reads fails: whatever was asked says so, or
// answers all the same, and nothing is saved from what was read in part.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string_view>

#include "store/record_calendar_store.h"

namespace orvello::test {

// A store whose single reads fail on demand.
class FailingStore {
 public:
  virtual ~FailingStore() = default;
  // A store with what `fill` puts into it, just opened: nothing was read yet.
  virtual std::unique_ptr<RecordCalendarStore> filled(
      const Clock& clock, const std::function<void(RecordCalendarStore&)>& fill) = 0;
  // The same contents, opened anew.
  virtual std::unique_ptr<RecordCalendarStore> again(std::unique_ptr<RecordCalendarStore> store,
                                                     const Clock& clock) = 0;
  // The so-manieth read of that store from now on fails; 0: none.
  virtual void fail_read(RecordCalendarStore& store, int number) = 0;
  // Whether a question by that name needs a read: not of what this store has no place for.
  virtual bool reads(std::string_view) const { return true; }
  // Whether that read fails without words: where a session's own box says it all.
  virtual bool is_silent(int) const { return false; }
  // Whether it has been reached.
  virtual bool reached(RecordCalendarStore& store) const = 0;
};

using MakeFailingStore = std::function<std::unique_ptr<FailingStore>()>;

class FailingReads : public testing::TestWithParam<MakeFailingStore> {};

}  // namespace orvello::test
