// Stands in for a store that could not be opened, so that the window still starts: nobody can log
// on, and the reason is there to be shown.
#pragma once

#include <string>

#include "ports/calendar_store.h"

namespace orvello {

class UnavailableStore : public CalendarStore {
 public:
  explicit UnavailableStore(std::string reason) : reason_(std::move(reason)) {}
  bool initialize() override { return true; }
  void uninitialize() override {}
  std::unique_ptr<StoreApplication> create_application(bool notify) override;
  Registration register_server() override { return Registration::done; }

 private:
  std::string reason_;
};

}  // namespace orvello
