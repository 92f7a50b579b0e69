#include "store/store_session.h"

namespace orvello {

// Objects go before the store that made them, whatever was left open.
StoreSession::~StoreSession() {
  CloseNotify();
  Close();
  if (initialized_) store_.uninitialize();
}

bool StoreSession::Open(StoreListener* listener) {
  if (logged_on_) return true;
  initialized_ = initialized_ || store_.initialize();
  if (!initialized_) {
    show_error(u"Error in call to CoInitializeEx", u"Error");
    return false;
  }
  if (!create_application()) return false;
  if (!app_->logon(listener)) {
    show_error(u"Failure to logon to app object.", u"Error");
    app_.reset();
    return false;
  }
  logged_on_ = true;
  calendar_folder_ = app_->default_folder(kFolderCalendar);
  if (calendar_folder_) return true;
  show_error(u"Failure to Obtain Calendar Folder", u"Error");
  app_->logoff();
  app_.reset();
  logged_on_ = false;
  return false;
}

void StoreSession::Close() {
  if (!logged_on_) return;
  logged_on_ = false;
  calendar_folder_.reset();
  if (app_) app_->logoff();
  app_.reset();
  store_.uninitialize();
  initialized_ = false;
}

bool StoreSession::create_application() {
  app_ = store_.create_application(false);
  if (app_) return true;
  if (!register_server()) {
    show_error(u"RegisterFile failed. See the 'Troubleshooting' section of the user guide.", u"");
    return false;
  }
  app_ = store_.create_application(false);
  if (app_) return true;
  show_error(u"CoCreateInstance failed. See the 'Troubleshooting' section of the user guide.", u"");
  return false;
}

bool StoreSession::register_server() {
  switch (store_.register_server()) {
    case CalendarStore::Registration::done:
      return true;
    case CalendarStore::Registration::library_missing:
      show_error(u"RegisterFile: (A) Failed to register pimstore.dll", u"");
      break;
    case CalendarStore::Registration::entry_missing:
      show_error(u"RegisterFile: DllRegisterServer is NULL", u"");
      break;
    case CalendarStore::Registration::call_failed:
      show_error(u"DllRegisterServer call failed", u"");
      break;
  }
  return false;
}

// The reason, where the store knows one, stands on a line of its own below the fixed text.
void StoreSession::show_error(TextView text, TextView caption) {
  Text message(text);
  problem_ = app_ ? app_->problem() : Text();
  if (!problem_.empty()) message += u"\n" + problem_;
  boxes_.show(message, caption);
}

std::unique_ptr<StoreItems> StoreSession::CalendarItems() {
  return calendar_folder_ ? calendar_folder_->items() : nullptr;
}

std::unique_ptr<Appointment> StoreSession::ItemFromOid(std::int32_t oid) {
  return app_ ? app_->item_from_oid(oid) : nullptr;
}

std::unique_ptr<Appointment> StoreSession::CreateAppointment() {
  return app_ ? app_->create_appointment() : nullptr;
}

bool StoreSession::BeamToInfrared(Appointment& item) {
  if (!app_ || !app_->default_folder(kFolderInfrared)) return false;
  return app_->beam(item);
}

std::unique_ptr<StoreFolder> StoreSession::folder(int number) {
  return app_ ? app_->default_folder(number) : nullptr;
}

bool StoreSession::OpenNotify(StoreListener* listener) {
  if (notify_app_) return true;
  notify_initialized_ = notify_initialized_ || store_.initialize();
  if (!notify_initialized_) return false;
  notify_app_ = store_.create_application(true);
  if (!notify_app_) return false;
  if (!notify_app_->logon(listener)) {
    notify_app_.reset();
    return false;
  }
  // What comes of this is not looked at: without notifications the program still works.
  if (const auto folder = notify_app_->default_folder(kFolderCalendar))
    folder->enable_notifications();
  return true;
}

void StoreSession::CloseNotify() {
  if (notify_app_) notify_app_->logoff();
  notify_app_.reset();
  if (notify_initialized_) store_.uninitialize();
  notify_initialized_ = false;
}

}  // namespace orvello
