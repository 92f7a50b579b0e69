#include "store/pim/automation.h"

#include <cstring>

namespace orvello {
namespace {

constexpr int kMostArguments = 2;
constexpr unsigned kYes = 65535;  // and above, which the platform's -1 is

// The texts that a failing call may have left are its caller's.
class CallFault {
 public:
  ~CallFault() {
    for (BSTR text : {info_.bstrSource, info_.bstrDescription, info_.bstrHelpFile})
      SysFreeString(text);
  }
  EXCEPINFO* out() { return &info_; }
  HRESULT result() const {
    return FAILED(info_.scode) ? info_.scode : info_.wCode != 0 ? E_FAIL : DISP_E_EXCEPTION;
  }

 private:
  EXCEPINFO info_{};
};

bool is_unset(const VARIANT& value) { return value.vt == VT_EMPTY || value.vt == VT_NULL; }

}  // namespace

PimValue PimValue::number(std::int32_t number) {
  PimValue value;
  value.value_.vt = VT_I4;
  value.value_.lVal = number;
  return value;
}

PimValue PimValue::flag(bool yes) {
  PimValue value;
  value.value_.vt = VT_BOOL;
  value.value_.boolVal = yes ? VARIANT_TRUE : VARIANT_FALSE;
  return value;
}

PimValue PimValue::moment(CalendarDate moment) {
  PimValue value;
  value.value_.vt = VT_DATE;
  value.value_.date = moment;
  return value;
}

PimValue PimValue::text(TextView text) {
  PimValue value;
  value.value_.bstrVal = SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()),
                                           static_cast<UINT>(text.size()));
  value.value_.vt = value.value_.bstrVal ? VT_BSTR : VT_ERROR;
  return value;
}

PimValue PimValue::object(IDispatch* object) {
  PimValue value;
  object->AddRef();
  value.value_.vt = VT_DISPATCH;
  value.value_.pdispVal = object;
  return value;
}

PimValue PimValue::bytes(const std::string& bytes) {
  PimValue value;
  if (bytes.empty()) return value;
  value.value_.vt = VT_ERROR;
  SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (!array) return value;
  std::memcpy(array->pvData, bytes.data(), bytes.size());
  value.value_.vt = VT_ARRAY | VT_UI1;
  value.value_.parray = array;
  return value;
}

std::optional<std::int32_t> PimValue::as_number() const {
  switch (value_.vt) {
    case VT_I4:
    case VT_INT:
    case VT_UI4:
    case VT_UINT:
      return value_.lVal;
    case VT_I2:
      return value_.iVal;
    case VT_UI2:
      return value_.uiVal;
    case VT_BOOL:
      return value_.boolVal;
    default:
      return is_unset(value_) ? std::optional(0) : std::nullopt;
  }
}

std::optional<bool> PimValue::as_flag() const {
  if (value_.vt == VT_BOOL) return static_cast<USHORT>(value_.boolVal) >= kYes;
  const auto number = as_number();
  if (!number) return std::nullopt;
  return static_cast<std::uint32_t>(*number) >= kYes;
}

std::optional<CalendarDate> PimValue::as_moment() const {
  if (value_.vt == VT_DATE || value_.vt == VT_R8) return value_.date;
  return is_unset(value_) ? std::optional(kPimNoDate) : std::nullopt;
}

std::optional<Text> PimValue::as_text() const {
  if (is_unset(value_)) return Text();
  if (value_.vt != VT_BSTR) return std::nullopt;
  return Text(reinterpret_cast<const char16_t*>(value_.bstrVal), SysStringLen(value_.bstrVal));
}

std::optional<std::string> PimValue::as_bytes() const {
  if (is_unset(value_)) return std::string();
  if (value_.vt != (VT_ARRAY | VT_UI1) || SafeArrayGetDim(value_.parray) != 1) return std::nullopt;
  // Not locked: nobody else has it, and a lock that was left would keep it from being freed.
  const SAFEARRAY& array = *value_.parray;
  return std::string(static_cast<const char*>(array.pvData), array.rgsabound[0].cElements);
}

Ref<IDispatch> PimValue::take_object() {
  if (value_.vt != VT_DISPATCH) return {};
  value_.vt = VT_EMPTY;
  return Ref<IDispatch>(value_.pdispVal);
}

HRESULT PimCaller::number_of(IDispatch& object, PimKind kind, PimName name, DISPID& number) {
  auto& known = numbers_[static_cast<std::size_t>(kind)].of[static_cast<std::size_t>(name)];
  if (!known) {
    // The platform takes it without changing it, and says so in no type.
    auto* text = const_cast<wchar_t*>(kPimNames[static_cast<std::size_t>(name)]);
    DISPID asked = DISPID_UNKNOWN;
    const HRESULT result = object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_SYSTEM_DEFAULT, &asked);
    if (FAILED(result)) return end_with(result);
    known = asked;
  }
  number = *known;
  return end_with(S_OK);
}

HRESULT PimCaller::call(IDispatch& object, PimKind kind, PimName name, WORD how,
                        std::initializer_list<PimValue*> arguments, PimValue* answer) {
  DISPID number = DISPID_UNKNOWN;
  if (const HRESULT result = number_of(object, kind, name, number); FAILED(result)) return result;
  // The last argument comes first. They stay ours: nobody else frees what they hold.
  VARIANT values[kMostArguments];
  UINT count = 0;
  for (auto at = arguments.end(); at != arguments.begin();) {
    --at;
    if (!(*at)->made()) return end_with(E_OUTOFMEMORY);
    values[count++] = (*at)->raw();
  }
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{values, nullptr, count, 0};
  if (how == DISPATCH_PROPERTYPUT) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  CallFault fault;
  UINT wrong = 0;
  const HRESULT result = object.Invoke(number, IID_NULL, LOCALE_SYSTEM_DEFAULT, how, &parameters,
                                       answer ? &answer->raw() : nullptr, fault.out(), &wrong);
  return end_with(result == DISP_E_EXCEPTION ? fault.result() : result);
}

HRESULT PimObject::invoke(PimName name, WORD how, std::initializer_list<PimValue*> arguments,
                          PimValue* answer) const {
  if (!object_) return E_POINTER;
  return caller_->call(*object_.get(), kind_, name, how, arguments, answer);
}

std::optional<std::int32_t> PimObject::number(PimName name) const {
  PimValue answer;
  if (FAILED(invoke(name, DISPATCH_PROPERTYGET, {}, &answer))) return std::nullopt;
  return answer.as_number();
}

std::optional<bool> PimObject::flag(PimName name) const {
  PimValue answer;
  if (FAILED(invoke(name, DISPATCH_PROPERTYGET, {}, &answer))) return std::nullopt;
  return answer.as_flag();
}

std::optional<CalendarDate> PimObject::moment(PimName name) const {
  PimValue answer;
  if (FAILED(invoke(name, DISPATCH_PROPERTYGET, {}, &answer))) return std::nullopt;
  return answer.as_moment();
}

std::optional<Text> PimObject::text(PimName name) const {
  PimValue answer;
  if (FAILED(invoke(name, DISPATCH_PROPERTYGET, {}, &answer))) return std::nullopt;
  return answer.as_text();
}

std::optional<std::string> PimObject::bytes(PimName name) const {
  PimValue answer;
  if (FAILED(invoke(name, DISPATCH_PROPERTYGET, {}, &answer))) return std::nullopt;
  return answer.as_bytes();
}

bool PimObject::put(PimName name, PimValue value) const {
  return SUCCEEDED(invoke(name, DISPATCH_PROPERTYPUT, {&value}, nullptr));
}

std::optional<PimObject> PimObject::object_of(HRESULT result, PimValue& answer,
                                              PimKind kind) const {
  if (FAILED(result)) return std::nullopt;
  if (!answer.is_object()) {
    caller_->end_with(DISP_E_TYPEMISMATCH);
    return std::nullopt;
  }
  return PimObject(*caller_, kind, answer.take_object());
}

std::optional<PimObject> PimObject::part(PimName property, PimKind kind) const {
  PimValue answer;
  const HRESULT result = invoke(property, DISPATCH_PROPERTYGET, {}, &answer);
  return object_of(result, answer, kind);
}

std::optional<PimObject> PimObject::made_by(PimName method, PimKind kind, PimValue first) const {
  PimValue answer;
  const HRESULT result = invoke(method, DISPATCH_METHOD, {&first}, &answer);
  return object_of(result, answer, kind);
}

std::optional<PimObject> PimObject::made_by(PimName method, PimKind kind) const {
  PimValue answer;
  const HRESULT result = invoke(method, DISPATCH_METHOD, {}, &answer);
  return object_of(result, answer, kind);
}

bool PimObject::call(PimName method) const {
  return SUCCEEDED(invoke(method, DISPATCH_METHOD, {}, nullptr));
}

bool PimObject::call(PimName method, PimValue first) const {
  return SUCCEEDED(invoke(method, DISPATCH_METHOD, {&first}, nullptr));
}

bool PimObject::call(PimName method, PimValue first, PimValue second) const {
  return SUCCEEDED(invoke(method, DISPATCH_METHOD, {&first, &second}, nullptr));
}

bool PimObject::knows(PimName name) const {
  DISPID number = DISPID_UNKNOWN;
  return object_ && SUCCEEDED(caller_->number_of(*object_.get(), kind_, name, number));
}

}  // namespace orvello
