// A thousand scripts of edits at random, each of which must leave the store as it leaves a plain
// list of occurrences; then all of it is undone and done again.
#include <random>

#include "hosts/headless/headless_ports.h"
#include "hosts/headless/headless_window.h"
#include "hosts/headless/memory_files.h"
#include "hosts/headless/memory_store.h"
#include "store/item_operations.h"
#include "store/save_appointment.h"
#include "tests/contract/calendar_store_contract.h"
#include "tests/contract/plain_calendar.h"

namespace orvello::test {
namespace {

constexpr int kActions = 14;

// One script: the store, edited as a person would, and the plain calendar beside it.
class EditScript {
 public:
  EditScript(RecordCalendarStore& store, int seed)
      : random_(static_cast<unsigned>(seed)), store_(store), session_(store, boxes_) {
    EXPECT_TRUE(session_.Open(nullptr));
  }
  // False at the first difference, which `trouble` then tells.
  bool run(bool looks_after_each);
  std::string trouble;

 private:
  struct Pick {
    std::int32_t oid = 0;
    std::size_t index = 0;
    CalendarDate start = kNoDate;
  };

  int any(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  std::string any_text(const char* kind) { return kind + std::to_string(++texts_); }
  static CalendarDate moment(int minutes) {
    return to_calendar_date(midnight_of(plain_day(0)) + std::int64_t{minutes} * 60);
  }
  bool pick(Pick& picked, bool of_series);
  RecurrencePattern any_pattern(int from);
  void say(const std::string& line) { script_ += line + "\n"; }

  bool act();
  bool create();
  bool edit_whole(Pick picked, EditScope scope);
  bool edit_occurrence(const Pick& picked);
  bool remove(const Pick& picked);
  bool carry(const Pick& picked, bool move);
  bool undo_or_redo(bool undo);
  // Changes the form and the plain item alike; how many changed occurrences go.
  int change(AppointmentForm& form, PlainItem& item);
  void change_times(AppointmentForm& form, PlainItem& item);
  int change_recurrence(AppointmentForm& form, PlainItem& item);
  bool save(const AppointmentForm& opened, AppointmentForm& form, int lost, bool accepts);
  bool open(const EditorChoice& choice, AppointmentForm& form);
  void done(PlainCalendar next);
  bool same();
  bool fail(const std::string& what) {
    if (trouble.empty()) trouble = what + "\nafter:\n" + script_;
    return false;
  }

  std::mt19937 random_;
  RecordCalendarStore& store_;
  HeadlessBoxes boxes_;
  HeadlessWindow window_;
  MemoryFiles files_;
  StoreSession session_;
  EditHistory history_{session_};
  OperationContext context_{session_, boxes_, window_, files_, history_};
  PlainCalendar now_;
  std::vector<PlainCalendar> before_, undone_;
  std::string script_;
  int texts_ = 0;
};

bool EditScript::pick(Pick& picked, bool of_series) {
  std::vector<Pick> all;
  for (const auto& [oid, item] : now_) {
    if (of_series && !item.series) continue;
    const auto indices = item.pickable();
    if (indices.empty()) continue;
    const std::size_t index = indices[static_cast<std::size_t>(
        any(std::min(static_cast<int>(indices.size()), any(2) == 0 ? 5 : kPlainDays)))];
    all.push_back({oid, index, moment(item.occurrences[index].start)});
  }
  if (all.empty()) return false;
  picked = all[static_cast<std::size_t>(any(static_cast<int>(all.size())))];
  return true;
}

RecurrencePattern EditScript::any_pattern(int from) {
  constexpr RecurrenceType kTypes[] = {RecurrenceType::daily,     RecurrenceType::weekly,
                                       RecurrenceType::weekly,    RecurrenceType::monthly,
                                       RecurrenceType::month_nth, RecurrenceType::yearly};
  RecurrencePattern pattern;
  pattern.type = kTypes[any(6)];
  pattern.pattern_start_date = to_calendar_date(plain_day(from));
  pattern.interval = pattern.type == RecurrenceType::yearly  ? 1
                     : pattern.type == RecurrenceType::daily ? 3 + any(5)
                                                             : 1 + any(3);
  pattern.day_of_week_mask = pattern.type == RecurrenceType::weekly ? 1 + any(127) : 1 << any(7);
  pattern.day_of_month = 1 + any(28);
  pattern.month_of_year = 1 + any(12);
  if (pattern.type == RecurrenceType::month_nth) pattern.instance = 1 + any(5);
  const bool close =
      pattern.type == RecurrenceType::daily || pattern.type == RecurrenceType::weekly;
  if (const int end = any(3); end == 0) {
    pattern.no_end_date = false;
    pattern.occurrences = 2 + any(20);
  } else if (end == 1 && close) {
    pattern.no_end_date = false;
    pattern.pattern_end_date = to_calendar_date(plain_day(from + 30 + any(200)));
  }
  return pattern;
}

bool EditScript::open(const EditorChoice& choice, AppointmentForm& form) {
  form.choice = choice;
  return read_appointment(context_, form) == FormRead::read || fail("could not be read");
}

bool EditScript::save(const AppointmentForm& opened, AppointmentForm& form, int lost,
                      bool accepts) {
  boxes_.shown.clear();
  boxes_.answers = {accepts ? BoxAnswer::yes : BoxAnswer::no};
  const SaveResult result = save_appointment(context_, opened, form);
  boxes_.answers.clear();
  const std::string asked = boxes_.shown.empty() ? "" : to_utf8(boxes_.shown[0].text);
  if (asked.empty() != (lost == 0) || (lost > 0 && std::stoi(asked) != lost))
    return fail("asked \"" + asked + "\", but " + std::to_string(lost) + " go");
  const bool saves = lost == 0 || accepts;
  return (result == SaveResult::saved) == saves || fail("saved, or not, otherwise");
}

void EditScript::change_times(AppointmentForm& form, PlainItem& item) {
  const int start = any(96) * 15, minutes = any(4) == 0 ? 1500 + any(20) * 15 : 15 + any(20) * 15;
  say("  at " + std::to_string(start) + " for " + std::to_string(minutes));
  item.set_times(start, minutes);
  form.start_time = start / double{kDayMinutes};
  form.end_time = (start + minutes) % kDayMinutes / double{kDayMinutes};
  form.end_date = form.start_date + (start + minutes) / kDayMinutes;
  form.pattern.duration = minutes;
}

int EditScript::change_recurrence(AppointmentForm& form, PlainItem& item) {
  if (item.series && any(4) == 0) {
    const int lost = item.changed_off({});
    say("  once");
    item.series = form.recurring = false;
    item.set_days({item.first_day});
    form.end_date = form.start_date + (item.start_minute + item.minutes) / kDayMinutes;
    return lost;
  }
  const int duration = item.minutes;
  RecurrencePattern pattern = any_pattern(item.first_day);
  const auto days = plain_days(pattern, item.first_day);
  if (days.empty()) return 0;
  say("  type " + std::to_string(static_cast<int>(pattern.type)) + " every " +
      std::to_string(pattern.interval) + " mask " + std::to_string(pattern.day_of_week_mask) +
      " day " + std::to_string(pattern.day_of_month) + " instance " +
      std::to_string(pattern.instance) + " month " + std::to_string(pattern.month_of_year) +
      " count " + std::to_string(pattern.occurrences) + " end " +
      std::to_string(whole_day(pattern.pattern_end_date) - plain_day(0)));
  const int lost = item.series ? item.changed_off(days) : 0;
  item.set_days(days);
  item.series = form.recurring = true;
  pattern.duration = duration;
  form.pattern = pattern;
  form.end_date = kNoDate;
  return lost;
}

int EditScript::change(AppointmentForm& form, PlainItem& item) {
  const int kinds = 1 + any(7);
  if (kinds & 1) {
    item.set_texts(any_text("s"), any(2) == 0 ? item.location : any_text("l"));
    say("  texts " + item.subject + " " + item.location);
    form.subject = to_utf16(item.subject);
    form.location = to_utf16(item.location);
  }
  if (kinds & 2 && !item.all_day) change_times(form, item);
  return kinds & 4 ? change_recurrence(form, item) : 0;
}

bool EditScript::create() {
  PlainItem item;
  AppointmentForm form;
  item.first_day = any(250);
  item.all_day = form.all_day = any(4) == 0;
  say("create on " + std::to_string(item.first_day) + (item.all_day ? " all day" : ""));
  form.start_date = form.end_date = to_calendar_date(plain_day(item.first_day));
  if (item.all_day) {
    item.minutes = (1 + any(3)) * kDayMinutes - 1;
    form.end_date += item.minutes / kDayMinutes;
    form.pattern.duration = item.minutes;
  } else {
    change_times(form, item);
  }
  item.set_days({item.first_day});
  change(form, item);
  if (!save(AppointmentForm(), form, 0, true)) return false;
  PlainCalendar next = now_;
  if (!next.emplace(form.choice.oid, item).second) return fail("an id twice");
  done(std::move(next));
  return true;
}

// Of a series, or of one of its occurrences and all that follow.
bool EditScript::edit_whole(Pick picked, EditScope scope) {
  PlainCalendar next = now_;
  PlainItem& old = next.at(picked.oid);
  const int day = old.occurrences[picked.index].day;
  const bool splits = scope == EditScope::following && old.shows_before(day);
  say("edit " + std::to_string(picked.oid) + (splits ? " from " + std::to_string(day) : ""));
  AppointmentForm form;
  if (!open({picked.oid, picked.start, scope}, form)) return false;
  PlainItem item = splits ? old.split(day) : old;
  if (item.series && form.pattern.pattern_start_date != to_calendar_date(plain_day(item.first_day)))
    return fail("the pattern begins on another day");
  const AppointmentForm opened = form;
  const int lost = change(form, item);
  if (form == opened) return true;
  const bool accepts = any(5) > 0;
  if (!save(opened, form, lost, accepts)) return false;
  if (lost > 0 && !accepts) return true;
  next.insert_or_assign(form.choice.oid, item);
  done(std::move(next));
  return true;
}

bool EditScript::edit_occurrence(const Pick& picked) {
  PlainCalendar next = now_;
  PlainItem& item = next.at(picked.oid);
  PlainOccurrence& one = item.occurrences[picked.index];
  say("occurrence " + std::to_string(picked.oid) + " of " + std::to_string(one.day));
  AppointmentForm form;
  if (!open({picked.oid, picked.start, EditScope::occurrence}, form)) return false;
  const AppointmentForm opened = form;
  if (any(2) == 0 || item.all_day) {
    one.subject = any_text("o");
    form.subject = to_utf16(one.subject);
  } else {
    const int length = 15 + any(30) * 15;
    one.start = one.start - one.start % kDayMinutes + any(96) * 15;
    one.end = one.start + length;
    say("  at " + std::to_string(one.start) + " for " + std::to_string(length));
    form.start_time = one.start % kDayMinutes / double{kDayMinutes};
    form.end_time = one.end % kDayMinutes / double{kDayMinutes};
    form.end_date = form.start_date + one.end / kDayMinutes - one.start / kDayMinutes;
  }
  one.changed = true;
  const PlainOccurrence& was = now_.at(picked.oid).occurrences[picked.index];
  if (one.subject == was.subject && one.start == was.start && one.end == was.end) return true;
  if (!save(opened, form, 0, true)) return false;
  done(std::move(next));
  return true;
}

bool EditScript::remove(const Pick& picked) {
  PlainCalendar next = now_;
  PlainItem& item = next.at(picked.oid);
  PlainOccurrence& one = item.occurrences[picked.index];
  const int mode = kDeleteOccurrence + any(8) % 3;
  say("delete " + std::to_string(picked.oid) + " mode " + std::to_string(mode) + " of " +
      std::to_string(one.day));
  const bool all = !item.series || mode == kDeleteSeries ||
                   (mode == kDeleteFollowing && !item.shows_before(one.day));
  if (all)
    next.erase(picked.oid);
  else if (mode == kDeleteFollowing)
    item.split(one.day);
  else
    one.deleted = true;
  boxes_.shown.clear();
  delete_appointment(context_, picked.oid, mode, picked.start);
  if (!boxes_.shown.empty()) return fail(to_utf8(boxes_.shown[0].text));
  done(std::move(next));
  return true;
}

bool EditScript::carry(const Pick& picked, bool move) {
  PlainCalendar next = now_;
  PlainItem& item = next.at(picked.oid);
  PlainOccurrence& one = item.occurrences[picked.index];
  const int from = one.start / kDayMinutes;
  const int to = std::clamp(from + any(40) - 20, 0, kPlainDays - 30);
  if (to == from) return true;
  say((move ? "move " : "copy ") + std::to_string(picked.oid) + " from " + std::to_string(from) +
      " to " + std::to_string(to));
  const bool worked = move ? move_appointment(context_, picked.oid, picked.start, plain_day(to))
                           : copy_appointment(context_, picked.oid, picked.start, plain_day(to));
  if (!worked) return fail("not carried");
  PlainOccurrence carried = one;
  carried.start += (to - from) * kDayMinutes;
  carried.end += (to - from) * kDayMinutes;
  if (move) {
    carried.changed = item.series;
    if (!item.series) item.first_day = carried.day = to;
    one = carried;
  } else {
    PlainItem copy{carried.subject,
                   carried.location,
                   false,
                   item.all_day,
                   to,
                   carried.start % kDayMinutes,
                   carried.end - carried.start,
                   {}};
    copy.set_days({to});
    const auto oids = store_.oids(std::nullopt, std::nullopt);
    if (!oids || oids->size() != now_.size() + 1) return fail("not one more");
    for (const std::int32_t oid : *oids) next.emplace(oid, copy);  // those there stay as they are
  }
  done(std::move(next));
  return true;
}

bool EditScript::undo_or_redo(bool undo) {
  auto& from = undo ? before_ : undone_;
  auto& to = undo ? undone_ : before_;
  say(undo ? "undo" : "redo");
  if ((undo ? history_.can_undo() : history_.can_redo()) != !from.empty())
    return fail("can, or cannot, otherwise");
  if (from.empty()) return true;
  if (!(undo ? history_.undo(boxes_) : history_.redo(boxes_))) return fail("not undone or redone");
  to.push_back(std::move(now_));
  now_ = std::move(from.back());
  from.pop_back();
  return true;
}

void EditScript::done(PlainCalendar next) {
  before_.push_back(std::move(now_));
  undone_.clear();
  now_ = std::move(next);
}

bool EditScript::act() {
  Pick picked;
  const int what = any(16);
  if (now_.size() < 2 || (what == 0 && now_.size() < 6)) return create();
  if (what < 3) return undo_or_redo(what != 2);
  if (what < 6 && pick(picked, false)) return edit_whole(picked, EditScope::series);
  if (what < 8 && pick(picked, true)) return edit_whole(picked, EditScope::following);
  if (what < 11 && pick(picked, true)) return edit_occurrence(picked);
  if (what < 13 && pick(picked, false)) return remove(picked);
  return !pick(picked, false) || carry(picked, what != 13);
}

bool EditScript::same() {
  std::vector<std::string> rows;
  const auto items = session_.CalendarItems();
  items->set_include_recurrences(true);
  const Text restriction = format(u"[Start] >= <%d AND [Start] <= <%d", plain_day(0).number(),
                                  plain_day(kPlainDays - 1).number());
  const auto minutes = [](CalendarDate date) {
    return static_cast<int>((to_seconds(date) - midnight_of(plain_day(0))) / 60);
  };
  const bool read = each_item(*items, restriction, [&](StoreItem& item) {
    rows.push_back(shown_row(item.summary->oid, minutes(item.start), minutes(item.end),
                             to_utf8(item.summary->subject), to_utf8(item.summary->location)));
  });
  if (!read) return fail("the store could not be read");
  std::sort(rows.begin(), rows.end());
  const auto expected = shown_rows(now_);
  if (rows == expected) return true;
  const auto [is, should] =
      std::mismatch(rows.begin(), rows.end(), expected.begin(), expected.end());
  return fail("shown " + (is == rows.end() ? "nothing more" : *is) + ", expected " +
              (should == expected.end() ? "nothing more" : *should));
}

bool EditScript::run(bool looks_after_each) {
  for (int action = 0; action < kActions; ++action)
    if (!act() || (looks_after_each && !same())) return false;
  if (!same()) return false;
  while (!before_.empty())
    if (!undo_or_redo(true)) return false;
  if (!same()) return false;
  while (!undone_.empty())
    if (!undo_or_redo(false)) return false;
  return same();
}

}  // namespace

TEST_P(CalendarStoreContract, EditsAtRandomLeaveWhatAPlainListLeaves) {
  clock_.zone = "Fixed";  // a plain list knows no hours that the clock leaves out
  const int scripts = dynamic_cast<MemoryStore*>(store_.get()) ? 1000 : 8;
  for (int seed = 1; seed <= scripts; ++seed) {
    app_.reset();
    store_.reset();
    store_ = GetParam().make(clock_);
    EditScript script(*store_, seed);
    ASSERT_TRUE(script.run(seed % 10 == 0)) << "script " << seed << ": " << script.trouble;
  }
}

}  // namespace orvello::test
