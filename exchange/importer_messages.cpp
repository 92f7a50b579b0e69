// What calendars send each other: answers, cancellations, additions; and events that no day shows.
#include <algorithm>

#include "base/text.h"
#include "calendar/rule_text.h"
#include "exchange/calendar_keys.h"
#include "exchange/component_edit.h"
#include "exchange/event_fields.h"
#include "exchange/event_writer.h"
#include "exchange/importer.h"
#include "store/record_rules.h"
#include "store/series_halves.h"

namespace orvello {
namespace {

constexpr std::size_t kLongestName = 80;
constexpr int kMostAnswers = 100;  // in one reply, which comes from one person

std::string value_of(const Component& event, std::string_view name) {
  const Property* property = event.find(name);
  return property ? std::string(trimmed(property->value)) : std::string();
}

std::string lower(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return text;
}

// "Ann" or, for who has no name, the address.
std::string name_of(const Property& attendee) {
  const StoreRecipient one = read_recipient(attendee);
  return to_utf8(one.name.empty() ? one.address : one.name).substr(0, kLongestName);
}

AppointmentException* exception_at(AppointmentRecord& record, LocalSeconds original) {
  for (AppointmentException& one : record.exceptions)
    if (one.original_start == original) return &one;
  return nullptr;
}

// A word that a parameter can be without quotes.
bool is_token(std::string_view word) {
  return !word.empty() && std::all_of(word.begin(), word.end(), [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
  });
}

// A parameter's value between quotes.
std::string quotable(std::string text) {
  std::erase_if(text, [](char c) { return c == '"' || static_cast<unsigned char>(c) < ' '; });
  return text;
}

std::string address_of(std::string_view uri) {
  Property one;
  one.value = uri;
  return to_utf8(read_recipient(one).address);
}

const StoreRecipient* with_address(const std::vector<StoreRecipient>& people,
                                   std::string_view address) {
  for (const StoreRecipient& one : people)
    if (!address.empty() && equal_ignoring_case(to_utf8(one.address), address)) return &one;
  return nullptr;
}

// What the record says, without what stands in its kept text.
AppointmentRecord bare(const AppointmentRecord& record) {
  AppointmentRecord plain = record;
  plain.residue.clear();
  std::erase_if(plain.exceptions, [](const AppointmentException& one) {
    return !one.deleted || !one.residue.empty();
  });
  return plain;
}

}  // namespace

void Importer::tell(const Component& event, std::string text) {
  const std::string subject = unescape_text(value_of(event, "SUMMARY")).substr(0, kLongestName);
  problems_->add(event.line, (subject.empty() ? "event" : "\"" + subject + "\"") + " " + text);
}

std::string Importer::text_of(const AppointmentRecord& record) {
  std::string text;
  EventWriter writer(store_, clock_);
  writer.write(text, record);
  failed_ |= writer.fault();
  return text;
}

std::string Importer::shown_text(const AppointmentRecord& record,
                                 const std::vector<SeriesPart>& parts) {
  return with_part_names(text_of(bare(record)), record.uid, parts);
}

Moment Importer::start_of(const AppointmentRecord& record, std::optional<Zone>& zone) {
  if (record.zone == "UTC")
    zone = Zone();
  else if (!record.zone.empty())
    zone = zone_named(record.zone);
  return {record.start, record.fields.all_day, zone ? &*zone : nullptr};
}

// A lower SEQUENCE is older. Of equal ones a message is older by its DTSTAMP; a file that somebody
// chose to import is what that person wants, whatever its stamp.
bool Importer::is_older(const Component& event, std::string_view stored) {
  const auto own = sent_.find(unescape_text(value_of(event, "UID")));
  const int sent = own == sent_.end() ? 0 : own->second;
  if (method_ == Method::keep && sent == 0 && stored.find("SEQUENCE") == std::string_view::npos)
    return false;
  ParsedComponent then;
  const bool known = !stored.empty() && then.parse(stored, 1);
  if (!known && sent == 0) return false;
  const int before = std::max(known ? sequence_of(then.root()) : 0, sent);
  const int now = sequence_of(event);
  if (before != now || !known || method_ != Method::request) return now < before;
  const std::string stamp = value_of(event, "DTSTAMP"), last = value_of(then.root(), "DTSTAMP");
  return stamp.size() == last.size() && stamp < last;
}

const ForeignComponent* Importer::hidden(const std::string& uid) {
  const auto known = hidden_.find(uid);
  if (known == hidden_.end()) return nullptr;
  for (const ForeignComponent& one : known->second)
    if (one.key == component_key("VEVENT", uid, "")) return &one;
  return nullptr;
}

void Importer::hide(const Component& event, const std::string& uid) {
  ForeignComponent one{component_key("VEVENT", uid, value_of(event, "RECURRENCE-ID")),
                       key_ + "\n" + std::string(event.raw)};
  put_foreign(one.key, one.text);
  ++items_;
  auto& list = hidden_[uid];
  std::erase_if(list, [&](const ForeignComponent& known) { return known.key == one.key; });
  list.push_back(std::move(one));
}

void Importer::unhide(const std::string& uid) {
  const std::string key = component_key("VEVENT", uid, "");
  put_foreign(key, "");
  auto& list = hidden_[uid];
  std::erase_if(list, [&](const ForeignComponent& known) { return known.key == key; });
  if (list.empty()) hidden_.erase(uid);
}

// The series of cancelled occurrences has come.
void Importer::merge_hidden(const std::string& uid, ReadEvent& master) {
  auto& list = hidden_[uid];
  for (ForeignComponent& one : list) {
    ParsedComponent text;
    ProblemList ignored{""};
    EventContext context{zones_, clock_, ignored};
    if (!text.parse(split_residue(one.text).component, 1) || !is_cancelled(text.root())) continue;
    const auto read = read_event(text.root(), context);
    if (!read || !read->recurrence_id) continue;
    master.record.exceptions.push_back(
        exception_of(*read, master, std::string(text.root().raw), clock_));
    put_foreign(one.key, "");
    one.key.clear();
  }
  std::erase_if(list, [](const ForeignComponent& one) { return one.key.empty(); });
  if (list.empty()) hidden_.erase(uid);
}

void Importer::erase_parts(const AppointmentRecord& record, const std::vector<SeriesPart>& but) {
  for (const PartName& part : parts_of(record.residue, record.uid)) {
    const bool stays = std::any_of(
        but.begin(), but.end(), [&](const SeriesPart& one) { return one.record.uid == part.uid; });
    const std::int32_t oid = stays ? 0 : oid_of(part.uid);
    failed_ |= oid != 0 && writes_ && !store_.erase(oid);
  }
}

void Importer::erase_record(const AppointmentRecord& record) {
  erase_parts(record, {});
  failed_ |= writes_ && !store_.erase(record.oid);
}

void Importer::apply_message(std::size_t index) {
  const std::string& kind = calendar_.components[index].kind;
  const int before = counts_->updated;
  const Component& message = parse(calendar_, index);
  const std::string uid = unescape_text(value_of(message, "UID"));
  if (kind != "VEVENT" || method_ == Method::none_of_ours) {
    tell(message, "comes as " + method_name_ + ", which changes nothing here; left out");
  } else {
    while (!open_.empty()) close_series(std::string(open_.begin()->first));
    if (method_ == Method::reply) apply_reply(message, uid);
    if (method_ == Method::cancel) apply_cancel(message, uid);
    if (method_ == Method::add) apply_addition(message, uid);
  }
  if (counts_->updated == before && !counted_.contains(std::hash<std::string>()(uid)))
    ++counts_->skipped;
}

// The occurrence that a message names, by its time in the record's zone; nothing where the series
// has no such one.
std::optional<LocalSeconds> Importer::occurrence_named(const AppointmentRecord& record,
                                                       const Component& message) {
  EventContext context{zones_, clock_, *problems_};
  const Property& named = *message.find("RECURRENCE-ID");
  const auto moment = read_moment(named, named.value, context);
  if (!moment || !record.recurring()) return std::nullopt;
  std::optional<Zone> zone;
  const LocalSeconds original = reading_at(*moment, start_of(record, zone), clock_);
  for (const AppointmentException& one : record.exceptions)
    if (one.original_start == original) return original;
  const bool there = has_instance(recurrence_of(record, zone ? &*zone : nullptr), original);
  return there ? std::optional(original) : std::nullopt;
}

// An answer to what the meeting was before it changed is none to what it is.
bool Importer::is_stale(const AppointmentRecord& record, const Component& reply) {
  if (!reply.find("SEQUENCE")) return false;
  std::string_view text = split_residue(record.residue).component;
  if (reply.find("RECURRENCE-ID"))
    if (const auto original = occurrence_named(record, reply))
      for (const AppointmentException& one : record.exceptions)
        if (one.original_start == *original && !one.residue.empty()) text = one.residue;
  ParsedComponent parsed;
  int sequence = !text.empty() && parsed.parse(text, 1) ? sequence_of(parsed.root()) : 0;
  if (const auto sent = sent_.find(record.uid); sent != sent_.end())
    sequence = std::max(sequence, sent->second);
  return sequence_of(reply) < sequence;
}

void Importer::apply_reply(const Component& reply, const std::string& uid) {
  auto record = stored(oid_of(uid));
  if (!record) return tell(reply, "is answered, but the calendar does not have it; left out");
  if (is_stale(*record, reply))
    return tell(reply, "is answered as it was before it changed; left out");
  if (reply.find("RECURRENCE-ID") && !occurrence_named(*record, reply))
    return tell(reply, "is answered for an occurrence that the calendar does not have; left out");
  bool used = false;
  int answers = 0;
  for (const Property& property : reply.properties) {
    if (!property.named("ATTENDEE")) continue;
    if (++answers > kMostAnswers) return tell(reply, "is answered by too many at once; left out");
    const std::string status = parameter(property, "PARTSTAT").value_or("NEEDS-ACTION");
    if (!is_token(status)) {
      tell(reply, "is answered by " + name_of(property) + " in no known word; left out");
    } else if (take_answer(*record, reply, property)) {
      tell(reply, "is answered by " + name_of(property) + ": " + lower(status));
      used = true;
    } else {
      tell(reply,
           "is answered by " + name_of(property) + ", who is not among its people; left out");
    }
  }
  if (used) put(*record, true);
}

// The text in which the attendees of what was answered stand, with one made where it had none. A
// named occurrence is one.
std::string* Importer::answered_text(AppointmentRecord& record, const Component& reply) {
  if (reply.find("RECURRENCE-ID")) {
    const auto original = occurrence_named(record, reply);
    if (!original) return nullptr;
    AppointmentException* one = exception_at(record, *original);
    if (!one) {
      one = &record.exceptions.emplace_back();
      one->original_start = one->start = *original;
      one->end = *original + (record.end - record.start);
      one->zone = record.zone;
      one->recipients = record.recipients;
      one->fields = record.fields;
    }
    if (one->deleted) return nullptr;
    EventWriter writer(store_, clock_);
    if (one->residue.empty()) one->residue = writer.occurrence(record, *one);
    failed_ |= writer.fault();
    return &one->residue;
  }
  if (split_residue(record.residue).component.empty())
    record.residue += "\n" + text_of(bare(record));
  return &record.residue;
}

bool Importer::take_answer(AppointmentRecord& record, const Component& reply,
                           const Property& attendee) {
  const StoreRecipient person = read_recipient(attendee);
  AppointmentRecord answered = record;
  std::string* text = answered_text(answered, reply);
  if (!text) return false;
  const bool whole = text == &answered.residue;
  auto& people = whole ? answered.recipients
                       : exception_at(answered, *occurrence_named(answered, reply))->recipients;
  const std::size_t begin = whole ? text->find('\n') + 1 : 0;
  std::string component = text->substr(begin);
  Participation answer{parameter(attendee, "PARTSTAT").value_or("NEEDS-ACTION"), {}};
  if (const auto delegate = parameter(attendee, "DELEGATED-TO"))
    answer.delegated_to = '"' + quotable(*delegate) + '"';
  if (!set_participation(component, to_utf8(person.address), answer)) {
    // Who was added here, and whom one of its people sends instead.
    if (const StoreRecipient* known = with_address(people, to_utf8(person.address))) {
      add_attendee(component, attendee_line(*known));
      if (!set_participation(component, to_utf8(person.address), answer)) return false;
    } else {
      if (!with_address(people, address_of(parameter(attendee, "DELEGATED-FROM").value_or(""))))
        return false;
      people.push_back(person);
      add_attendee(component, folded("ATTENDEE" + std::string(attendee.parameters) + ":" +
                                     std::string(attendee.value)));
    }
  }
  text->replace(begin, std::string::npos, component);
  record = std::move(answered);
  return true;
}

void Importer::apply_cancel(const Component& cancel, const std::string& uid) {
  const auto record = stored(oid_of(uid));
  const Property* named = cancel.find("RECURRENCE-ID");
  if (!record && hidden(uid)) {
    count(uid, true);
    return tell(cancel, "is cancelled already");
  }
  if (!record) return tell(cancel, "is cancelled, but the calendar does not have it; left out");
  const Residue kept = split_residue(record->residue);
  if (is_older(cancel, kept.component))
    return tell(cancel, "is older than what the calendar has; left out");
  EventContext context{zones_, clock_, *problems_};
  std::optional<Zone> zone;
  const Moment start = start_of(*record, zone);
  const auto moment = named ? read_moment(*named, named->value, context) : std::nullopt;
  const bool rest =
      named && equal_ignoring_case(parameter(*named, "RANGE").value_or(""), "THISANDFUTURE");
  const bool there =
      moment && (record->recurring() ? rest || occurrence_named(*record, cancel)
                                     : reading_at(*moment, start, clock_) == record->start);
  if (named && !there)
    return tell(cancel, "is cancelled for an occurrence that the calendar does not have; left out");
  if (named && record->recurring()) {
    AppointmentRecord changed = *record;
    cancel_occurrence(cancel, changed, Moment{reading_at(*moment, start, clock_), false, nullptr});
    return put(changed, true);
  }
  const std::string before = key_;
  key_ = std::string(kept.calendar);
  std::string text = with_property(text_of(*record), "STATUS", "STATUS:CANCELLED\r\n");
  if (const int sequence = sequence_of(cancel); sequence > 0)
    text = with_property(text, "SEQUENCE", "SEQUENCE:" + std::to_string(sequence) + "\r\n");
  if (const Property* stamp = cancel.find("DTSTAMP"))
    text = with_property(text, "DTSTAMP", "DTSTAMP:" + std::string(stamp->value) + "\r\n");
  ParsedComponent whole;
  ForeignComponent one{component_key("VEVENT", uid, ""), key_ + "\n" + text};
  put_foreign(one.key, one.text);
  hidden_[uid].push_back(std::move(one));
  key_ = before;
  erase_record(*record);
  count(uid, true);
  if (watcher_) watcher_->cancelled(*record);
  tell(cancel, "is cancelled; kept, but no longer shown");
}

void Importer::cancel_occurrence(const Component& cancel, AppointmentRecord& record,
                                 const Moment& moment) {
  const Property& named = *cancel.find("RECURRENCE-ID");
  if (equal_ignoring_case(parameter(named, "RANGE").value_or(""), "THISANDFUTURE")) {
    std::sort(record.exceptions.begin(), record.exceptions.end(),
              [](const auto& a, const auto& b) { return a.original_start < b.original_start; });
    end_series_before(record, moment.local);
    return tell(cancel, "is cancelled from " + day_text(moment.local) + " on");
  }
  AppointmentException* one = exception_at(record, moment.local);
  if (!one) {
    one = &record.exceptions.emplace_back();
    one->original_start = moment.local;
  }
  std::string text = one->residue.empty() ? std::string(cancel.raw) : one->residue;
  text = with_property(std::move(text), "STATUS", "STATUS:CANCELLED\n");
  ParsedComponent parsed;
  if (parsed.parse(text, 1) && !parsed.root().find("DTSTART"))
    text = with_property(
        text, "DTSTART",
        "DTSTART" + std::string(named.parameters) + ":" + std::string(named.value) + "\n");
  one->deleted = true;
  one->residue = std::move(text);
  tell(cancel, "is cancelled on " + day_text(moment.local));
}

// One more occurrence, which its series must name as well.
void Importer::apply_addition(const Component& added, const std::string& uid) {
  auto record = stored(oid_of(uid));
  if (!record) return tell(added, "has one more date, but the calendar does not have it; left out");
  if (is_older(added, split_residue(record->residue).component))
    return tell(added, "is older than what the calendar has; left out");
  EventContext context{zones_, clock_, *problems_};
  auto read = read_event(added, context);
  if (!read) return;
  std::optional<Zone> zone;
  ReadEvent master;
  master.start = start_of(*record, zone);
  read->recurrence_id = read->start;
  AppointmentException one = exception_of(*read, master, std::string(added.raw), clock_);
  one.deleted = false;
  if (AppointmentException* known = exception_at(*record, one.original_start)) {
    *known = std::move(one);
    return put(*record, true);
  }
  add_date(*record, one.original_start);
  tell(added, "has one more date, " + day_text(one.original_start));
  record->exceptions.push_back(std::move(one));
  put(*record, true);
}

}  // namespace orvello
