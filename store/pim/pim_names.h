// What the device's personal-information store calls its objects, properties and methods, as its
// public documentation has them. Of the orders of the tables of functions the editions say
// different things, and a wrong one calls a wrong function: everything is called by name through
// IDispatch, from which the objects' interfaces derive, and a name that an object does not know is
// a failure like any other. Only IItem has one documented order, and no names.
//
// BodyInk is documented as a size with a pointer, which no VARIANT carries as it is; by name it is
// taken for an array of bytes, automation's form of such a block. The number of the stream that
// IItem would open in its place is documented nowhere.
//
// Arguments stand in the order of the documentation's signature; [out, retval] is the answer.
// Collections count from 1. Texts are VT_BSTR: the caller frees what it is given, and those that it
// hands over. Yes and no are VT_BOOL, -1 and 0; moments are VT_DATE in the device's local time.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <array>
#include <cstdint>

namespace orvello {

// CoCreateInstance(kPimApplicationClass, null, CLSCTX_INPROC_SERVER, one of the two interfaces).
inline constexpr CLSID kPimApplicationClass = {
    0x05058F23, 0x20BE, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};
inline constexpr IID kPimApplicationInterface = {
    0x05058F22, 0x20BE, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};
inline constexpr IID kPimSecondApplicationInterface = {
    0xAF7D0DC7, 0x3D35, 0x424B, {0xAA, 0x60, 0x27, 0xA3, 0x8B, 0x8B, 0x62, 0x9E}};
inline constexpr IID kPimItemInterface = {
    0xFB8998D0, 0x38F0, 0x4D12, {0xAC, 0x56, 0x4E, 0xC8, 0xFC, 0xE9, 0xF3, 0xD5}};
inline constexpr wchar_t kPimServer[] = L"pimstore.dll";
inline constexpr char kPimRegister[] = "DllRegisterServer";  // HRESULT (), 0 is success

inline constexpr std::int32_t kPimAppointmentItem = 1;  // CreateItem, AddItemToInfraredFolder
inline constexpr std::int32_t kPimContactItem = 2;
inline constexpr double kPimNoDate = 949998.0;

// The kinds of object, each with its own numbers for the names.
enum class PimKind {
  application,
  folder,
  items,
  appointment,
  pattern,
  exceptions,
  exception,
  recipients,
  recipient,
  contact,
  task,
};
inline constexpr int kPimKinds = 11;

// Properties are read by DISPATCH_PROPERTYGET and written by DISPATCH_PROPERTYPUT (the one argument
// named DISPID_PROPERTYPUT), methods called by DISPATCH_METHOD.
enum class PimName {
  // application
  logon,               // (VT_I4 window): S_FALSE when logged on already
  logoff,              // ()
  get_default_folder,  // (VT_I4 folder): VT_DISPATCH
  create_item,         // (VT_I4 kind): VT_DISPATCH
  get_item_from_oid,   // (VT_I4 oid): VT_DISPATCH, an HRESULT of failure where there is none
  // folder
  items,             // get VT_DISPATCH
  add_to_infrared,   // (VT_I4 kind, VT_DISPATCH item), the infrared folder's alone
  send_to_infrared,  // ()
  // items, exceptions, recipients
  count,  // get VT_I4
  item,   // (VT_I4 index): VT_DISPATCH
  // items
  find,                 // (VT_BSTR restriction): VT_DISPATCH, null where nothing passes
  find_next,            // (): VT_DISPATCH, null at the end; not to be called after that
  restrict_to,          // (VT_BSTR restriction): VT_DISPATCH, null where nothing passes
  sort,                 // (VT_BSTR property, VT_BOOL descending)
  include_recurrences,  // put VT_BOOL
  // appointment
  oid,      // get VT_I4, of contacts too
  subject,  // get, put VT_BSTR, as the next three
  location,
  categories,  // of contacts too
  body,
  start,                     // get, put VT_DATE
  end,                       // get, put VT_DATE
  all_day_event,             // get, put VT_BOOL
  reminder_set,              // get, put VT_BOOL
  reminder_minutes,          // get, put VT_I4
  sensitivity,               // get, put VT_I4: 0 or 2
  busy_status,               // get, put VT_I4
  body_ink,                  // get, put VT_ARRAY | VT_UI1, VT_EMPTY for none
  is_recurring,              // get VT_BOOL
  duration,                  // get VT_I4, minutes; put and get of the pattern as well
  recipients,                // get VT_DISPATCH
  get_recurrence_pattern,    // (): VT_DISPATCH, made when there is none
  clear_recurrence_pattern,  // ()
  save,                      // ()
  remove,                    // ()
  copy,                      // (): VT_DISPATCH
  send,                      // ()
  // pattern: get, put
  recurrence_type,     // VT_I4
  pattern_start_date,  // VT_DATE
  pattern_end_date,    // VT_DATE
  no_end_date,         // VT_BOOL
  occurrences,         // VT_I4
  start_time,          // VT_DATE, the fraction counts
  end_time,            // VT_DATE
  day_of_week_mask,    // VT_I4, as the rest
  day_of_month,
  interval,
  instance,
  month_of_year,
  exceptions,      // get VT_DISPATCH
  get_occurrence,  // (VT_DATE start): VT_DISPATCH, an HRESULT of failure where there is none
  // exception: get
  appointment_item,  // VT_DISPATCH, null with S_FALSE of a deleted one
  original_date,     // VT_DATE
  deleted,           // VT_BOOL
  // recipients
  add,        // (VT_BSTR name): VT_DISPATCH
  remove_at,  // (VT_I4 index)
  // recipient
  name,     // get VT_BSTR
  address,  // get, put VT_BSTR
  // contact: get, put VT_BSTR
  file_as,
  first_name,
  middle_name,
  last_name,
  company_name,
  email1_address,
  email2_address,
  email3_address,
};

// clang-format off
inline constexpr std::array kPimNames = {
    L"Logon", L"Logoff", L"GetDefaultFolder", L"CreateItem", L"GetItemFromOid", L"Items",
    L"AddItemToInfraredFolder", L"SendToInfrared", L"Count", L"Item", L"Find", L"FindNext",
    L"Restrict", L"Sort", L"IncludeRecurrences", L"Oid", L"Subject", L"Location", L"Categories",
    L"Body", L"Start", L"End", L"AllDayEvent", L"ReminderSet", L"ReminderMinutesBeforeStart",
    L"Sensitivity", L"BusyStatus", L"BodyInk", L"IsRecurring", L"Duration", L"Recipients",
    L"GetRecurrencePattern", L"ClearRecurrencePattern", L"Save", L"Delete", L"Copy", L"Send",
    L"RecurrenceType", L"PatternStartDate", L"PatternEndDate", L"NoEndDate", L"Occurrences",
    L"StartTime", L"EndTime", L"DayOfWeekMask", L"DayOfMonth", L"Interval", L"Instance",
    L"MonthOfYear", L"Exceptions", L"GetOccurrence", L"AppointmentItem", L"OriginalDate",
    L"Deleted", L"Add", L"Remove", L"Name", L"Address", L"FileAs", L"FirstName", L"MiddleName",
    L"LastName", L"CompanyName", L"Email1Address", L"Email2Address", L"Email3Address"};
// clang-format on
inline constexpr int kPimNameCount = static_cast<int>(kPimNames.size());
static_assert(kPimNameCount == static_cast<int>(PimName::email3_address) + 1);

// A property as IItem gives and takes it: its number in the upper half, its type in the lower.
using PimPropertyId = DWORD;
inline constexpr PimPropertyId kPimFolderNotifications = 0x10010013;  // VT_UI4
inline constexpr PimPropertyId kPimFolderCategories = 0x101A001F;     // VT_LPWSTR, comma-separated
inline constexpr ULONG kPimAllNotifications = 3;                      // local and remote changes
inline constexpr WORD kPimNotFound = 0x0100;  // flag of a value: the item has no such property

struct PimBlock {
  DWORD size;
  BYTE* bytes;
};
union PimPropertyValue {
  short i2;
  USHORT ui2;
  LONG i4;
  ULONG ui4;
  FILETIME moment;
  wchar_t* text;
  PimBlock block;
  BOOL yes;
  double r8;
};
struct PimProperty {
  PimPropertyId id;
  WORD length;  // 0
  WORD flags;
  PimPropertyValue value;
};

// What every item and folder of platform generation 3 also is. Objects of earlier generations
// answer E_NOINTERFACE when they are asked for it.
struct PimItemTable : IUnknown {
  // Into *values, which the method allocates on `heap` with everything that the values point to
  // (kPimAllocate; *values null and *bytes 0 before): one HeapFree releases all.
  virtual HRESULT STDMETHODCALLTYPE GetProps(const PimPropertyId* ids, ULONG flags, WORD count,
                                             PimProperty** values, ULONG* bytes, HANDLE heap) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetProps(ULONG flags, WORD count, PimProperty* values) = 0;
  virtual HRESULT STDMETHODCALLTYPE Save() = 0;
  virtual HRESULT STDMETHODCALLTYPE Delete() = 0;
  virtual HRESULT STDMETHODCALLTYPE Display() = 0;
  virtual HRESULT STDMETHODCALLTYPE Edit() = 0;
  virtual HRESULT STDMETHODCALLTYPE Copy(PimItemTable** copy) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Oid(LONG* oid) = 0;
  virtual HRESULT STDMETHODCALLTYPE OpenProperty(PimPropertyId id, DWORD mode,
                                                 IStream** stream) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_DefaultItemType(int* kind) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Application(IUnknown** application) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Parent(IUnknown** folder) = 0;
};
inline constexpr ULONG kPimAllocate = 1;

}  // namespace orvello
