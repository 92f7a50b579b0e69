// A folder's items as the platform finds, sorts and restricts them: its texts are passed on as they
// stand, each item is an object that is asked for what is wanted, and nothing else.
#pragma once

#include "store/device_time.h"
#include "store/pim/pim_fields.h"
#include "store/pim/pim_numbers.h"

namespace orvello {

class PimItems : public StoreItems {
 public:
  // A collection that is null holds nothing. `cannot_read` is told of failures; all go after this.
  PimItems(PimObject items, const PimForm& form, PimNumbers& numbers, DeviceTime& time,
           std::function<void()> cannot_read)
      : items_(std::move(items)),
        form_(form),
        numbers_(numbers),
        time_(time),
        cannot_read_(std::move(cannot_read)) {}

  void set_include_recurrences(bool include) override;
  void sort(TextView property, bool descending) override;  // nothing else than [Start]
  void want(AppointmentFieldSet fields) override { wanted_ = fields; }
  void stop_when(std::function<bool()> stop) override { stop_ = std::move(stop); }
  std::unique_ptr<StoreItems> restrict_to(TextView restriction) override;
  std::optional<StoreItem> find(TextView restriction) override;
  std::optional<StoreItem> find_next() override;
  bool failed() const override { return failed_; }
  bool given_up() const override { return given_up_; }
  AllDayEnd all_day_end() const override { return form_.all_day_end; }

 private:
  enum class Walk { ended, found, counted };
  bool begin();
  bool prepare();
  bool stopped();
  std::optional<StoreItem> fail();
  std::optional<PimObject> restricted(TextView restriction);
  std::optional<StoreItem> count_from(const PimObject& collection);
  std::optional<StoreItem> answer(std::optional<PimObject> item);
  std::optional<StoreItem> item_of(const PimObject& item);
  // The platform shows occurrences from the first to the last alone.
  bool backwards() const { return occurrences_ && descending_; }

  PimObject items_;
  const PimForm& form_;
  PimNumbers& numbers_;
  DeviceTime& time_;
  std::function<void()> cannot_read_;
  AppointmentFieldSet wanted_ = AppointmentFieldSet::all();
  std::function<bool()> stop_;
  bool occurrences_ = false, sorted_ = false, descending_ = false;
  bool prepared_ = false;  // the platform was told these
  bool failed_ = false;
  bool given_up_ = false;
  Walk walk_ = Walk::ended;
  PimObject part_;                      // what a walk backwards was restricted to
  const PimObject* counted_ = nullptr;  // that a walk counts, so far to its end
  std::int32_t index_ = 0, count_ = 0;
};

}  // namespace orvello
