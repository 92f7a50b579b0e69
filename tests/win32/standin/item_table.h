// The second interface of items and folders, of platform generation 3: properties by number, and
// the notes' ink as a stream. Its functions in the order of its documentation.
#pragma once

#include <windows.h>

#include <objidl.h>

#include "tests/win32/standin/standin_object.h"

namespace orvello::test {

struct StandinProperty {
  DWORD id;  // the number above, the type below
  WORD length;
  WORD flags;
  union {
    LONG number;
    ULONG unsigned_number;
    wchar_t* text;
    struct {
      DWORD size;
      BYTE* bytes;
    } block;
    double real;
  } value;
};

inline constexpr IID kStandinItemInterface = {
    0xFB8998D0, 0x38F0, 0x4D12, {0xAC, 0x56, 0x4E, 0xC8, 0xFC, 0xE9, 0xF3, 0xD5}};
inline constexpr DWORD kStandinNotifications = 0x10010013;
inline constexpr DWORD kStandinFolderCategories = 0x101A001F;
inline constexpr DWORD kStandinInk = 0x001E;  // without its type

struct StandinItemTable : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetProps(const DWORD* ids, ULONG flags, WORD count,
                                             StandinProperty** values, ULONG* bytes,
                                             HANDLE heap) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetProps(ULONG flags, WORD count, StandinProperty* values) = 0;
  virtual HRESULT STDMETHODCALLTYPE Save() = 0;
  virtual HRESULT STDMETHODCALLTYPE Delete() = 0;
  virtual HRESULT STDMETHODCALLTYPE Display() = 0;
  virtual HRESULT STDMETHODCALLTYPE Edit() = 0;
  virtual HRESULT STDMETHODCALLTYPE Copy(StandinItemTable** copy) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Oid(LONG* oid) = 0;
  virtual HRESULT STDMETHODCALLTYPE OpenProperty(DWORD id, DWORD mode, IStream** stream) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_DefaultItemType(int* kind) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Application(IUnknown** application) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Parent(IUnknown** folder) = 0;
};

// The interface of one object, which holds it: a reference to it is one to the object. What an
// object has not stays E_NOTIMPL.
class StandinItem : public StandinItemTable {
 public:
  explicit StandinItem(StandinObject& object) : object_(object) {}
  virtual ~StandinItem() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    return object_.QueryInterface(id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return object_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return object_.Release(); }
  HRESULT STDMETHODCALLTYPE GetProps(const DWORD* ids, ULONG flags, WORD count,
                                     StandinProperty** values, ULONG* bytes, HANDLE heap) override;
  HRESULT STDMETHODCALLTYPE SetProps(ULONG flags, WORD count, StandinProperty* values) override;
  HRESULT STDMETHODCALLTYPE Save() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Delete() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Display() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Edit() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Copy(StandinItemTable** copy) override;
  HRESULT STDMETHODCALLTYPE get_Oid(LONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OpenProperty(DWORD id, DWORD mode, IStream** stream) override;
  HRESULT STDMETHODCALLTYPE get_DefaultItemType(int*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_Application(IUnknown**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_Parent(IUnknown**) override { return E_NOTIMPL; }

 protected:
  // A text property; null: the object has no such one.
  virtual const Text* text(DWORD) { return nullptr; }
  virtual HRESULT set(const StandinProperty&) { return S_FALSE; }  // S_FALSE: not set
  virtual HRESULT open_ink(DWORD, IStream** stream) { return *stream = nullptr, E_INVALIDARG; }

  StandinObject& object_;
};

}  // namespace orvello::test
