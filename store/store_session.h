// The one session with the calendar store. Failures are shown here at once; callers only learn
// whether a step worked.
#pragma once

#include <memory>

#include "ports/calendar_store.h"
#include "ports/message_box.h"

namespace orvello {

class StoreSession {
 public:
  StoreSession(CalendarStore& store, MessageBoxes& boxes) : store_(store), boxes_(boxes) {}
  ~StoreSession();
  StoreSession(const StoreSession&) = delete;
  StoreSession& operator=(const StoreSession&) = delete;

  // Does nothing but succeed while the session is open. `listener` is told of changes.
  bool Open(StoreListener* listener);
  void Close();
  bool logged_on() const { return logged_on_; }

  std::unique_ptr<StoreItems> CalendarItems();  // null while closed
  std::unique_ptr<Appointment> ItemFromOid(std::int32_t oid);
  std::unique_ptr<Appointment> CreateAppointment();
  bool BeamToInfrared(Appointment& item);

  StoreApplication* app() { return app_.get(); }
  StoreFolder* calendar_folder() { return calendar_folder_.get(); }
  std::unique_ptr<StoreFolder> folder(int number);  // null while closed

  // A second application object that switches on the folder's notifications, for the generation
  // that posts none unasked. It outlives reconnects of the session. Shows nothing.
  bool OpenNotify(StoreListener* listener);
  void CloseNotify();

 private:
  bool create_application();
  bool register_server();
  void show_error(TextView text, TextView caption);

  CalendarStore& store_;
  MessageBoxes& boxes_;
  std::unique_ptr<StoreApplication> app_;
  std::unique_ptr<StoreFolder> calendar_folder_;
  std::unique_ptr<StoreApplication> notify_app_;
  bool logged_on_ = false;
};

}  // namespace orvello
