#include "tests/win32/standin/standin_recipients.h"

namespace orvello::test {
namespace {

enum RecipientsMember { kHowMany, kOneOf, kAddOne, kRemoveOne };
constexpr StandinMember kRecipientsMembers[] = {
    {L"Count", StandinMember::read},
    {L"Item", StandinMember::method, VT_DISPATCH, {VT_I4}},
    {L"Add", StandinMember::method, VT_DISPATCH, {VT_BSTR}},
    {L"Remove", StandinMember::method, VT_EMPTY, {VT_I4}},
};
constexpr StandinMember kRecipientMembers[] = {
    {L"Name", StandinMember::read},
    {L"Address", StandinMember::both, VT_BSTR},
};

}  // namespace

StandinRecipients::StandinRecipients(StandinAppointment& item)
    : StandinObject("recipients", kRecipientsMembers), item_(&item) {}

HRESULT StandinRecipients::get(int, VARIANT& answer) {
  const auto* list = item_->recipients();
  return list ? give(answer, static_cast<std::int32_t>(list->size())) : E_FAIL;
}

HRESULT StandinRecipients::call(int member, const VARIANT* arguments, VARIANT& answer) {
  auto* list = item_->recipients();
  if (!list) return E_FAIL;
  if (member == kAddOne) {
    list->push_back({text_of(arguments[0]), Text()});
    return give(answer, new StandinRecipient(*item_, list->size() - 1));
  }
  const long index = arguments[0].lVal;
  if (index < 1 || index > static_cast<long>(list->size())) return E_INVALIDARG;
  if (member == kOneOf)
    return give(answer, new StandinRecipient(*item_, static_cast<std::size_t>(index - 1)));
  list->erase(list->begin() + (index - 1));
  return S_OK;
}

StandinRecipient::StandinRecipient(StandinAppointment& item, std::size_t index)
    : StandinObject("recipient", kRecipientMembers), item_(&item), index_(index) {}

StoreRecipient* StandinRecipient::meant() const {
  auto* list = item_->recipients();
  return list && index_ < list->size() ? &(*list)[index_] : nullptr;
}

HRESULT StandinRecipient::get(int member, VARIANT& answer) {
  const StoreRecipient* one = meant();
  if (!one) return E_FAIL;
  return give(answer, TextView(member == 0 ? one->name : one->address));
}

HRESULT StandinRecipient::put(int, const VARIANT& value) {
  StoreRecipient* one = meant();
  if (!one) return E_FAIL;
  one->address = text_of(value);
  return S_OK;
}

}  // namespace orvello::test
