#include "tests/win32/standin/standin_server.h"

#include <cstdio>
#include <cstdlib>

#include "store/record_rules.h"
#include "tests/win32/standin/standin_file.h"
#include "tests/win32/standin/standin_object.h"

namespace orvello::test {
namespace {

constexpr UINT kFirstMessage = 0x8100;  // PIM_ITEM_CREATED_LOCAL

// FNV-1a over what a person would notice.
class Fingerprint {
 public:
  void add(TextView text) {
    for (const char16_t unit : text) add(static_cast<std::int64_t>(unit));
    add(static_cast<std::int64_t>(text.size()));
  }
  void add(std::int64_t number) {
    hash_ = (hash_ ^ static_cast<unsigned long long>(number)) * 1099511628211ULL;
  }
  void add(const AppointmentFields& fields) {
    for (const Text* text : {&fields.subject, &fields.location, &fields.categories, &fields.body})
      add(*text);
    for (const char byte : fields.body_ink) add(static_cast<std::int64_t>(byte));
    add(fields.all_day + 2 * fields.reminder_set + 4 * fields.sensitivity +
        16 * static_cast<int>(fields.busy_status));
    add(static_cast<std::int64_t>(fields.reminder_minutes));
  }
  void add(const std::vector<StoreRecipient>& recipients) {
    for (const StoreRecipient& one : recipients) {
      add(one.name);
      add(one.address);
    }
    add(static_cast<std::int64_t>(recipients.size()));
  }
  unsigned long long value() const { return hash_; }

 private:
  unsigned long long hash_ = 14695981039346656037ULL;
};

}  // namespace

StandinServer& StandinServer::of_process() {
  static StandinServer server;
  return server;
}

StandinServer::StandinServer() {
  watch_.begin();
  reset();
  obey_environment();
}

// For a program that knows nothing of tests: where the store is kept from one start to the next,
// the call that fails, and how slow all are.
void StandinServer::obey_environment() {
  if (const char* file = std::getenv("PIMSTORE_FILE")) {
    file_ = file;
    MemoryStore::Contents contents;
    if (load_standin(file_, contents)) store_->put_back(std::move(contents));
    keep_released(false);
  }
  if (const char* slow = std::getenv("PIMSTORE_SLOW")) be_slow(std::atoi(slow));
  if (const char* name = std::getenv("PIMSTORE_FAIL"))
    fail_name(std::wstring(name, name + std::string_view(name).size()).c_str(), E_FAIL, -1);
}

void StandinServer::keep() {
  if (!file_.empty() && !save_standin(file_, store_->contents()))
    add_fault(file_ + " cannot be written");
}

void StandinServer::reset() {
  bury();
  watch_.forget();
  store_ = std::make_unique<MemoryStore>(clock_);
  store_->keeps_all = false;
  listeners_.clear();
  generation_ = 2;
  task_categories_.clear();
  beamed_ = sent_ = fail_at_ = slow_ = calls_ = gets_ = faults_ = 0;
  reached_ = exceptions_ = false;
  named_faults_.clear();
  calls_of_.clear();
  held_.clear();
  what_.clear();
}

HRESULT StandinServer::enter(const wchar_t* name) {
  ++calls_;
  ++calls_of_[name];
  if (slow_ > 0) Sleep(static_cast<DWORD>(slow_));
  if (fail_at_ > 0 && --fail_at_ == 0) {
    reached_ = true;
    what_ += "failed at " + to_utf8(Text(name, name + lstrlenW(name))) + "\n";
    return failure_;
  }
  const auto named = named_faults_.find(std::wstring_view(name));
  if (named == named_faults_.end() || named->second.times == 0) return S_OK;
  if (named->second.times > 0) --named->second.times;
  return named->second.failure;
}

void StandinServer::add_fault(const std::string& what) {
  ++faults_;
  if (what_.size() < 1000) what_ += what + "\n";
}

void StandinServer::released(StandinCounted* object, const char* kind) {
  --held_[kind];
  if (keeps_)
    dead_.push_back(object);
  else
    delete object;
}

void StandinServer::bury() {
  for (StandinCounted* object : std::exchange(dead_, {})) delete object;
}

void StandinServer::keep_released(bool keep) {
  keeps_ = keep;
  watch_.keep_released(keep);
  if (!keep) bury();
}

void StandinServer::tell(StandinChange change, bool remote) {
  const UINT message = kFirstMessage + static_cast<UINT>(change) +
                       (remote ? static_cast<UINT>(StandinChange::remote) : 0);
  for (const auto& [application, listener] : listeners_)
    if (listener.window && (listener.told || generation_ < 3))
      PostMessageW(listener.window, message, 0, 0);
}

std::int32_t StandinServer::put(const AppointmentRecord& record, bool remote) {
  const std::int32_t oid = store_->put(record);
  if (oid == 0) return 0;
  keep();
  tell(record.oid == 0 ? StandinChange::created : StandinChange::changed, remote);
  return oid;
}

bool StandinServer::erase(std::int32_t oid, bool remote) {
  if (!store_->erase(oid)) return false;
  keep();
  tell(StandinChange::deleted, remote);
  return true;
}

void StandinServer::fail_call(int number, HRESULT failure) {
  fail_at_ = number;
  failure_ = failure;
  reached_ = false;
}

void StandinServer::fail_name(const wchar_t* name, HRESULT failure, int times) {
  named_faults_[name] = {failure, FAILED(failure) ? times : 0};
}

bool StandinServer::hides(const wchar_t* name) const {
  const auto named = named_faults_.find(std::wstring_view(name));
  return named != named_faults_.end() && named->second.failure == DISP_E_UNKNOWNNAME;
}

int StandinServer::calls_of(const wchar_t* name) const {
  int count = 0;
  for (const auto& [known, calls] : calls_of_)
    if (lstrcmpW(known, name) == 0) count += calls;
  return count;
}

int StandinServer::references() const {
  int all = 0;
  for (const auto& [kind, count] : held_) all += count;
  return all;
}

const char* StandinServer::report() {
  report_ = what_;
  for (const auto& [kind, count] : held_)
    if (count != 0) report_ += std::to_string(count) + " times " + kind + " held\n";
  if (strings() != 0) report_ += std::to_string(strings()) + " strings not freed\n";
  if (watch_.freed_twice() != 0)
    report_ += std::to_string(watch_.freed_twice()) + " strings freed twice\n";
  return report_.c_str();
}

// Beside the store's own ways, which look for a UID among all items each time.
void StandinServer::fill(int items, int series) {
  MemoryStore::Contents contents = store_->contents();
  constexpr std::int64_t kFirst = 45292;  // 2024
  constexpr std::int64_t kDays = 5 * 365;
  for (int i = 0; i < items; ++i) {
    AppointmentRecord record;
    record.uid = std::to_string(i);
    record.fields.subject = u"Appointment " + to_utf16(std::to_string(i));
    record.fields.location = u"Room " + to_utf16(std::to_string(i % 40));
    record.fields.categories = i % 3 == 0 ? u"Work" : i % 3 == 1 ? u"Home" : u"";
    record.fields.body = i % 5 == 0 ? u"Notes of some length, as people write them." : u"";
    record.fields.reminder_set = i % 2 == 0;
    record.start = midnight_of(Day(static_cast<std::int32_t>(kFirst + i * 7919LL % kDays))) +
                   (8 + i % 10) * 3600;
    record.end = record.start + 1800 * (1 + i % 4);
    if (i < series) {  // ten weeks each
      RecurrencePattern pattern;
      pattern.type = RecurrenceType::weekly;
      pattern.pattern_start_date = to_calendar_date(day_of(record.start));
      pattern.day_of_week_mask = 1 << (i % 7);
      pattern.start_time = (8 + i % 10) / 24.0;
      pattern.end_time = pattern.start_time + (1 + i % 4) / 48.0;
      pattern.no_end_date = false;
      pattern.occurrences = 10;
      record.pattern = pattern;
      record.start = record.end = LocalSeconds();
    }
    if (!complete_record(record, time())) continue;
    record.oid = contents.next_oid++;
    contents.records.emplace(record.oid, std::move(record));
  }
  store_->put_back(std::move(contents));
}

int StandinServer::exceptions_of(int oid) const {
  const auto found = store_->contents().records.find(oid);
  return found == store_->contents().records.end()
             ? -1
             : static_cast<int>(found->second.exceptions.size());
}

unsigned long long StandinServer::fingerprint() const {
  Fingerprint print;
  for (const auto& [oid, record] : store_->contents().records) {
    print.add(static_cast<std::int64_t>(oid));
    print.add(record.fields);
    print.add(record.start.count());
    print.add(record.end.count());
    print.add(record.recipients);
    if (record.pattern) {
      const RecurrencePattern& pattern = *record.pattern;
      print.add(static_cast<std::int64_t>(pattern.type));
      for (const int number : {pattern.interval, pattern.day_of_week_mask, pattern.day_of_month,
                               pattern.instance, pattern.month_of_year, pattern.duration})
        print.add(static_cast<std::int64_t>(number));
      print.add(static_cast<std::int64_t>(pattern.pattern_end_date));
    }
    for (const AppointmentException& exception : record.exceptions) {
      print.add(exception.original_start.count());
      print.add(static_cast<std::int64_t>(exception.deleted));
      if (exception.deleted) continue;
      print.add(exception.fields);
      print.add(exception.start.count());
      print.add(exception.end.count());
    }
  }
  return print.value();
}

int StandinServer::add_contact(const wchar_t* file_as, const wchar_t* email,
                               const wchar_t* categories) {
  StoreContact contact;
  contact.file_as = Text(file_as, file_as + lstrlenW(file_as));
  contact.email[0] = Text(email, email + lstrlenW(email));
  contact.categories = Text(categories, categories + lstrlenW(categories));
  return store_->put_contact(contact);
}

void StandinServer::set_task_categories(const wchar_t* categories) {
  store_->set_category_text(kFolderTasks, Text(categories, categories + lstrlenW(categories)));
}

bool StandinServer::rename_elsewhere(int oid, const wchar_t* subject) {
  const auto found = store_->contents().records.find(oid);
  if (found == store_->contents().records.end()) return false;
  AppointmentRecord record = found->second;
  record.fields.subject = Text(subject, subject + lstrlenW(subject));
  return put(record, true) != 0;
}

}  // namespace orvello::test
