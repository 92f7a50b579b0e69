#include "tests/win32/standin/standin_object.h"

#include <oleauto.h>

namespace orvello::test {
namespace {

// The same name has another number in each class, so that a number taken from one object for
// another of a different kind is found out.
int first_number(const char* kind) {
  int sum = 0;
  while (*kind != '\0') sum = (sum * 31 + *kind++) % 9973;
  return 1000 + 64 * sum;
}

HRESULT as_exception(HRESULT failure, EXCEPINFO* exception, StringWatch& watch) {
  if (!exception) return failure;
  *exception = {};
  exception->scode = failure;
  exception->bstrSource = watch.give(u"PIM");
  exception->bstrDescription = watch.give(u"The store has failed.");
  return DISP_E_EXCEPTION;
}

}  // namespace

StandinCounted::StandinCounted(const char* kind)
    : server_(StandinServer::of_process()), kind_(kind) {
  server_.born(kind_);
}

bool StandinCounted::dead(const char* what) const {
  if (references_ > 0) return false;
  server_.add_fault(std::string(kind_) + " was " + what + " after its last release");
  return true;
}

ULONG StandinCounted::hold() {
  if (dead("held")) return 0;
  return ++references_;
}

ULONG StandinCounted::release() {
  if (dead("released")) return 0;
  if (--references_ > 0) return references_;
  let_go();
  server_.released(this, kind_);
  return 0;
}

StandinObject::StandinObject(const char* kind, std::span<const StandinMember> members)
    : StandinCounted(kind), members_(members) {}

HRESULT StandinObject::QueryInterface(REFIID id, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (dead("asked")) return E_UNEXPECTED;
  IUnknown* found = id == IID_IUnknown || id == IID_IDispatch ? static_cast<IDispatch*>(this)
                                                              : other_interface(id);
  if (!found) return E_NOINTERFACE;
  if (id != IID_IUnknown && id != IID_IDispatch)
    if (const HRESULT failure = server().enter(L"QueryInterface"); FAILED(failure)) return failure;
  found->AddRef();
  *object = found;
  return S_OK;
}

HRESULT StandinObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT StandinObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  *info = nullptr;
  return E_NOTIMPL;
}

HRESULT StandinObject::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (dead("asked")) return E_UNEXPECTED;
  if (id != IID_NULL || count == 0) return DISP_E_UNKNOWNINTERFACE;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  if (const HRESULT failure = server().enter(L"GetIDsOfNames"); FAILED(failure)) return failure;
  for (std::size_t i = 0; i < members_.size(); ++i) {
    if (lstrcmpiW(members_[i].name, names[0]) != 0) continue;
    if (server().hides(members_[i].name)) break;
    ids[0] = first_number(kind()) + static_cast<int>(i);
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;  // arguments have no names
  }
  return DISP_E_UNKNOWNNAME;
}

HRESULT StandinObject::Invoke(DISPID number, REFIID id, LCID, WORD flags, DISPPARAMS* parameters,
                              VARIANT* result, EXCEPINFO* exception, UINT* wrong) {
  if (wrong) *wrong = 0;
  if (dead("used")) return E_UNEXPECTED;
  if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!parameters) return E_INVALIDARG;
  const int member = static_cast<int>(number) - first_number(kind());
  if (member < 0 || member >= static_cast<int>(members_.size())) {
    server().add_fault(std::string(kind()) + " has no member of that number");
    return DISP_E_MEMBERNOTFOUND;
  }
  VARIANT answer;
  VariantInit(&answer);
  HRESULT done = server().enter(members_[member].name);
  if (SUCCEEDED(done)) {
    if (flags & DISPATCH_PROPERTYGET) server().count_get();
    done = invoke(member, flags, *parameters, answer);
  }
  if (result)
    *result = answer;
  else if (SUCCEEDED(done) && answer.vt != VT_EMPTY)
    VariantClear(&answer);
  if (FAILED(done) && server().answers_exceptions())
    return as_exception(done, exception, server().watch());
  return done;
}

bool StandinObject::fits(const VARIANT& value, VARTYPE type) const {
  bool fits = value.vt == type;
  if (type == VT_VARIANT) fits = value.vt == VT_EMPTY || value.vt == (VT_ARRAY | VT_UI1);
  if (fits && type == VT_BOOL)
    fits = value.boolVal == VARIANT_TRUE || value.boolVal == VARIANT_FALSE;
  if (fits && type == VT_BSTR) server().watch().take(value.bstrVal);
  return fits;
}

HRESULT StandinObject::invoke(int index, WORD flags, const DISPPARAMS& parameters,
                              VARIANT& answer) {
  const StandinMember& member = members_[index];
  const auto refuse = [&](HRESULT failure, const char* why) {
    server().add_fault(std::string(kind()) + "." +
                       to_utf8(Text(member.name, member.name + lstrlenW(member.name))) + ": " +
                       why);
    return failure;
  };
  const bool is_method = member.access == StandinMember::method;
  if (flags == DISPATCH_PROPERTYPUT) {
    if (is_method || member.access == StandinMember::read)
      return refuse(DISP_E_MEMBERNOTFOUND, "cannot be written");
    if (parameters.cArgs != 1 || parameters.cNamedArgs != 1 ||
        parameters.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
      return refuse(DISP_E_PARAMNOTFOUND, "is put without its value's name");
    if (!fits(parameters.rgvarg[0], member.type)) return refuse(DISP_E_TYPEMISMATCH, "wrong type");
    return put(index, parameters.rgvarg[0]);
  }
  if (is_method ? !(flags & DISPATCH_METHOD) : !(flags & DISPATCH_PROPERTYGET))
    return refuse(DISP_E_MEMBERNOTFOUND, "is called as what it is not");
  if (!is_method && member.access == StandinMember::write)
    return refuse(DISP_E_MEMBERNOTFOUND, "cannot be read");
  const UINT wanted = !is_method || member.arguments[0] == VT_EMPTY ? 0
                      : member.arguments[1] == VT_EMPTY             ? 1
                                                                    : 2;
  if (parameters.cArgs != wanted || parameters.cNamedArgs != 0)
    return refuse(DISP_E_BADPARAMCOUNT, "wrong number of arguments");
  if (!is_method) return get(index, answer);
  VARIANT in_order[2];
  for (UINT i = 0; i < wanted; ++i) {
    in_order[i] = parameters.rgvarg[wanted - 1 - i];  // they come last first
    if (!fits(in_order[i], member.arguments[i])) return refuse(DISP_E_TYPEMISMATCH, "wrong type");
  }
  return call(index, in_order, answer);
}

// A text that was never set is no string at all.
HRESULT StandinObject::give(VARIANT& answer, TextView text) const {
  answer.vt = VT_BSTR;
  answer.bstrVal = text.empty() ? nullptr : server().watch().give(text);
  return S_OK;
}

HRESULT StandinObject::give(VARIANT& answer, std::int32_t number) {
  answer.vt = VT_I4;
  answer.lVal = number;
  return S_OK;
}

HRESULT StandinObject::give(VARIANT& answer, double date) {
  answer.vt = VT_DATE;
  answer.date = date;
  return S_OK;
}

HRESULT StandinObject::give_flag(VARIANT& answer, bool flag) {
  answer.vt = VT_BOOL;
  answer.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

HRESULT StandinObject::give(VARIANT& answer, IDispatch* object) {
  answer.vt = VT_DISPATCH;
  answer.pdispVal = object;
  return S_OK;
}

Text StandinObject::text_of(const VARIANT& value) {
  if (!value.bstrVal) return Text();
  const UINT length = SysStringLen(value.bstrVal);
  return Text(value.bstrVal, value.bstrVal + length);
}

}  // namespace orvello::test
