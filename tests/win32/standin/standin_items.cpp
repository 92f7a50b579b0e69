#include "tests/win32/standin/standin_items.h"

#include <algorithm>

#include "tests/win32/standin/standin_appointment.h"

namespace orvello::test {
namespace {

enum ItemsMember { kCount, kItem, kFind, kFindNext, kRestrict, kSort, kInclude, kRemove, kAdd };
constexpr StandinMember kItemsMembers[] = {
    {L"Count", StandinMember::read},
    {L"Item", StandinMember::method, VT_DISPATCH, {VT_I4}},
    {L"Find", StandinMember::method, VT_DISPATCH, {VT_BSTR}},
    {L"FindNext", StandinMember::method, VT_DISPATCH},
    {L"Restrict", StandinMember::method, VT_DISPATCH, {VT_BSTR}},
    {L"Sort", StandinMember::method, VT_EMPTY, {VT_BSTR, VT_BOOL}},
    {L"IncludeRecurrences", StandinMember::both, VT_BOOL},
    {L"Remove", StandinMember::method, VT_EMPTY, {VT_I4}},
    {L"Add", StandinMember::method, VT_DISPATCH},
};
constexpr auto kText = StandinMember::both;
constexpr StandinMember kContactMembers[] = {
    {L"Oid", StandinMember::read},      {L"FileAs", kText, VT_BSTR},
    {L"FirstName", kText, VT_BSTR},     {L"MiddleName", kText, VT_BSTR},
    {L"LastName", kText, VT_BSTR},      {L"CompanyName", kText, VT_BSTR},
    {L"Email1Address", kText, VT_BSTR}, {L"Email2Address", kText, VT_BSTR},
    {L"Email3Address", kText, VT_BSTR}, {L"Categories", kText, VT_BSTR},
    {L"Save", StandinMember::method},   {L"Delete", StandinMember::method},
};
constexpr int kSaveContact = 10;

// The platform knows no dates outside.
constexpr Day kFirstStored{2};
constexpr Day kLastStored{401768};

}  // namespace

StandinItems::StandinItems(int folder) : StandinObject("items", kItemsMembers), folder_(folder) {}

// Occurrences are shown of a collection in order of start, ascending, alone.
HRESULT StandinItems::fetch(TextView restriction, std::optional<Found>& found) {
  found.reset();
  const auto asked = parse_restriction(restriction);
  if (!asked) return E_INVALIDARG;
  Found result;
  if (folder_ == kFolderContacts) contacts(result);
  if (folder_ == kFolderCalendar) {
    DayBounds bounds = bounds_.within(*asked);
    const bool expands = expands_ && sorted_ && !descending_;
    if (expands) {
      bounds.end_from = std::max(bounds.end_from, kFirstStored);
      bounds.start_to = std::min(bounds.start_to, kLastStored);
    }
    OccurrenceList list;
    if (!server().store().query({bounds, expands, AppointmentFieldSet()}, list)) return E_FAIL;
    if (sorted_) list.sort_by_start(descending_);
    result.rows.reserve(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
      const StoreItem item = list.item(i);
      result.rows.push_back({item.summary->oid, expands && item.summary->recurring,
                             to_seconds(item.start), to_seconds(item.end)});
    }
    if (!sorted_)
      std::stable_sort(result.rows.begin(), result.rows.end(),
                       [](const Row& a, const Row& b) { return a.oid < b.oid; });
  }
  found = std::move(result);
  return S_OK;
}

void StandinItems::contacts(Found& found) const {
  for (const auto& [oid, contact] : server().store().contents().contacts)
    found.rows.push_back({oid, false, {}, {}});
}

HRESULT StandinItems::whole() { return all_ ? S_OK : fetch({}, all_); }

IDispatch* StandinItems::object(const Row& row) const {
  if (folder_ == kFolderContacts) {
    const auto& contacts = server().store().contents().contacts;
    const auto contact = contacts.find(row.oid);
    return contact != contacts.end() ? new StandinContact(contact->second) : nullptr;
  }
  if (!row.occurrence) return new StandinAppointment(row.oid);
  StandinOccurrence occurrence{row.start, row.start, row.end};
  const auto record = server().store().contents().records.find(row.oid);
  if (record != server().store().contents().records.end())
    for (const AppointmentException& one : record->second.exceptions)
      if (!one.deleted && one.start == row.start && one.end == row.end)
        occurrence.original = one.original_start;
  return new StandinAppointment(row.oid, occurrence);
}

HRESULT StandinItems::get(int member, VARIANT& answer) {
  if (member == kInclude) return give_flag(answer, expands_);
  const HRESULT done = whole();
  return FAILED(done) ? done : give(answer, static_cast<std::int32_t>(all_->rows.size()));
}

HRESULT StandinItems::put(int, const VARIANT& value) {
  expands_ = value.boolVal != 0;
  all_.reset();
  return S_OK;
}

HRESULT StandinItems::next(VARIANT& answer) {
  if (!matches_) return E_UNEXPECTED;  // nobody asked to find anything, or the end was reached
  if (matches_->next < matches_->rows.size())
    return give(answer, object(matches_->rows[matches_->next++]));
  matches_.reset();
  return give(answer, static_cast<IDispatch*>(nullptr));
}

HRESULT StandinItems::call(int member, const VARIANT* arguments, VARIANT& answer) {
  switch (member) {
    case kItem: {
      if (const HRESULT done = whole(); FAILED(done)) return done;
      const long index = arguments[0].lVal;
      if (index < 1 || index > static_cast<long>(all_->rows.size())) return E_INVALIDARG;
      return give(answer, object(all_->rows[static_cast<std::size_t>(index - 1)]));
    }
    case kFind: {
      const HRESULT done = fetch(text_of(arguments[0]), matches_);
      return FAILED(done) ? done : next(answer);
    }
    case kFindNext:
      return next(answer);
    case kRestrict: {
      std::optional<Found> found;
      const Text text = text_of(arguments[0]);
      if (const HRESULT done = fetch(text, found); FAILED(done)) return done;
      if (found->rows.empty()) return give(answer, static_cast<IDispatch*>(nullptr));
      auto* restricted = new StandinItems(folder_);
      restricted->expands_ = expands_;
      restricted->sorted_ = sorted_;
      restricted->descending_ = descending_;
      restricted->bounds_ = bounds_.within(*parse_restriction(text));
      restricted->all_ = std::move(found);
      return give(answer, restricted);
    }
    case kSort:
      if (text_of(arguments[0]) != u"[Start]") return E_INVALIDARG;
      sorted_ = true;
      descending_ = arguments[1].boolVal != 0;
      all_.reset();
      return S_OK;
    case kRemove: {
      if (const HRESULT done = whole(); FAILED(done)) return done;
      const long index = arguments[0].lVal;
      if (index < 1 || index > static_cast<long>(all_->rows.size())) return E_INVALIDARG;
      return server().erase(all_->rows[static_cast<std::size_t>(index - 1)].oid) ? S_OK : E_FAIL;
    }
    case kAdd:
      return folder_ == kFolderCalendar ? give(answer, new StandinAppointment(0)) : E_NOTIMPL;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

StandinContact::StandinContact(StoreContact contact)
    : StandinObject("contact", kContactMembers), contact_(std::move(contact)) {}

Text& StandinContact::text(int member) {
  Text* const texts[] = {&contact_.file_as,   &contact_.first_name, &contact_.middle_name,
                         &contact_.last_name, &contact_.company,    &contact_.email[0],
                         &contact_.email[1],  &contact_.email[2],   &contact_.categories};
  return *texts[member - 1];
}

HRESULT StandinContact::get(int member, VARIANT& answer) {
  return member == 0 ? give(answer, contact_.oid) : give(answer, TextView(text(member)));
}

HRESULT StandinContact::put(int member, const VARIANT& value) {
  text(member) = text_of(value);
  return S_OK;
}

HRESULT StandinContact::call(int member, const VARIANT*, VARIANT&) {
  if (member != kSaveContact) {
    if (!server().store().erase_contact(contact_.oid)) return E_FAIL;
  } else {
    const std::int32_t oid = server().store().put_contact(contact_);
    if (oid == 0) return E_FAIL;
    contact_.oid = oid;
  }
  server().keep();
  return S_OK;
}

}  // namespace orvello::test
