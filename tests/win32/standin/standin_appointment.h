// An appointment, a series, or one occurrence of one. It shows what is stored until something is
// written to it; from then on it keeps a copy, which Save stores.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calendar/recurrence_pattern.h"
#include "store/series.h"
#include "tests/win32/standin/item_table.h"

namespace orvello::test {

// Which occurrence of its series an object is.
struct StandinOccurrence {
  LocalSeconds original;
  LocalSeconds start;
  LocalSeconds end;
};

class StandinAppointment final : public StandinObject {
 public:
  // 0: a new one. It is made with the reference that the caller is given.
  explicit StandinAppointment(std::int32_t oid,
                              std::optional<StandinOccurrence> occurrence = std::nullopt);
  ~StandinAppointment() override;

  // Null where the item is no longer stored.
  const AppointmentRecord* stored() const;
  // The item as it would be saved now. Nothing: it is no longer stored.
  std::optional<AppointmentRecord> record() const;
  bool recurs() const;
  // The recurrence that Save is to store; an item without one is given one where `make`.
  RecurrencePattern* pattern(bool make);
  void pattern_was_changed() { pattern_changed_ = true; }
  std::vector<StoreRecipient>* recipients();  // likewise; null: no longer stored
  const std::string* ink() const;             // null likewise
  void set_ink(std::string ink);
  bool stream_open = false;  // on the ink

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int member, const VARIANT& value) override;
  HRESULT call(int member, const VARIANT* arguments, VARIANT& answer) override;
  IUnknown* other_interface(REFIID id) override;

 private:
  class Item;

  // As the object shows it, but for its times; null where it is no longer stored.
  const AppointmentFields* shown() const;
  CalendarDate date(AppointmentField field) const;  // as this platform stores it
  AppointmentFields* change(AppointmentField field);
  HRESULT put_date(AppointmentField field, double date);
  std::int32_t minutes() const;
  bool apply(AppointmentRecord& record) const;
  bool apply_pattern(AppointmentRecord& record) const;
  HRESULT save();
  HRESULT save_occurrence();
  HRESULT remove();
  HRESULT copy(VARIANT& answer);
  HRESULT send();
  HRESULT clear_pattern();
  bool is_new() const { return oid_ == 0; }

  std::int32_t oid_;
  std::optional<StandinOccurrence> occurrence_;
  std::optional<AppointmentFields> changed_;  // everything, with what was written
  AppointmentFieldSet written_;
  std::optional<RecurrencePattern> pattern_;
  bool pattern_changed_ = false;
  bool pattern_cleared_ = false;
  std::optional<std::vector<StoreRecipient>> recipients_;
  bool removed_ = false;
  std::unique_ptr<Item> item_;
};

}  // namespace orvello::test
