// What the library exports: the class, its registration, and what a test asks for.
#include <windows.h>

#include <objbase.h>
#include <olectl.h>

#include <string>

#include "tests/win32/standin/standin_application.h"

namespace orvello::test {
namespace {

class StandinFactory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    const HRESULT failure = StandinServer::of_process().enter(L"CreateInstance");
    if (FAILED(failure)) return failure;
    auto* application = new StandinApplication;
    const HRESULT done = application->QueryInterface(id, object);
    application->Release();
    return done;
  }
};

std::wstring class_key() {
  wchar_t text[40];
  StringFromGUID2(kStandinClass, text, 40);
  return std::wstring(L"Software\\Classes\\CLSID\\") + text;
}

bool set_value(HKEY key, const wchar_t* name, const std::wstring& value) {
  return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

std::wstring own_path() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<const wchar_t*>(&class_key), &module);
  wchar_t path[MAX_PATH];
  const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
  return std::wstring(path, length);
}

bool register_below(HKEY root) {
  HKEY key = nullptr;
  if (RegCreateKeyExW(root, (class_key() + L"\\InprocServer32").c_str(), 0, nullptr, 0, KEY_WRITE,
                      nullptr, &key, nullptr) != ERROR_SUCCESS)
    return false;
  const bool done =
      set_value(key, nullptr, own_path()) && set_value(key, L"ThreadingModel", L"Both");
  RegCloseKey(key);
  return done;
}

}  // namespace
}  // namespace orvello::test

using namespace orvello::test;  // NOLINT

extern "C" {

__declspec(dllexport) HRESULT STDAPICALLTYPE
    DllGetClassObject(REFCLSID id, REFIID interface_id, void** object) {
  static StandinFactory factory;
  if (id != kStandinClass) return *object = nullptr, CLASS_E_CLASSNOTAVAILABLE;
  return factory.QueryInterface(interface_id, object);
}

// What watches the strings stays for as long as the process lives.
__declspec(dllexport) HRESULT STDAPICALLTYPE DllCanUnloadNow() { return S_FALSE; }

// For the user; for all users as well where that is allowed, as not every system looks for the
// user's own.
__declspec(dllexport) HRESULT STDAPICALLTYPE DllRegisterServer() {
  const HRESULT failure = StandinServer::of_process().enter(L"Register");
  if (FAILED(failure)) return failure;
  const bool own = register_below(HKEY_CURRENT_USER);
  return register_below(HKEY_LOCAL_MACHINE) || own ? S_OK : SELFREG_E_CLASS;
}

__declspec(dllexport) HRESULT STDAPICALLTYPE DllUnregisterServer() {
  for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
    RegDeleteKeyW(root, (class_key() + L"\\InprocServer32").c_str());
    RegDeleteKeyW(root, class_key().c_str());
  }
  return S_OK;
}

__declspec(dllexport) StandinControl* standin_control() { return &StandinServer::of_process(); }

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
  // Never unloaded, as it watches an allocator that lives longer.
  wchar_t path[MAX_PATH];
  if (reason == DLL_PROCESS_ATTACH && GetModuleFileNameW(module, path, MAX_PATH) != 0) {
    HMODULE pinned = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&class_key), &pinned);
  }
  return TRUE;
}
}
