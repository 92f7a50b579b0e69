#include "tests/win32/standin/standin_application.h"

#include "tests/win32/standin/standin_appointment.h"
#include "tests/win32/standin/standin_items.h"

namespace orvello::test {
namespace {

constexpr int kAppointmentKind = 1;
constexpr int kContactKind = 2;
constexpr int kFolderCities = 101;
constexpr ULONG kEveryNotification = 3;

enum ApplicationMember { kLogon, kLogoff, kDefaultFolder, kCreateItem, kItemFromOid, kVersion };
constexpr StandinMember kApplicationMembers[] = {
    {L"Logon", StandinMember::method, VT_EMPTY, {VT_I4}},
    {L"Logoff", StandinMember::method},
    {L"GetDefaultFolder", StandinMember::method, VT_DISPATCH, {VT_I4}},
    {L"CreateItem", StandinMember::method, VT_DISPATCH, {VT_I4}},
    {L"GetItemFromOid", StandinMember::method, VT_DISPATCH, {VT_I4}},
    {L"Version", StandinMember::read},
};
enum FolderMember { kFolderItems, kItemType, kAddToInfrared, kSendToInfrared };
constexpr StandinMember kFolderMembers[] = {
    {L"Items", StandinMember::read},
    {L"DefaultItemType", StandinMember::read},
    {L"AddItemToInfraredFolder", StandinMember::method, VT_EMPTY, {VT_I4, VT_DISPATCH}},
    {L"SendToInfrared", StandinMember::method},
};

}  // namespace

StandinApplication::StandinApplication() : StandinObject("application", kApplicationMembers) {}

IUnknown* StandinApplication::other_interface(REFIID id) {
  const bool has = id == kStandinApplicationInterface ||
                   (id == kStandinSecondInterface && server().generation() >= 3);
  return has ? this : nullptr;
}

HRESULT StandinApplication::get(int, VARIANT& answer) { return give(answer, u"4.20.0"); }

HRESULT StandinApplication::call(int member, const VARIANT* arguments, VARIANT& answer) {
  if (member == kLogon) {
    if (logged_on_) return S_FALSE;
    logged_on_ = true;
    window_ = reinterpret_cast<HWND>(static_cast<INT_PTR>(arguments[0].lVal));
    server().listen(this, {window_, false});
    return S_OK;
  }
  if (!logged_on_) return E_FAIL;
  switch (member) {
    case kLogoff:
      logged_on_ = false;
      server().deafen(this);
      return S_OK;
    case kDefaultFolder: {
      const long folder = arguments[0].lVal;
      if (folder == kFolderCities) return E_NOTIMPL;
      if (folder != kFolderCalendar && folder != kFolderContacts && folder != kFolderTasks &&
          folder != kFolderInfrared)
        return E_INVALIDARG;
      return give(answer, new StandinFolder(*this, folder));
    }
    case kCreateItem:
      if (arguments[0].lVal == kContactKind) return give(answer, new StandinContact({}));
      if (arguments[0].lVal != kAppointmentKind) return E_INVALIDARG;
      return give(answer, new StandinAppointment(0));
    case kItemFromOid:
      return item(arguments[0].lVal, answer);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT StandinApplication::item(std::int32_t oid, VARIANT& answer) {
  const auto& contents = server().store().contents();
  if (contents.records.count(oid) != 0) return give(answer, new StandinAppointment(oid));
  const auto contact = contents.contacts.find(oid);
  if (contact != contents.contacts.end()) return give(answer, new StandinContact(contact->second));
  return E_INVALIDARG;
}

class StandinFolder::Item final : public StandinItem {
 public:
  explicit Item(StandinFolder& folder) : StandinItem(folder), folder_(folder) {}

 protected:
  const Text* text(DWORD id) override {
    if (id != kStandinFolderCategories) return nullptr;
    categories_ = StandinServer::of_process().store().category_text(folder_.folder_).value_or(u"");
    return &categories_;
  }
  HRESULT set(const StandinProperty& property) override {
    if (property.id != kStandinNotifications) return S_FALSE;
    if (property.value.unsigned_number != kEveryNotification) return E_INVALIDARG;
    if (!IsWindow(folder_.application_->window())) return E_ACCESSDENIED;
    folder_.application_->be_told();
    return S_OK;
  }

 private:
  StandinFolder& folder_;
  Text categories_;
};

StandinFolder::StandinFolder(StandinApplication& application, int folder)
    : StandinObject("folder", kFolderMembers), application_(&application), folder_(folder) {}

StandinFolder::~StandinFolder() = default;

void StandinFolder::let_go() {
  for (IDispatch* item : std::exchange(to_send_, {})) item->Release();
  application_.reset();
}

IUnknown* StandinFolder::other_interface(REFIID id) {
  if (id != kStandinItemInterface || server().generation() < 3) return nullptr;
  if (!item_) item_ = std::make_unique<Item>(*this);
  return item_.get();
}

HRESULT StandinFolder::get(int member, VARIANT& answer) {
  if (member == kItemType)
    return give(answer, folder_ == kFolderCalendar ? kAppointmentKind : kContactKind);
  return folder_ == kFolderInfrared ? E_FAIL : give(answer, new StandinItems(folder_));
}

HRESULT StandinFolder::call(int member, const VARIANT* arguments, VARIANT&) {
  if (folder_ != kFolderInfrared) return E_FAIL;
  if (member == kAddToInfrared) {
    if (arguments[0].lVal != kAppointmentKind || !arguments[1].pdispVal) return E_INVALIDARG;
    arguments[1].pdispVal->AddRef();
    to_send_.push_back(arguments[1].pdispVal);
    return S_OK;
  }
  if (to_send_.empty()) return E_FAIL;
  for (IDispatch* item : std::exchange(to_send_, {})) {
    item->Release();
    server().note_beamed();
  }
  return S_OK;
}

}  // namespace orvello::test
