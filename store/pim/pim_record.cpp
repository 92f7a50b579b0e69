#include "store/pim/pim_record.h"

#include "store/record_rules.h"

namespace orvello {
namespace {

using Field = AppointmentField;

AppointmentFieldSet wanted_fields(bool ink) {
  auto wanted = AppointmentFieldSet::all();
  if (!ink) wanted.take_out(Field::ink);
  return wanted;
}

bool read_series(const PimObject& item, AppointmentFieldSet wanted, const PimForm& form,
                 DeviceTime& time, AppointmentRecord& record) {
  const auto pattern = item.made_by(PimName::get_recurrence_pattern, PimKind::pattern);
  if (!pattern || !*pattern) return false;
  record.pattern = read_pattern(*pattern);
  if (!record.pattern) return false;
  record.start = record.end = {};  // the pattern says
  if (!complete_record(record, time)) return false;
  auto exceptions = read_exceptions(*pattern, second_of_day(record.start), wanted, form);
  if (!exceptions) return false;
  record.exceptions = std::move(*exceptions);
  return true;
}

// One item on its way from `before` to `record`.
class RecordWriting {
 public:
  RecordWriting(const PimObject& item, const AppointmentRecord* before,
                const AppointmentRecord& record, const PimForm& form, int& saves)
      : item_(item), before_(before), record_(record), form_(form), saves_(saves) {}
  bool run() {
    return write_own_fields() && write_own_recipients() && write_recurrence() && save() &&
           (!record_.recurring() || write_exceptions(item_, exceptions_now_, record_, form_));
  }

 private:
  bool was_recurring() const { return before_ && before_->recurring(); }
  bool save() { return item_.call(PimName::save) && ++saves_ > 0; }
  bool write_own_fields();
  bool write_own_recipients();
  bool write_recurrence();

  const PimObject& item_;
  const AppointmentRecord* before_;
  const AppointmentRecord& record_;
  const PimForm& form_;
  int& saves_;
  std::vector<AppointmentException> exceptions_now_;
};

bool RecordWriting::write_own_fields() {
  const AppointmentFields wanted = timed_fields(record_);
  auto named = differing_fields(before_ ? timed_fields(*before_) : AppointmentFields(), wanted);
  if (!before_) {
    const bool notes = named.has(Field::body), ink = named.has(Field::ink);
    named = AppointmentFieldSet::all();
    if (!notes) named.take_out(Field::body);
    if (!ink) named.take_out(Field::ink);
  }
  const bool other_times = named.has(Field::start) || named.has(Field::end) ||
                           named.has(Field::all_day) || was_recurring();
  for (const Field field : {Field::start, Field::end}) {
    named.take_out(field);
    if (!record_.recurring() && other_times) named.add(field);
  }
  if (!form_.ink) named.take_out(Field::ink);
  return write_fields(item_, wanted, named, form_);
}

bool RecordWriting::write_own_recipients() {
  const bool same =
      before_ ? before_->recipients == record_.recipients : record_.recipients.empty();
  return same || write_recipients(item_, record_.recipients);
}

// The platform takes no exception back, and what becomes of them under another pattern it does not
// say: then the series is made anew.
bool RecordWriting::write_recurrence() {
  if (!record_.recurring())
    return !was_recurring() || item_.call(PimName::clear_recurrence_pattern);
  bool anew = !was_recurring() || *before_->pattern != *record_.pattern ||
              before_->fields.all_day != record_.fields.all_day;
  if (was_recurring() && !before_->exceptions.empty() &&
      (anew || !can_follow_exceptions(before_->exceptions, record_.exceptions))) {
    anew = true;
    if (!item_.call(PimName::clear_recurrence_pattern) || !save()) return false;
  }
  if (!anew) {
    exceptions_now_ = before_->exceptions;
    return true;
  }
  const auto pattern = item_.made_by(PimName::get_recurrence_pattern, PimKind::pattern);
  return pattern && *pattern &&
         write_pattern(*pattern, *record_.pattern, record_.fields.all_day, form_);
}

}  // namespace

std::optional<AppointmentRecord> read_record(const PimObject& item, std::int32_t oid,
                                             const std::string& uid, bool ink, const PimForm& form,
                                             DeviceTime& time) {
  AppointmentRecord record;
  record.oid = oid;
  record.uid = uid;
  const auto wanted = wanted_fields(ink);
  const auto recurring = item.flag(PimName::is_recurring);
  if (!recurring || !read_fields(item, wanted, form, record.fields)) return std::nullopt;
  auto recipients = read_recipients(item);
  if (!recipients) return std::nullopt;
  record.recipients = std::move(*recipients);
  record.start = to_seconds(record.fields.start);
  record.end = to_seconds(record.fields.end);
  if (*recurring && !read_series(item, wanted, form, time, record)) return std::nullopt;
  if (!complete_record(record, time) || !localize_record(record, time)) return std::nullopt;
  return record;
}

bool write_record(const PimObject& item, const AppointmentRecord* before,
                  const AppointmentRecord& record, const PimForm& form, int& saves) {
  return RecordWriting(item, before, record, form, saves).run();
}

}  // namespace orvello
