#include "editor/draft_block.h"

#include <cmath>

#include "editor/block_bytes.h"

namespace orvello {
namespace {

constexpr std::string_view kDraftMark("OVD\x01", 4);

// The two ways of a value, so that all fields are named once for both.
class DraftOut {
 public:
  explicit DraftOut(BlockWriter& out) : out_(out) {}
  void value(const Text& text) { out_.units(text); }
  void value(const std::string& bytes) { out_.bytes(bytes); }
  void value(bool flag) { out_.byte(flag); }
  void value(std::int32_t number) { out_.signed_number(number); }
  void value(double date) { out_.fixed(std::bit_cast<std::uint64_t>(date), 8); }
  template <typename Enum>
  void one_of(const Enum& which, int) {
    out_.byte(static_cast<unsigned>(which));
  }
  void value(const std::vector<StoreRecipient>& people) {
    out_.number(people.size());
    for (const StoreRecipient& one : people) {
      value(one.name);
      value(one.address);
    }
  }

 private:
  BlockWriter& out_;
};

class DraftIn {
 public:
  explicit DraftIn(BlockReader& in) : in_(in) {}
  void value(Text& text) { text = in_.units(); }
  void value(std::string& bytes) { bytes = std::string(in_.bytes()); }
  void value(bool& flag) { flag = in_.byte() != 0; }
  void value(std::int32_t& number) { number = static_cast<std::int32_t>(in_.signed_number()); }
  void value(double& date) {
    date = std::bit_cast<double>(in_.fixed(8));
    if (!std::isfinite(date)) in_.fail();
  }
  template <typename Enum>
  void one_of(Enum& which, int most) {
    const unsigned number = in_.byte();
    if (number > static_cast<unsigned>(most)) return in_.fail();
    which = static_cast<Enum>(number);
  }
  void value(std::vector<StoreRecipient>& people) {
    for (std::uint64_t count = in_.number(); count > 0 && in_.good(); --count) {
      StoreRecipient& one = people.emplace_back();
      value(one.name);
      value(one.address);
    }
  }

 private:
  BlockReader& in_;
};

// The names make the compiler ask for a field that is added.
template <typename Io, typename Pattern>
void pattern_fields(Io& io, Pattern& pattern) {
  auto& [type, start_date, end_date, no_end, occurrences, start_time, end_time, duration, interval,
         mask, day, instance, month] = pattern;
  io.one_of(type, static_cast<int>(RecurrenceType::year_nth));
  for (auto* date : {&start_date, &end_date, &start_time, &end_time}) io.value(*date);
  io.value(no_end);
  for (auto* number : {&occurrences, &duration, &interval, &mask, &day, &instance, &month})
    io.value(*number);
}

template <typename Io, typename Form>
void form_fields(Io& io, Form& form) {
  auto& [choice, subject, location, start_date, end_date, start_time, end_time, all_day,
         reminder_set, reminder_minutes, is_private, busy_status, categories, attendees, recurring,
         pattern, rules, body, ink] = form;
  auto& [oid, occurrence, scope] = choice;
  io.one_of(scope, static_cast<int>(EditScope::following));
  for (auto* number : {&oid, &reminder_minutes}) io.value(*number);
  io.one_of(busy_status, 3);
  for (auto* date : {&occurrence, &start_date, &end_date, &start_time, &end_time}) io.value(*date);
  for (auto* flag : {&all_day, &reminder_set, &is_private, &recurring}) io.value(*flag);
  for (auto* text : {&subject, &location, &categories, &body}) io.value(*text);
  for (auto* bytes : {&rules, &ink}) io.value(*bytes);
  io.value(attendees);
  pattern_fields(io, pattern);
}

}  // namespace

std::string draft_block(const EditorDraft& draft) {
  BlockWriter bytes(kDraftMark);
  DraftOut out(bytes);
  form_fields(out, draft.opened);
  form_fields(out, draft.form);
  return std::move(bytes).sealed();
}

std::optional<EditorDraft> read_draft_block(std::string_view block) {
  auto bytes = BlockReader::opened(block, kDraftMark);
  if (!bytes) return std::nullopt;
  EditorDraft draft;
  DraftIn in(*bytes);
  form_fields(in, draft.opened);
  form_fields(in, draft.form);
  if (!bytes->at_end()) return std::nullopt;
  return draft;
}

}  // namespace orvello
