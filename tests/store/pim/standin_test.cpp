// The stand-in itself: what it counts would else be believed.
#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include "tests/store/pim/pim_server.h"

namespace orvello::test {
namespace {

constexpr CLSID kAppClass = {
    0x05058F23, 0x20BE, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};
constexpr IID kAppInterface = {
    0x05058F22, 0x20BE, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

HRESULT ask(IDispatch* object, const wchar_t* name, WORD flags, VARIANT* arguments, UINT count,
            VARIANT* answer) {
  DISPID number = 0;
  LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
  if (const HRESULT failure = object->GetIDsOfNames(IID_NULL, names, 1, 0, &number);
      FAILED(failure))
    return failure;
  DISPID value = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{arguments, nullptr, count, 0};
  if (flags == DISPATCH_PROPERTYPUT) {
    parameters.rgdispidNamedArgs = &value;
    parameters.cNamedArgs = 1;
  }
  return object->Invoke(number, IID_NULL, 0, flags, &parameters, answer, nullptr, nullptr);
}

VARIANT number(long value) {
  VARIANT variant{};
  variant.vt = VT_I4;
  variant.lVal = value;
  return variant;
}

class Standin : public testing::Test {
 protected:
  void SetUp() override {
    standin().reset();
    ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)));
    ASSERT_EQ(CoCreateInstance(kAppClass, nullptr, CLSCTX_INPROC_SERVER, kAppInterface,
                               reinterpret_cast<void**>(&application_)),
              S_OK);
    VARIANT window = number(0);
    ASSERT_EQ(ask(application_, L"Logon", DISPATCH_METHOD, &window, 1, nullptr), S_OK);
  }
  void TearDown() override {
    application_->Release();
    CoUninitialize();
    standin().reset();  // what it saw was meant
  }
  // A new appointment called "Name".
  IDispatch* appointment() {
    VARIANT kind = number(1), item{}, subject{};
    EXPECT_EQ(ask(application_, L"CreateItem", DISPATCH_METHOD, &kind, 1, &item), S_OK);
    subject.vt = VT_BSTR;
    subject.bstrVal = SysAllocString(L"Name");
    EXPECT_EQ(ask(item.pdispVal, L"Subject", DISPATCH_PROPERTYPUT, &subject, 1, nullptr), S_OK);
    EXPECT_EQ(standin().strings(), 1) << "the caller's own counts until it is freed";
    SysFreeString(subject.bstrVal);
    return item.pdispVal;
  }

  IDispatch* application_ = nullptr;
};

TEST_F(Standin, SeesWhatIsNotFreedAndWhatIsFreedTwice) {
  IDispatch* const item = appointment();
  VARIANT subject{};
  ASSERT_EQ(ask(item, L"Subject", DISPATCH_PROPERTYGET, nullptr, 0, &subject), S_OK);
  EXPECT_EQ(std::wstring(subject.bstrVal), L"Name");
  EXPECT_EQ(standin().strings(), 1);
  SysFreeString(subject.bstrVal);
  EXPECT_EQ(standin().strings(), 0);
  EXPECT_EQ(standin().faults(), 0);
  SysFreeString(subject.bstrVal);
  EXPECT_EQ(standin().faults(), 1);
  item->Release();
}

TEST_F(Standin, SeesWhatIsHeldAndWhatIsUsedAfterItsRelease) {
  IDispatch* const item = appointment();
  EXPECT_EQ(standin().references(), 2);
  item->Release();
  EXPECT_EQ(standin().references(), 1);
  item->Release();
  EXPECT_EQ(ask(item, L"Save", DISPATCH_METHOD, nullptr, 0, nullptr), E_UNEXPECTED);
  EXPECT_EQ(standin().faults(), 2) << standin().report();
}

TEST_F(Standin, RefusesWhatNoDocumentationAllows) {
  IDispatch* const item = appointment();
  VARIANT wrong = number(1);
  EXPECT_EQ(ask(item, L"Subject", DISPATCH_PROPERTYPUT, &wrong, 1, nullptr), DISP_E_TYPEMISMATCH);
  wrong.vt = VT_BOOL;
  wrong.boolVal = 1;
  EXPECT_EQ(ask(item, L"AllDayEvent", DISPATCH_PROPERTYPUT, &wrong, 1, nullptr),
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(ask(item, L"Oid", DISPATCH_PROPERTYPUT, &wrong, 1, nullptr), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(standin().faults(), 3) << standin().report();
  item->Release();
}

TEST_F(Standin, FailsAtTheCallThatItIsToldTo) {
  IDispatch* const item = appointment();
  standin().fail_call(3, E_FAIL);  // each question is two calls: its number, and itself
  VARIANT oid{};
  EXPECT_EQ(ask(item, L"Oid", DISPATCH_PROPERTYGET, nullptr, 0, &oid), S_OK);
  EXPECT_FALSE(standin().reached());
  EXPECT_EQ(ask(item, L"Save", DISPATCH_METHOD, nullptr, 0, nullptr), E_FAIL);
  EXPECT_TRUE(standin().reached());
  EXPECT_EQ(standin().items(), 0);
  EXPECT_EQ(ask(item, L"Save", DISPATCH_METHOD, nullptr, 0, nullptr), S_OK);
  EXPECT_EQ(standin().items(), 1);
  item->Release();
}

}  // namespace
}  // namespace orvello::test
