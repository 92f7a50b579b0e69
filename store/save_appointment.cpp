#include "store/save_appointment.h"

#include <optional>
#include <vector>

#include "ports/messages.h"
#include "store/form_parts.h"
#include "store/item_operations.h"
#include "store/meant_appointment.h"
#include "store/wait_cursor.h"

namespace orvello {
namespace {

using MeantLack = MeantAppointment::Lack;
constexpr TextView kSaveError = u"Error";
constexpr int kMostRounds = 5;

// In a transaction nobody is told anything: others wait for its end. It was told before.
class SilentBoxes : public MessageBoxes {
 public:
  BoxAnswer show(TextView, TextView, BoxIcon, BoxButtons, bool) override { return BoxAnswer::no; }
  void beep(Beep) override {}
  Text language() const override { return {}; }
};

// One run of save_appointment. What is asked of the person is asked before the transaction, which
// begins by looking whether the store still has what they were asked about.
class AppointmentSave {
 public:
  AppointmentSave(const OperationContext& context, const AppointmentForm& opened,
                  AppointmentForm& form)
      : c_(context), opened_(opened), form_(form) {}
  SaveResult run();

 private:
  enum class Step { done, changed, lacking, no_pattern, failed };

  bool is_new() const { return form_.choice.oid == 0; }
  bool one() const { return !is_new() && form_.choice.scope == EditScope::occurrence; }
  MeantAppointment find(MessageBoxes& boxes);
  bool look(MeantAppointment& meant, AppointmentForm& stored, MessageBoxes& boxes);
  SaveResult tell_lack(const MeantAppointment& meant);
  SaveResult tell_failure();
  bool may_overwrite(const AppointmentForm& stored);
  std::optional<int> lost_changes(Appointment& item);
  SaveResult prepare();
  bool asks_to_inform();
  Step write(EditStep& step);
  Step write_parts(MeantAppointment& meant);
  void write_fields(Appointment& item);
  bool write_recurrence(Appointment& item);
  SaveResult tell(Step result, EditStep step);
  void send(const std::vector<std::int32_t>& oids);

  const OperationContext& c_;
  const AppointmentForm& opened_;
  AppointmentForm& form_;
  AppointmentForm stored_;  // as the store had it when the person was asked last
  FormPartSet parts_;       // to be written
  bool ink_refused_ = false;
};

MeantAppointment AppointmentSave::find(MessageBoxes& boxes) {
  if (!is_new()) return meant_appointment(c_.session, boxes, form_.choice);
  MeantAppointment made;
  made.item = c_.session.CreateAppointment();
  if (!made.item) made.lack = MeantLack::item;
  return made;
}

// Finds it, and reads it as a form. False when it is not there or could not be read.
bool AppointmentSave::look(MeantAppointment& meant, AppointmentForm& stored, MessageBoxes& boxes) {
  meant = find(boxes);
  stored = AppointmentForm();
  stored.choice = form_.choice;
  return meant.lack == MeantLack::none &&
         (is_new() || fill_form(c_.session.app()->all_day_end(), meant, stored));
}

SaveResult AppointmentSave::tell_failure() {
  c_.boxes.beep();
  c_.boxes.show(with_reason(c_.session, load_string(StringId::box_not_saved, c_.boxes)),
                load_string(StringId::box_error, c_.boxes));
  return SaveResult::not_saved;
}

SaveResult AppointmentSave::tell_lack(const MeantAppointment& meant) {
  const Text gone = load_string(StringId::box_gone, c_.boxes);
  const bool known = c_.session.problem().empty() && c_.session.logged_on();
  if (meant.lack == MeantLack::item && known && !is_new()) {
    c_.boxes.show(gone, load_string(StringId::box_error, c_.boxes));
    return SaveResult::gone;
  }
  if (meant.lack == MeantLack::occurrence) {
    c_.boxes.show(u"Failed getOccurrence()\n" + gone, kSaveError, BoxIcon::warning);
    return SaveResult::gone;
  }
  if (meant.lack == MeantLack::none || meant.lack == MeantLack::item) return tell_failure();
  c_.boxes.show(
      with_reason(c_.session, meant.lack == MeantLack::pattern ? u"Failed GetRecurrencePattern"
                                                               : u"Failed getOccurrence()"),
      kSaveError, BoxIcon::warning);
  return SaveResult::not_saved;
}

// What both changed, and not alike.
bool AppointmentSave::may_overwrite(const AppointmentForm& stored) {
  const auto both = differing_parts(opened_, stored) & parts_ & differing_parts(form_, stored);
  if (both.empty()) return true;
  const Text question =
      format(load_string(StringId::box_overwrite, c_.boxes), names_of(both, language_of(c_.boxes)));
  return c_.boxes.show(question, load_string(StringId::box_warning, c_.boxes), BoxIcon::warning,
                       BoxButtons::yes_no_losing) == BoxAnswer::yes;
}

// How many changed occurrences go with the recurrence that they have. Nothing: failure.
std::optional<int> AppointmentSave::lost_changes(Appointment& item) {
  if (one() || !parts_.has(FormPart::recurrence) || !item.is_recurring()) return 0;
  const auto pattern = item.pattern();
  if (!pattern) return std::nullopt;
  if (form_.recurring) return pattern->lost_changes(saved_pattern(form_));
  const auto count = pattern->exception_count();
  int changed = 0;
  for (int index = 1; index <= count.value_or(0); ++index) {
    const auto exception = pattern->exception(index);
    if (!exception) return std::nullopt;
    changed += exception->deleted ? 0 : 1;
  }
  return count ? std::optional(changed) : std::nullopt;
}

// Reads and asks; `saved` when nothing stands against it.
SaveResult AppointmentSave::prepare() {
  MeantAppointment meant;
  std::optional<int> lost;
  {
    const WaitCursor waiting(c_.window);
    parts_ = is_new() ? FormPartSet::all() : differing_parts(opened_, form_);
    if (look(meant, stored_, c_.boxes)) lost = lost_changes(meant.meant());
  }
  if (!lost) return tell_lack(meant);
  if (!is_new() && !may_overwrite(stored_)) return SaveResult::not_saved;
  if (*lost == 0) return SaveResult::saved;
  const Text question = load_count(StringId::box_lost_changes, *lost, language_of(c_.boxes));
  return c_.boxes.show(question, load_string(StringId::box_warning, c_.boxes), BoxIcon::warning,
                       BoxButtons::yes_no_losing) == BoxAnswer::yes
             ? SaveResult::saved
             : SaveResult::not_saved;
}

bool AppointmentSave::asks_to_inform() {
  return !one() && !form_.attendees.empty() &&
         c_.boxes.show(u"Inform attendees about this appointment change?",
                       u"Appointment Notification", BoxIcon::none,
                       BoxButtons::yes_no) == BoxAnswer::yes;
}

// False when its pattern could not be had.
bool AppointmentSave::write_recurrence(Appointment& item) {
  if (!form_.recurring) {
    const bool touched = parts_.has(FormPart::recurrence) || parts_.has(FormPart::times);
    if (touched && item.is_recurring()) item.clear_pattern();
    return true;
  }
  if (!parts_.has(FormPart::recurrence) || !has_pattern(form_)) return true;
  const auto pattern = item.pattern();
  return pattern && pattern->set_fields(saved_pattern(form_));
}

void AppointmentSave::write_fields(Appointment& item) {
  const auto fields = fields_of(form_, c_.session.app()->all_day_end());
  auto named = fields_in(parts_, form_);
  // Without ink on either side the text alone is the notes.
  if (form_.ink.empty() && stored_.ink.empty()) named.take_out(AppointmentField::ink);
  const auto refused = item.write(fields, named);
  ink_refused_ = refused.has(AppointmentField::ink) || refused.has(AppointmentField::body);
  // The words need not be lost with ink that is too long, or that the store does not take.
  const bool ink_left = ink_refused_ || form_.ink.size() > kMostInk;
  if (ink_left && parts_.has(FormPart::notes) && stored_.ink.empty())
    ink_refused_ = !item.write(fields, {AppointmentField::body}).empty() || ink_refused_;
}

AppointmentSave::Step AppointmentSave::write_parts(MeantAppointment& meant) {
  Appointment& item = meant.meant();
  write_fields(item);
  if (one()) return item.save() ? Step::done : Step::failed;
  if (parts_.has(FormPart::attendees)) {
    const auto stored = item.recipients();
    if (!stored) return Step::failed;
    item.set_recipients(whole_recipients(form_.attendees, *stored));
  }
  if (!write_recurrence(item)) return Step::no_pattern;
  return item.save() ? Step::done : Step::failed;
}

// In one transaction. `changed`: not what the person was asked about.
AppointmentSave::Step AppointmentSave::write(EditStep& step) {
  if (parts_.empty()) return Step::done;
  Step result = Step::failed;
  if (!c_.session.app()) return result;
  MeantAppointment meant;
  SilentBoxes silent;
  const bool done = c_.session.app()->all_or_nothing([&] {
    AppointmentForm stored;
    result = Step::lacking;
    if (!look(meant, stored, silent)) return false;
    result = Step::changed;
    if (stored != stored_) return false;
    step.before(*meant.item);
    result = write_parts(meant);
    if (result != Step::done) return false;
    step.made(meant.meant().oid());
    step.finish(c_.session);
    // The item too, which has nothing of its own to be saved here.
    return !one() || meant.item->save();
  });
  if (!done) return result == Step::done ? Step::failed : result;
  form_.choice.oid = meant.meant().oid();
  if (!one()) form_.choice.scope = EditScope::series;
  return Step::done;
}

// As they were saved: only then they have all that a request says. It may ask, and may take its
// time while the window is drawn: no wait cursor.
void AppointmentSave::send(const std::vector<std::int32_t>& oids) {
  for (const std::int32_t oid : oids) {
    const auto item = c_.session.ItemFromOid(oid);
    const auto result = item ? item->send() : SendResult::failed;
    if (result == SendResult::sent || result == SendResult::no_recipients) continue;
    c_.boxes.show(with_reason(c_.session, load_string(StringId::box_not_informed, c_.boxes)),
                  kSaveError, BoxIcon::warning);
    return;
  }
}

SaveResult AppointmentSave::tell(Step result, EditStep step) {
  if (result == Step::no_pattern) {
    c_.boxes.show(with_reason(c_.session, u"Could not get recurrence pattern!"), kSaveError,
                  BoxIcon::warning);
    return SaveResult::not_saved;
  }
  c_.window.post({kMessageRefresh, 0, {}, 0});
  if (result != Step::done) {
    if (one()) c_.files.append_diagnostic_line(u"Could not save single occurrence appt!");
    return tell_failure();
  }
  if (!parts_.empty()) c_.history.keep(std::move(step));
  if (ink_refused_) c_.boxes.show(u"Failed to save BodyInk!", kSaveError);
  return SaveResult::saved;
}

SaveResult AppointmentSave::run() {
  std::optional<bool> inform;
  const std::int32_t opened_oid = form_.choice.oid;
  for (int round = 1;; ++round) {
    const SaveResult prepared = prepare();
    if (prepared != SaveResult::saved) return prepared;
    if (!inform) inform = asks_to_inform();
    EditStep step;
    const Step result = [&] {
      const WaitCursor waiting(c_.window);
      return write(step);
    }();
    if ((result == Step::changed || result == Step::lacking) && round < kMostRounds) continue;
    const SaveResult told = tell(result, std::move(step));
    if (told != SaveResult::saved || !*inform) return told;
    // A series that was divided ends earlier for them, too.
    const std::int32_t saved_oid = form_.choice.oid;
    send(opened_oid == 0 || opened_oid == saved_oid ? std::vector{saved_oid}
                                                    : std::vector{opened_oid, saved_oid});
    return told;
  }
}

}  // namespace

SaveResult save_appointment(const OperationContext& context, const AppointmentForm& opened,
                            AppointmentForm& form) {
  return AppointmentSave(context, opened, form).run();
}

}  // namespace orvello
