#include "store/unavailable_store.h"

namespace orvello {
namespace {

class UnavailableApplication : public StoreApplication {
 public:
  explicit UnavailableApplication(std::string reason) : reason_(std::move(reason)) {}
  bool logon(StoreListener*) override { return false; }
  void logoff() override {}
  std::unique_ptr<StoreFolder> default_folder(int) override { return nullptr; }
  std::unique_ptr<Appointment> item_from_oid(std::int32_t) override { return nullptr; }
  std::unique_ptr<Appointment> create_appointment() override { return nullptr; }
  bool beam(Appointment&) override { return false; }
  bool all_or_nothing(const std::function<bool()>&) override { return false; }
  bool restore(const AppointmentState&) override { return false; }
  AllDayEnd all_day_end() const override { return AllDayEnd::on_last_day; }
  Text problem() const override { return to_utf16(reason_); }
  bool busy() const override { return false; }

 private:
  std::string reason_;
};

}  // namespace

std::unique_ptr<StoreApplication> UnavailableStore::create_application(bool) {
  return std::make_unique<UnavailableApplication>(reason_);
}

}  // namespace orvello
