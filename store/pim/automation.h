// Objects of the platform, called by name: references that are released once, texts that are freed
// once, and every HRESULT answered. Any of them may fail; PimCaller keeps how the last call ended.
#pragma once

#include "store/pim/pim_names.h"

#include <oleauto.h>

#include <array>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>

#include "base/text.h"
#include "calendar/calendar_date.h"

namespace orvello {

// One reference to an object, taken over from whoever counted it.
template <typename T>
class Ref {
 public:
  Ref() = default;
  explicit Ref(T* counted) : object_(counted) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() {
    if (object_) object_->Release();
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  // Where a call stores what it counted; only while there is none.
  T** out() { return &object_; }
  void** out_any() { return reinterpret_cast<void**>(&object_); }
  T* release() { return std::exchange(object_, nullptr); }

 private:
  T* object_ = nullptr;
};

// A value that a call takes or answers, and frees with it what it holds.
class PimValue {
 public:
  PimValue() { VariantInit(&value_); }
  PimValue(PimValue&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
  PimValue& operator=(PimValue&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~PimValue() { VariantClear(&value_); }

  static PimValue number(std::int32_t number);
  static PimValue flag(bool yes);  // -1 and 0
  static PimValue moment(CalendarDate moment);
  static PimValue text(TextView text);
  static PimValue object(IDispatch* object);        // counts one more
  static PimValue bytes(const std::string& bytes);  // empty: VT_EMPTY
  // Whether it could be made: a text may be too long for the memory there is.
  bool made() const { return value_.vt != VT_ERROR; }

  // What an unset property answers is 0, no, or empty. Nothing: it is something else.
  std::optional<std::int32_t> as_number() const;
  std::optional<bool> as_flag() const;
  std::optional<CalendarDate> as_moment() const;
  std::optional<Text> as_text() const;
  std::optional<std::string> as_bytes() const;
  bool is_object() const { return value_.vt == VT_DISPATCH || value_.vt == VT_EMPTY; }
  Ref<IDispatch> take_object();  // null too where it is none

  VARIANT& raw() { return value_; }

 private:
  VARIANT value_;
};

// What a session's objects share: the numbers that each kind of object has for its names, asked for
// once, and how the last call ended.
class PimCaller {
 public:
  HRESULT call(IDispatch& object, PimKind kind, PimName name, WORD how,
               std::initializer_list<PimValue*> arguments, PimValue* answer);
  HRESULT number_of(IDispatch& object, PimKind kind, PimName name, DISPID& number);
  HRESULT end_with(HRESULT result) { return last_ = result; }
  HRESULT last() const { return last_; }
  void forget_numbers() { numbers_ = {}; }

 private:
  struct Numbers {
    std::array<std::optional<DISPID>, kPimNameCount> of{};
  };
  std::array<Numbers, kPimKinds> numbers_;
  HRESULT last_ = S_OK;
};

// An object of a known kind. Goes before its PimCaller.
class PimObject {
 public:
  PimObject() = default;
  PimObject(PimCaller& caller, PimKind kind, Ref<IDispatch> object)
      : caller_(&caller), kind_(kind), object_(std::move(object)) {}
  explicit operator bool() const { return static_cast<bool>(object_); }
  IDispatch* get() const { return object_.get(); }

  // Properties. Nothing: failure.
  std::optional<std::int32_t> number(PimName name) const;
  std::optional<bool> flag(PimName name) const;
  std::optional<CalendarDate> moment(PimName name) const;
  std::optional<Text> text(PimName name) const;
  std::optional<std::string> bytes(PimName name) const;
  bool put(PimName name, PimValue value) const;
  // An object that a property or a method answers; without a value: failure. It may be null.
  std::optional<PimObject> part(PimName property, PimKind kind) const;
  std::optional<PimObject> made_by(PimName method, PimKind kind, PimValue first) const;
  std::optional<PimObject> made_by(PimName method, PimKind kind) const;

  bool call(PimName method) const;
  bool call(PimName method, PimValue first) const;
  bool call(PimName method, PimValue first, PimValue second) const;
  bool knows(PimName name) const;
  HRESULT last_result() const { return caller_ ? caller_->last() : E_POINTER; }

  // Another interface of it; null where it has none.
  template <typename T>
  Ref<T> as(const IID& interface_id) const {
    Ref<T> other;
    if (object_) caller_->end_with(object_->QueryInterface(interface_id, other.out_any()));
    return other;
  }

 private:
  HRESULT invoke(PimName name, WORD how, std::initializer_list<PimValue*> arguments,
                 PimValue* answer) const;
  std::optional<PimObject> object_of(HRESULT result, PimValue& answer, PimKind kind) const;

  PimCaller* caller_ = nullptr;
  PimKind kind_ = PimKind::application;
  Ref<IDispatch> object_;
};

}  // namespace orvello
