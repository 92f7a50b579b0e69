// Who an appointment is to be sent to: a list that changes the item it belongs to, counted from 1.
#pragma once

#include "tests/win32/standin/standin_appointment.h"

namespace orvello::test {

class StandinRecipients final : public StandinObject {
 public:
  explicit StandinRecipients(StandinAppointment& item);

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int, const VARIANT&) override { return DISP_E_MEMBERNOTFOUND; }
  HRESULT call(int member, const VARIANT* arguments, VARIANT& answer) override;
  void let_go() override { item_.reset(); }

 private:
  StandinRef<StandinAppointment> item_;
};

class StandinRecipient final : public StandinObject {
 public:
  StandinRecipient(StandinAppointment& item, std::size_t index);

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int member, const VARIANT& value) override;
  HRESULT call(int, const VARIANT*, VARIANT&) override { return DISP_E_MEMBERNOTFOUND; }
  void let_go() override { item_.reset(); }

 private:
  StoreRecipient* meant() const;

  StandinRef<StandinAppointment> item_;
  std::size_t index_;
};

}  // namespace orvello::test
