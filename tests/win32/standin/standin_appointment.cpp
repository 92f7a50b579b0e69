#include "tests/win32/standin/standin_appointment.h"

#include <oleauto.h>

#include <algorithm>

#include "tests/win32/standin/standin_ink.h"
#include "tests/win32/standin/standin_pattern.h"
#include "tests/win32/standin/standin_recipients.h"

namespace orvello::test {
namespace {

enum AppointmentMember {
  kOid,
  kSubject,
  kLocation,
  kCategories,
  kBody,
  kStart,
  kEnd,
  kAllDay,
  kReminderSet,
  kReminderMinutes,
  kSensitivity,
  kBusyStatus,
  kBodyInk,
  kIsRecurring,
  kDuration,
  kMeetingStatus,
  kRecipients,
  kGetPattern,
  kClearPattern,
  kSave,
  kDelete,
  kCopy,
  kSend,
};
constexpr auto kRead = StandinMember::read;
constexpr auto kBoth = StandinMember::both;
constexpr auto kMethod = StandinMember::method;
constexpr StandinMember kAppointmentMembers[] = {
    {L"Oid", kRead},
    {L"Subject", kBoth, VT_BSTR},
    {L"Location", kBoth, VT_BSTR},
    {L"Categories", kBoth, VT_BSTR},
    {L"Body", kBoth, VT_BSTR},
    {L"Start", kBoth, VT_DATE},
    {L"End", kBoth, VT_DATE},
    {L"AllDayEvent", kBoth, VT_BOOL},
    {L"ReminderSet", kBoth, VT_BOOL},
    {L"ReminderMinutesBeforeStart", kBoth, VT_I4},
    {L"Sensitivity", kBoth, VT_I4},
    {L"BusyStatus", kBoth, VT_I4},
    {L"BodyInk", kBoth, VT_VARIANT},
    {L"IsRecurring", kRead},
    {L"Duration", kBoth, VT_I4},
    {L"MeetingStatus", kRead},
    {L"Recipients", kRead},
    {L"GetRecurrencePattern", kMethod},
    {L"ClearRecurrencePattern", kMethod},
    {L"Save", kMethod},
    {L"Delete", kMethod},
    {L"Copy", kMethod},
    {L"Send", kMethod},
};

constexpr double kEarliest = 2;       // 1 January 1900
constexpr double kLatest = 401769.0;  // the end of 2999
constexpr std::size_t kMostText = 4096;

bool may_be_stored(double date) { return date == kNoDate || (date >= kEarliest && date < kLatest); }

AppointmentFields fresh_fields(const Clock& clock) {
  AppointmentFields fields;
  const LocalSeconds now = clock.to_local(clock.utc_now());
  fields.start = to_calendar_date(now + 3600);
  fields.end = to_calendar_date(now + 7200);
  return fields;
}

HRESULT give_bytes(VARIANT& answer, const std::string& bytes) {
  if (bytes.empty()) return S_OK;
  SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (!array) return E_OUTOFMEMORY;
  std::copy(bytes.begin(), bytes.end(), static_cast<char*>(array->pvData));
  answer.vt = VT_ARRAY | VT_UI1;
  answer.parray = array;
  return S_OK;
}

std::string bytes_of(const VARIANT& value) {
  if (value.vt == VT_EMPTY || !value.parray) return "";
  const auto* bytes = static_cast<const char*>(value.parray->pvData);
  return std::string(bytes, bytes + value.parray->rgsabound[0].cElements);
}

}  // namespace

class StandinAppointment::Item final : public StandinItem {
 public:
  explicit Item(StandinAppointment& appointment)
      : StandinItem(appointment), appointment_(appointment) {}
  HRESULT STDMETHODCALLTYPE get_Oid(LONG* oid) override {
    *oid = appointment_.oid_;
    return S_OK;
  }

 protected:
  HRESULT open_ink(DWORD mode, IStream** stream) override {
    const std::string* ink = appointment_.ink();
    if (!ink) return E_FAIL;
    if (appointment_.stream_open || (ink->empty() && mode == GENERIC_READ)) return E_ACCESSDENIED;
    *stream = new StandinInk(appointment_, *ink, (mode & GENERIC_WRITE) != 0);
    return S_OK;
  }

 private:
  StandinAppointment& appointment_;
};

StandinAppointment::StandinAppointment(std::int32_t oid,
                                       std::optional<StandinOccurrence> occurrence)
    : StandinObject("appointment", kAppointmentMembers), oid_(oid), occurrence_(occurrence) {
  if (is_new()) changed_ = fresh_fields(server().time().clock());
}

StandinAppointment::~StandinAppointment() = default;

IUnknown* StandinAppointment::other_interface(REFIID id) {
  if (id != kStandinItemInterface || server().generation() < 3) return nullptr;
  if (!item_) item_ = std::make_unique<Item>(*this);
  return item_.get();
}

const AppointmentRecord* StandinAppointment::stored() const {
  const auto& records = server().store().contents().records;
  const auto found = removed_ ? records.end() : records.find(oid_);
  return found == records.end() ? nullptr : &found->second;
}

const AppointmentFields* StandinAppointment::shown() const {
  if (changed_) return &*changed_;
  const AppointmentRecord* record = stored();
  if (!record) return nullptr;
  if (occurrence_)
    for (const AppointmentException& one : record->exceptions)
      if (one.original_start == occurrence_->original && !one.deleted) return &one.fields;
  return &record->fields;
}

CalendarDate StandinAppointment::date(AppointmentField field) const {
  if (changed_) return field == AppointmentField::start ? changed_->start : changed_->end;
  const AppointmentRecord& record = *stored();
  const auto start = to_calendar_date(occurrence_ ? occurrence_->start : record.start);
  if (field == AppointmentField::start) return start;
  const auto end = to_calendar_date(occurrence_ ? occurrence_->end : record.end);
  return shown()->all_day ? stored_end(end, server().all_day_end()) : end;
}

std::int32_t StandinAppointment::minutes() const {
  return static_cast<std::int32_t>(
      (to_seconds(date(AppointmentField::end)) - to_seconds(date(AppointmentField::start))) / 60);
}

bool StandinAppointment::recurs() const {
  if (occurrence_ || pattern_changed_) return true;
  return !pattern_cleared_ && stored() && stored()->recurring();
}

const std::string* StandinAppointment::ink() const {
  const AppointmentFields* fields = shown();
  return fields ? &fields->body_ink : nullptr;
}

void StandinAppointment::set_ink(std::string ink) {
  if (AppointmentFields* fields = change(AppointmentField::ink)) fields->body_ink = std::move(ink);
}

std::vector<StoreRecipient>* StandinAppointment::recipients() {
  if (!recipients_) {
    if (!is_new() && !stored()) return nullptr;
    recipients_ = is_new() ? std::vector<StoreRecipient>() : stored()->recipients;
  }
  return &*recipients_;
}

HRESULT StandinAppointment::get(int member, VARIANT& answer) {
  const AppointmentFields* fields = shown();
  if (!fields) return E_FAIL;
  switch (member) {
    case kOid:
      return give(answer, oid_);
    case kSubject:
      return give(answer, TextView(fields->subject));
    case kLocation:
      return give(answer, TextView(fields->location));
    case kCategories:
      return give(answer, TextView(fields->categories));
    case kBody:
      return give(answer, TextView(fields->body));
    case kStart:
      return give(answer, date(AppointmentField::start));
    case kEnd:
      return give(answer, date(AppointmentField::end));
    case kAllDay:
      return give_flag(answer, fields->all_day);
    case kReminderSet:
      return give_flag(answer, fields->reminder_set);
    case kReminderMinutes:
      return give(answer, fields->reminder_minutes);
    case kSensitivity:
      return give(answer, fields->sensitivity);
    case kBusyStatus:
      return give(answer, static_cast<std::int32_t>(fields->busy_status));
    case kBodyInk:
      return give_bytes(answer, fields->body_ink);
    case kIsRecurring:
      return give_flag(answer, recurs());
    case kDuration:
      return give(answer, minutes());
    case kMeetingStatus:
      return give(answer, recipients() && !recipients()->empty() ? 1 : 0);
    case kRecipients:
      return recipients() ? give(answer, new StandinRecipients(*this)) : E_FAIL;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

// Everything is kept from the first write on, with the times as this platform has them.
AppointmentFields* StandinAppointment::change(AppointmentField field) {
  if (!changed_) {
    const AppointmentFields* fields = shown();
    if (!fields) return nullptr;
    AppointmentFields copy = *fields;
    copy.start = date(AppointmentField::start);
    copy.end = date(AppointmentField::end);
    changed_ = std::move(copy);
  }
  written_.add(field);
  return &*changed_;
}

// Another start takes the end along; an end before the start is refused.
HRESULT StandinAppointment::put_date(AppointmentField field, double date) {
  AppointmentFields* fields = change(field);
  if (!fields) return E_FAIL;
  if (!may_be_stored(date)) return E_INVALIDARG;
  if (field == AppointmentField::end) {
    if (date < fields->start) return E_INVALIDARG;
    fields->end = date;
    return S_OK;
  }
  const auto length = fields->start == kNoDate || date == kNoDate
                          ? 0
                          : to_seconds(fields->end) - to_seconds(fields->start);
  fields->start = date;
  fields->end = to_calendar_date(to_seconds(date) + length);
  written_.add(AppointmentField::end);
  return S_OK;
}

HRESULT StandinAppointment::put(int member, const VARIANT& value) {
  using Field = AppointmentField;
  const auto put_text = [&](Field field, Text AppointmentFields::*text) {
    if (SysStringLen(value.bstrVal) > kMostText && field != Field::body) return E_INVALIDARG;
    AppointmentFields* fields = change(field);
    if (!fields) return E_FAIL;
    fields->*text = text_of(value);
    return S_OK;
  };
  const auto put_value = [&](Field field, auto AppointmentFields::*part, auto given) {
    AppointmentFields* fields = change(field);
    if (!fields) return E_FAIL;
    fields->*part = given;
    return S_OK;
  };
  switch (member) {
    case kSubject:
      return put_text(Field::subject, &AppointmentFields::subject);
    case kLocation:
      return put_text(Field::location, &AppointmentFields::location);
    case kCategories:
      return put_text(Field::categories, &AppointmentFields::categories);
    case kBody:  // plain text takes the place of what was drawn
      set_ink("");
      return put_text(Field::body, &AppointmentFields::body);
    case kStart:
      return put_date(Field::start, value.date);
    case kEnd:
      return put_date(Field::end, value.date);
    case kDuration:
      if (!shown() || value.lVal < 0) return E_INVALIDARG;
      return put_date(Field::end,
                      to_calendar_date(to_seconds(date(Field::start)) + value.lVal * 60LL));
    case kAllDay:
      return put_value(Field::all_day, &AppointmentFields::all_day, value.boolVal != 0);
    case kReminderSet:
      return put_value(Field::reminder_set, &AppointmentFields::reminder_set, value.boolVal != 0);
    case kReminderMinutes:
      return put_value(Field::reminder_minutes, &AppointmentFields::reminder_minutes, value.lVal);
    case kSensitivity:
      if (value.lVal != 0 && value.lVal != 2) return E_INVALIDARG;
      return put_value(Field::sensitivity, &AppointmentFields::sensitivity, value.lVal);
    case kBusyStatus:
      if (value.lVal < 0 || value.lVal > 3) return E_INVALIDARG;
      return put_value(Field::busy_status, &AppointmentFields::busy_status,
                       static_cast<BusyStatus>(value.lVal));
    case kBodyInk:
      if (!shown()) return E_FAIL;
      set_ink(bytes_of(value));
      return S_OK;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT StandinAppointment::call(int member, const VARIANT*, VARIANT& answer) {
  switch (member) {
    case kGetPattern:
      if (occurrence_ || !shown()) return E_FAIL;
      return give(answer, new StandinPattern(*this));
    case kClearPattern:
      return clear_pattern();
    case kSave:
      return save();
    case kDelete:
      return remove();
    case kCopy:
      return copy(answer);
    case kSend:
      return send();
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace orvello::test
