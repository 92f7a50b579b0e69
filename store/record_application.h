// The port's application object and folders over a store of records.
#pragma once

#include <memory>

#include "ports/calendar_store.h"
#include "store/record_calendar_store.h"

namespace orvello {

class RecordApplication : public StoreApplication {
 public:
  RecordApplication(RecordCalendarStore& store, bool notify) : store_(store), notify_(notify) {}
  ~RecordApplication() override { store_.log_off(this); }

  bool logon(StoreListener* listener) override;
  void logoff() override { store_.log_off(this); }
  std::unique_ptr<StoreFolder> default_folder(int folder) override;
  std::unique_ptr<Appointment> item_from_oid(std::int32_t oid) override;
  std::unique_ptr<Appointment> create_appointment() override;
  bool beam(Appointment& appointment) override;
  bool all_or_nothing(const std::function<bool()>& work) override {
    return store_.all_or_nothing(work);
  }
  bool restore(const AppointmentState& state) override;
  AllDayEnd all_day_end() const override { return store_.all_day_end(); }
  Text problem() const override { return to_utf16(store_.problem()); }
  bool busy() const override { return store_.busy(); }

 private:
  RecordCalendarStore& store_;
  bool notify_;
};

class RecordFolder : public StoreFolder {
 public:
  RecordFolder(RecordCalendarStore& store, const RecordApplication& application, int folder)
      : store_(store), application_(application), folder_(folder) {}

  std::unique_ptr<StoreItems> items() override;
  std::optional<std::int32_t> each_text(std::int32_t after, CalendarDate now,
                                        const std::function<void(StoreTexts&)>& visit) override;
  std::optional<std::vector<StoreContact>> contacts() override;
  std::optional<Text> category_text() override { return store_.category_text(folder_); }
  bool enable_notifications() override;

 private:
  RecordCalendarStore& store_;
  const RecordApplication& application_;
  int folder_;
};

}  // namespace orvello
