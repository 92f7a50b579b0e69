// The stand-in as a whole: what it stores, who is logged on, what is to fail, and what is counted.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/headless/memory_store.h"
#include "tests/win32/standin/standin_control.h"
#include "tests/win32/standin/string_watch.h"

namespace orvello::test {

class StandinCounted;

// The device stands still, in a place without summer time.
class StandinClock : public Clock {
 public:
  SystemTime local_time() const override { return civil_of(Day(46202)); }
  UtcSeconds utc_now() const override { return UtcSeconds(46202LL * 86400); }
  std::string zone_name() const override { return ""; }
  LocalSeconds to_local(UtcSeconds utc) const override { return local_at_offset(utc, 0); }
  UtcSeconds to_utc(LocalSeconds local) const override { return utc_at_offset(local, 0); }
};

class StandinServer final : public StandinControl {
 public:
  // The process has one, as it has one library.
  static StandinServer& of_process();

  // Counts a call; a failure when it is to fail.
  HRESULT enter(const wchar_t* name);
  bool hides(const wchar_t* name) const;
  void count_get() { ++gets_; }
  void add_fault(const std::string& what);
  void born(const char* kind) { ++held_[kind]; }
  void released(StandinCounted* object, const char* kind);

  MemoryStore& store() { return *store_; }
  DeviceTime& time() { return store_->time(); }
  StringWatch& watch() { return watch_; }
  int generation() const { return generation_; }
  AllDayEnd all_day_end() const {
    return generation_ >= 3 ? AllDayEnd::next_midnight : AllDayEnd::on_last_day;
  }
  bool answers_exceptions() const { return exceptions_; }
  const Text& task_categories() const { return task_categories_; }

  // Who is told of changes: applications that are logged on with a window.
  struct Listener {
    HWND window = nullptr;
    bool told = false;
  };
  void listen(const void* application, Listener listener) { listeners_[application] = listener; }
  void deafen(const void* application) { listeners_.erase(application); }
  void tell(StandinChange change, bool remote = false);

  // Stored, with the message to those who listen. 0: the store takes no such item.
  std::int32_t put(const AppointmentRecord& record, bool remote = false);
  bool erase(std::int32_t oid, bool remote = false);
  // Into the file that the environment names, if it names one.
  void keep();
  void note_beamed() { ++beamed_; }
  void note_sent() { ++sent_; }

  void reset() override;
  void set_generation(int generation) override { generation_ = generation; }
  void fail_call(int number, HRESULT failure) override;
  bool reached() const override { return reached_; }
  void fail_name(const wchar_t* name, HRESULT failure, int times) override;
  void answer_exceptions(bool exceptions) override { exceptions_ = exceptions; }
  void be_slow(int milliseconds) override { slow_ = milliseconds; }
  void keep_released(bool keep) override;
  int calls() const override { return calls_; }
  int calls_of(const wchar_t* name) const override;
  int gets() const override { return gets_; }
  int references() const override;
  int strings() const override { return watch_.live(); }
  int faults() const override { return faults_ + watch_.freed_twice(); }
  const char* report() override;
  void fill(int items, int series) override;
  int items() const override { return static_cast<int>(store_->contents().records.size()); }
  void remember() override { remembered_ = store_->contents(); }
  void bring_back() override { store_->put_back(remembered_); }
  int exceptions_of(int oid) const override;
  unsigned long long fingerprint() const override;
  int add_contact(const wchar_t* file_as, const wchar_t* email, const wchar_t* categories) override;
  void set_task_categories(const wchar_t* categories) override;
  bool remove_elsewhere(int oid) override { return erase(oid, true); }
  bool rename_elsewhere(int oid, const wchar_t* subject) override;
  int beamed() const override { return beamed_; }
  int sent() const override { return sent_; }

 private:
  struct NamedFault {
    HRESULT failure = S_OK;
    int times = -1;
  };

  StandinServer();
  void obey_environment();
  void bury();

  StandinClock clock_;
  std::unique_ptr<MemoryStore> store_;
  MemoryStore::Contents remembered_;
  std::string file_;
  StringWatch watch_;
  std::map<const void*, Listener> listeners_;
  int generation_ = 2;
  Text task_categories_;
  int beamed_ = 0;
  int sent_ = 0;

  int fail_at_ = 0;
  HRESULT failure_ = E_FAIL;
  bool reached_ = false;
  std::map<std::wstring, NamedFault, std::less<>> named_faults_;
  bool exceptions_ = false;
  int slow_ = 0;
  bool keeps_ = true;

  int calls_ = 0;
  int gets_ = 0;
  std::map<const wchar_t*, int> calls_of_;  // by address: names are literals of the tables
  std::map<const char*, int> held_;
  std::vector<StandinCounted*> dead_;
  int faults_ = 0;
  std::string what_;
  std::string report_;
};

}  // namespace orvello::test
