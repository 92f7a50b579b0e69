// A collection of the store that answers what a test lists.
#pragma once

#include <map>

#include "ports/calendar_store.h"

namespace orvello {

// In a list of answers: here the reading breaks off.
inline StoreItem broken_off() { return {kNoDate, kNoDate, nullptr}; }

// Answers each restriction with what the test lists for it, and notes what it was asked.
class ScriptedItems : public StoreItems {
 public:
  using Answers = std::map<Text, std::vector<StoreItem>>;
  ScriptedItems(const Answers& answers, std::vector<Text>& log, std::vector<StoreItem> items = {})
      : answers_(answers), log_(log), items_(std::move(items)) {}

  void set_include_recurrences(bool include) override { log_.push_back(include ? u"all" : u"-"); }
  void sort(TextView property, bool descending) override {
    log_.push_back(Text(property) + (descending ? u" down" : u" up"));
  }
  std::unique_ptr<StoreItems> restrict_to(TextView restriction) override {
    log_.emplace_back(restriction);
    const auto answer = answers_.find(Text(restriction));
    if (answer == answers_.end()) return std::make_unique<ScriptedItems>(answers_, log_);
    return std::make_unique<ScriptedItems>(answers_, log_, answer->second);
  }
  void want(AppointmentFieldSet) override {}
  void stop_when(std::function<bool()>) override {}
  std::optional<StoreItem> find(TextView) override {
    next_ = 0;
    return find_next();
  }
  std::optional<StoreItem> find_next() override {
    failed_ = false;
    if (next_ == items_.size()) return std::nullopt;
    const StoreItem& item = items_[next_++];
    failed_ = !item.summary && item.start == kNoDate;
    if (failed_) return std::nullopt;
    return item;
  }
  bool failed() const override { return failed_; }
  bool given_up() const override { return false; }
  AllDayEnd all_day_end() const override { return AllDayEnd::on_last_day; }

 private:
  const Answers& answers_;
  std::vector<Text>& log_;
  std::vector<StoreItem> items_;
  std::size_t next_ = 0;
  bool failed_ = false;
};

}  // namespace orvello
