#include "app/search_form.h"

#include <algorithm>
#include <utility>

#include "app/own_messages.h"
#include "ports/messages.h"
#include "resources/dialog_templates.h"
#include "resources/grouped_number.h"
#include "resources/ids.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kTimerReading = 1, kTimerWatch = 2;
constexpr int kReadingPause = 1, kWatchPause = 500;
// Some milliseconds' work: whatever the person does comes in between.
constexpr int kReadingsAtOnce = 4;
constexpr std::size_t kMostShown = 200;
constexpr int kPage = 4;  // hits by which the page keys go

CalendarDate now_of(const Host& host) {
  CalendarDate now = 0;
  SystemTimeToVariantTime(host.clock.local_time(), now);
  return now;
}

}  // namespace

std::optional<TextHit> ask_search(const SearchContext& context, Text& typed) {
  SearchProcedure procedure(context, typed);
  context.host.dialogs.run_modal(search_dialog(context.language), procedure);
  context.host.input.hide_input_panel();
  typed = procedure.typed();
  return procedure.chosen();
}

void SearchProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      return open(dialog);
    case Event::timer:
      return event.control == kTimerReading ? read_some(dialog) : watch(dialog);
    case Event::changed:
      typed_ = dialog.text(kControlSearchText);
      selected_ = -1;
      return search(dialog);
    case Event::command:
      return choose(dialog, std::max(selected_, 0));
    case Event::focus_gained:
      if (event.control == kControlSearchText)
        c_.host.input.raise_input_panel(dialog.place(kControlSearchText));
      return;
    case Event::key:
      if (event.control == kControlSearchText) {
        if (event.key == kKeyDown && !hits_.first.empty()) dialog.focus(kControlSearchList);
        return;
      }
      return list_key(dialog, event.key);
    default:
      if (event.control == kControlSearchList) list_event(dialog, event);
  }
}

void SearchProcedure::open(Dialog& dialog) {
  dialog.set_text(kControlSearchText, typed_);
  dialog.focus(kControlSearchText, Caret::all);
  pointer_.set_view(c_.screen.work.width, c_.screen.dpi_x);
  begin_reading(dialog);
  dialog.set_timer(kTimerWatch, kWatchPause);
  search(dialog);
}

void SearchProcedure::begin_reading(Dialog& dialog) {
  seen_changes_ = c_.changes;
  next_ = {};
  read_to_ = 0;
  reading_ = Reading::under_way;
  dialog.set_timer(kTimerReading, kReadingPause);
}

void SearchProcedure::read_some(Dialog& dialog) {
  StoreFolder* folder = c_.session.calendar_folder();
  const CalendarDate now = now_of(c_.host);
  for (int i = 0; i < kReadingsAtOnce && reading_ == Reading::under_way; ++i) {
    const auto last =
        !folder ? std::nullopt : folder->each_text(read_to_, now, [this](const StoreTexts& texts) {
          next_.add(texts);
        });
    const int reached = last.value_or(0);
    if (reached != 0)
      read_to_ = reached;
    else
      reading_ = last ? Reading::done : Reading::failed;
  }
  if (reading_ == Reading::under_way) return;
  dialog.set_timer(kTimerReading, 0);
  // What a failed reading has left out would be said not to be there.
  if (reading_ == Reading::done) {
    index_ = std::exchange(next_, {});
    indexed_ = true;
  }
  next_ = {};
  if (reading_ == Reading::failed) dialog.set_timer(kTimerWatch, kReadAgainMilliseconds);
  search(dialog);
}

// The rows are as wide as the list was when they were made.
void SearchProcedure::watch(Dialog& dialog) {
  if (dialog.report(kControlSearchList)->place().size.width != width_ && !pointer_.is_down())
    search(dialog);
  if (reading_ == Reading::under_way) return;
  if (reading_ == Reading::failed) dialog.set_timer(kTimerWatch, kWatchPause);
  if (reading_ == Reading::failed || seen_changes_ != c_.changes) begin_reading(dialog);
}

SearchLook SearchProcedure::look(Dialog& dialog) const {
  return {c_.settings, c_.screen, c_.host.dialogs.colors(), c_.language,
          dialog.report(kControlSearchList)->place()};
}

SearchRows SearchProcedure::rows_now(Dialog& dialog) {
  const auto notice = [&](StringId id) {
    Text words = load_string(id, c_.language);
    if (id == StringId::calendar_unreadable) words += u"\n" + c_.session.problem();
    return search_notice(words, look(dialog), c_.measure);
  };
  const TextQuery query(typed_);
  hits_ = {};
  if (reading_ == Reading::failed) return notice(StringId::calendar_unreadable);
  if (query.empty()) return notice(StringId::search_where);
  if (!indexed_) return notice(StringId::search_reading);
  hits_ = index_.find(query, now_of(c_.host), kMostShown);
  if (hits_.first.empty()) return notice(StringId::search_nothing);
  return search_rows(hits_, look(dialog));
}

// The one that was selected stays so, and where it was, as long as it is found.
void SearchProcedure::search(Dialog& dialog) {
  const RowKey before =
      selected_ >= 0 ? hits_.first[static_cast<std::size_t>(selected_)].key() : RowKey();
  SearchRows rows = rows_now(dialog);
  row_hits_ = std::move(rows.hits);
  ReportList* list = dialog.report(kControlSearchList);
  const int top = list->row_place(0).y;
  width_ = list->place().size.width;
  list->set_content(std::move(rows.content));
  const auto same = std::find_if(hits_.first.begin(), hits_.first.end(),
                                 [&](const TextHit& hit) { return before && hit.key() == before; });
  const bool kept = same != hits_.first.end();
  if (kept) list->scroll_by(list->row_place(0).y - top);
  select(dialog, kept                  ? static_cast<int>(same - hits_.first.begin())
                 : hits_.first.empty() ? -1
                                       : 0);
  dialog.enable(kControlOk, selected_ >= 0);
  dialog.set_text(0, hits_.count == 0
                         ? load_string(StringId::search_title, c_.language)
                         : format(load_string(StringId::search_found, c_.language),
                                  grouped_number(static_cast<std::int64_t>(hits_.count),
                                                 c_.language, c_.settings.locale)));
}

int SearchProcedure::hit_of(int row) const {
  return row >= 0 && row < static_cast<int>(row_hits_.size())
             ? row_hits_[static_cast<std::size_t>(row)]
             : -1;
}

void SearchProcedure::select(Dialog& dialog, int hit) {
  selected_ = hit;
  std::vector<int> rows;
  for (int row = 0; hit >= 0 && row < static_cast<int>(row_hits_.size()); ++row)
    if (hit_of(row) == hit) rows.push_back(row);
  dialog.report(kControlSearchList)->select(rows);
}

void SearchProcedure::choose(Dialog& dialog, int hit) {
  if (hit < 0 || hit >= static_cast<int>(hits_.first.size())) return;
  const TextHit& found = hits_.first[static_cast<std::size_t>(hit)];
  if (found.item.start == kNoDate) return;  // no day has it
  chosen_ = found;
  dialog.close(1);
}

void SearchProcedure::list_event(Dialog& dialog, const DialogEvent& event) {
  ReportList* list = dialog.report(kControlSearchList);
  using Kind = ListPointer::Action::Kind;
  ListPointer::Action action;
  if (event.kind == Event::pointer_down || event.kind == Event::double_tap)
    action = pointer_.press(event.point, list->row_at(event.point), event.time,
                            list->gliding() ? ListPointer::Grip::list : ListPointer::Grip::row);
  if (event.kind == Event::pointer_move) action = pointer_.move(event.point, event.time);
  if (event.kind == Event::pointer_up) action = pointer_.release(event.point, event.time);
  if (action.kind == Kind::select && hit_of(action.row) >= 0) select(dialog, hit_of(action.row));
  if (action.kind == Kind::scroll) list->scroll_by(action.value);
  if (action.kind == Kind::glide) list->glide(action.value);
  if (action.kind == Kind::tap) choose(dialog, hit_of(action.row));
}

void SearchProcedure::list_key(Dialog& dialog, std::uint32_t key) {
  if (key == kKeyReturn || key == kKeySpace) return choose(dialog, selected_);
  const int last = static_cast<int>(hits_.first.size()) - 1;
  if (key == kKeyUp && selected_ <= 0) return dialog.focus(kControlSearchText, Caret::end);
  const int to = key == kKeyUp         ? selected_ - 1
                 : key == kKeyDown     ? selected_ + 1
                 : key == kKeyPageUp   ? selected_ - kPage
                 : key == kKeyPageDown ? selected_ + kPage
                 : key == kKeyHome     ? 0
                 : key == kKeyEnd      ? last
                                       : -2;
  if (to == -2 || last < 0) return;
  select(dialog, std::clamp(to, 0, last));
  ReportList* list = dialog.report(kControlSearchList);
  for (int row = static_cast<int>(row_hits_.size()) - 1; row >= 0; --row)
    if (hit_of(row) == selected_) list->show_row(row);
  if (selected_ == 0) list->show_row(0);  // with what stands above it
}

}  // namespace orvello
