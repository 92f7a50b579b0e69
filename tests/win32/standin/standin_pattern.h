// The recurrence of an appointment, and its exceptions: both read-only lists, counted from 1.
#pragma once

#include "tests/win32/standin/standin_appointment.h"

namespace orvello::test {

class StandinPattern final : public StandinObject {
 public:
  explicit StandinPattern(StandinAppointment& item);

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int member, const VARIANT& value) override;
  HRESULT call(int member, const VARIANT* arguments, VARIANT& answer) override;
  void let_go() override { item_.reset(); }

 private:
  HRESULT occurrence(double date, VARIANT& answer);

  StandinRef<StandinAppointment> item_;
};

class StandinExceptions final : public StandinObject {
 public:
  StandinExceptions(std::int32_t oid, std::vector<AppointmentException> exceptions);

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int, const VARIANT&) override { return DISP_E_MEMBERNOTFOUND; }
  HRESULT call(int member, const VARIANT* arguments, VARIANT& answer) override;

 private:
  std::int32_t oid_;
  std::vector<AppointmentException> exceptions_;
};

class StandinException final : public StandinObject {
 public:
  StandinException(std::int32_t oid, const AppointmentException& exception);

 protected:
  HRESULT get(int member, VARIANT& answer) override;
  HRESULT put(int, const VARIANT&) override { return DISP_E_MEMBERNOTFOUND; }
  HRESULT call(int, const VARIANT*, VARIANT&) override { return DISP_E_MEMBERNOTFOUND; }

 private:
  std::int32_t oid_;
  StandinOccurrence occurrence_;
  bool deleted_;
};

}  // namespace orvello::test
