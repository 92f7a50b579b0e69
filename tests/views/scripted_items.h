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
  std::optional<StoreItem> find(TextView) override { return std::nullopt; }
  std::optional<StoreItem> find_next() override { return std::nullopt; }
  int count() override { return static_cast<int>(items_.size()); }
  std::optional<StoreItem> item(int index) override {
    if (index < 1 || index > count()) return std::nullopt;
    const StoreItem& item = items_[static_cast<std::size_t>(index - 1)];
    failed_ = !item.summary && item.start == kNoDate;
    if (failed_) return std::nullopt;
    return item;
  }
  bool failed() const override { return failed_; }

 private:
  const Answers& answers_;
  std::vector<Text>& log_;
  std::vector<StoreItem> items_;
  bool failed_ = false;
};

}  // namespace orvello
