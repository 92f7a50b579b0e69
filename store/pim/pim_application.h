// The platform's application object and its folders, as the port has them.
#pragma once

#include "store/pim/pim_store.h"
#include "store/record_application.h"

namespace orvello {

class PimApplication : public RecordApplication {
 public:
  PimApplication(PimStore& store, bool notify, PimObject object)
      : RecordApplication(store, notify), store_(store), object_(std::move(object)) {}
  ~PimApplication() override { logoff(); }

  bool logon(StoreListener* listener) override;
  void logoff() override;
  std::unique_ptr<StoreFolder> default_folder(int folder) override;
  bool beam(Appointment& appointment) override;
  const PimObject& object() const { return object_; }

 private:
  PimStore& store_;
  PimObject object_;
  bool logged_on_ = false;
};

class PimFolder : public RecordFolder {
 public:
  PimFolder(PimStore& store, const PimApplication& application, int folder, PimObject object)
      : RecordFolder(store, application, folder),
        store_(store),
        calendar_(folder == kFolderCalendar),
        object_(std::move(object)) {}

  std::unique_ptr<StoreItems> items() override;
  bool enable_notifications() override;

 private:
  PimStore& store_;
  bool calendar_;
  PimObject object_;
};

}  // namespace orvello
