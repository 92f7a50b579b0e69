// What every object of the stand-in is: counted, and asked by name. A class gives a table of its
// members; types, counts of arguments and the direction are checked here against it.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <cstdint>
#include <span>
#include <string>

#include "tests/win32/standin/standin_server.h"

namespace orvello::test {

// A property, or a method with `arguments`; `type` is a property's or what a method answers.
struct StandinMember {
  const wchar_t* name;
  enum Access { read, write, both, method } access;
  VARTYPE type = VT_EMPTY;
  VARTYPE arguments[2] = {VT_EMPTY, VT_EMPTY};
};

// Counted, and kept for a while after its last release, so that what is done to it then is seen.
class StandinCounted {
 public:
  explicit StandinCounted(const char* kind);
  StandinCounted(const StandinCounted&) = delete;
  StandinCounted& operator=(const StandinCounted&) = delete;
  virtual ~StandinCounted() = default;

  const char* kind() const { return kind_; }
  bool dead(const char* what) const;  // a fault, when it is

 protected:
  StandinServer& server() const { return server_; }
  ULONG hold();
  ULONG release();
  // Released by the last who held it: lets go what it holds itself.
  virtual void let_go() {}

 private:
  StandinServer& server_;
  const char* kind_;
  ULONG references_ = 1;
};

class StandinObject : public IDispatch, public StandinCounted {
 public:
  StandinObject(const char* kind, std::span<const StandinMember> members);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return hold(); }
  ULONG STDMETHODCALLTYPE Release() override { return release(); }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* wrong) override;

 protected:
  virtual HRESULT get(int member, VARIANT& answer) = 0;
  virtual HRESULT put(int member, const VARIANT& value) = 0;
  virtual HRESULT call(int member, const VARIANT* arguments, VARIANT& answer) = 0;
  // An interface of the object beside IDispatch; null: none.
  virtual IUnknown* other_interface(REFIID) { return nullptr; }

  HRESULT give(VARIANT& answer, TextView text) const;
  static HRESULT give(VARIANT& answer, std::int32_t number);
  static HRESULT give(VARIANT& answer, double date);
  static HRESULT give_flag(VARIANT& answer, bool flag);
  static HRESULT give(VARIANT& answer, IDispatch* object);  // with the reference of who made it
  static Text text_of(const VARIANT& value);

 private:
  HRESULT invoke(int member, WORD flags, const DISPPARAMS& parameters, VARIANT& answer);
  bool fits(const VARIANT& value, VARTYPE type) const;

  std::span<const StandinMember> members_;
};

// A counted reference of the stand-in's own.
template <typename T>
class StandinRef {
 public:
  StandinRef() = default;
  explicit StandinRef(T* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  StandinRef(const StandinRef&) = delete;
  StandinRef& operator=(const StandinRef&) = delete;
  ~StandinRef() { reset(); }
  void reset() {
    if (object_) object_->Release();
    object_ = nullptr;
  }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }

 private:
  T* object_ = nullptr;
};

}  // namespace orvello::test
