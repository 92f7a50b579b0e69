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
  void Close();  // does nothing while closed
  bool logged_on() const { return logged_on_; }

  std::unique_ptr<StoreItems> CalendarItems();  // null while closed
  std::unique_ptr<Appointment> ItemFromOid(std::int32_t oid);
  std::unique_ptr<Appointment> CreateAppointment();
  bool BeamToInfrared(Appointment& item);

  // Why the last call failed, or the session could not be opened; empty when unknown.
  Text problem() const { return app_ ? app_->problem() : problem_; }
  // Whether another program holds the store, so that the same may work soon.
  bool busy() const { return app_ && app_->busy(); }

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
  Text problem_;  // of a session that is not open
  bool logged_on_ = false;
  // A step that fails after the thread was made ready leaves it so, for the next try; whatever was
  // begun is ended once.
  bool initialized_ = false;
  bool notify_initialized_ = false;
};

}  // namespace orvello
