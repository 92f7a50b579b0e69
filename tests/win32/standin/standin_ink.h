// A stream over an item's ink: what was written counts once it is committed.
#pragma once

#include <windows.h>

#include <objidl.h>

#include <string>

#include "tests/win32/standin/standin_appointment.h"

namespace orvello::test {

class StandinInk final : public IStream, public StandinCounted {
 public:
  StandinInk(StandinAppointment& item, std::string bytes, bool writes)
      : StandinCounted("ink"), item_(&item), bytes_(std::move(bytes)), writes_(writes) {
    item.stream_open = true;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return hold(); }
  ULONG STDMETHODCALLTYPE Release() override { return release(); }
  HRESULT STDMETHODCALLTYPE Read(void* into, ULONG count, ULONG* done) override;
  HRESULT STDMETHODCALLTYPE Write(const void* from, ULONG count, ULONG* done) override;
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER by, DWORD origin, ULARGE_INTEGER* place) override;
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
  HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*,
                                   ULARGE_INTEGER*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
  HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IStream** copy) override { return *copy = nullptr, E_NOTIMPL; }

 protected:
  void let_go() override {
    item_->stream_open = false;
    item_.reset();
  }

 private:
  HRESULT enter(const wchar_t* name) const;

  StandinRef<StandinAppointment> item_;
  std::string bytes_;
  bool writes_;
  std::size_t place_ = 0;
};

}  // namespace orvello::test
