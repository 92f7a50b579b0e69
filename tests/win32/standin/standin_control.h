// What a test tells the stand-in for the device's store, and asks of it, beside its objects. Plain
// values only: the library has a heap and a standard library of its own.
#pragma once

#include <windows.h>

namespace orvello::test {

// What a change is called in the platform's messages, added to 0x8100.
enum class StandinChange { created = 0, deleted = 1, changed = 2, remote = 5 };

class StandinControl {
 public:
  // An empty store of generation 2, without faults and counts. What a test still holds is from then
  // on a fault to use.
  virtual void reset() = 0;
  virtual void set_generation(int generation) = 0;

  // The so-manieth call of any function of any object from now on fails; 0: none.
  virtual void fail_call(int number, HRESULT failure) = 0;
  virtual bool reached() const = 0;
  // Every call by that name fails ("Logon", "Save"; "CreateInstance" of the class, "Register").
  // S_OK: no longer. `times` below 0: until then. DISP_E_UNKNOWNNAME: it has no such member.
  virtual void fail_name(const wchar_t* name, HRESULT failure, int times = -1) = 0;
  // Failures come as DISP_E_EXCEPTION with an EXCEPINFO, as a type library's dispatcher answers.
  virtual void answer_exceptions(bool exceptions) = 0;
  virtual void be_slow(int milliseconds) = 0;  // for each call
  // Objects and strings are kept after their release, so that a second one is seen. Off for
  // figures.
  virtual void keep_released(bool keep) = 0;

  virtual int calls() const = 0;
  virtual int calls_of(const wchar_t* name) const = 0;  // gets, puts and calls
  virtual int gets() const = 0;                         // of items' properties
  virtual int references() const = 0;                   // objects that somebody still holds
  virtual int strings() const = 0;                      // given out or taken, and not freed yet
  // Released twice, used after its release, given values that no documentation allows.
  virtual int faults() const = 0;
  // Names what is left and what was wrong, for a test's message.
  virtual const char* report() = 0;

  // `series` of `items` recur weekly; the others lie in the years 2024 to 2028.
  virtual void fill(int items, int series) = 0;
  virtual int items() const = 0;
  // Keeps what is stored, and brings it back after a reset.
  virtual void remember() = 0;
  virtual void bring_back() = 0;
  virtual int exceptions_of(int oid) const = 0;
  // Everything that is stored, as one number: the same while nothing was changed.
  virtual unsigned long long fingerprint() const = 0;
  virtual int add_contact(const wchar_t* file_as, const wchar_t* email,
                          const wchar_t* categories) = 0;
  virtual void set_task_categories(const wchar_t* categories) = 0;
  // Changed or removed behind the program's back, with a message to who is told.
  virtual bool remove_elsewhere(int oid) = 0;
  virtual bool rename_elsewhere(int oid, const wchar_t* subject) = 0;
  virtual int beamed() const = 0;
  virtual int sent() const = 0;

 protected:
  ~StandinControl() = default;
};

// Exported as "standin_control".
using StandinControlFunction = StandinControl* (*)();

}  // namespace orvello::test
