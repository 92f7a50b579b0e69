// An import in small steps, so that a window can go on between them: a file's calendars one after
// the other, and each calendar's components in every stage.
#include <utility>

#include "exchange/calendar_keys.h"
#include "exchange/importer.h"

namespace orvello {
namespace {

constexpr int kLinesAtOnce = 2000;

bool is_item(const ScannedComponent& one) { return one.kind == "VEVENT" || one.kind == "VCARD"; }

}  // namespace

void Importer::start(std::istream& in, CountsOf counts_of, ProblemList& problems) {
  counts_of_ = std::move(counts_of);
  problems_ = &problems;
  zones_.start_file();
  in_file_.clear();
  nameless_.clear();
  foreign_in_file_.clear();
  calendar_number_ = 0;
  progress_ = {};
  scanner_.emplace(in, problems);
  at_end_ = false;
  begin_stage(Stage::scan);
}

bool Importer::import_stream(std::istream& in, ImportCounts& counts, ProblemList& problems) {
  start(
      in, [&counts](const std::string&) { return &counts; }, problems);
  while (step()) {
  }
  return !failed_;
}

bool Importer::step() {
  if (!failed_ && !at_end_) go_on();
  if (at_end_) failed_ |= zones_.fault();
  return !failed_ && !at_end_;
}

Importer::Progress Importer::progress() const {
  Progress now = progress_;
  now.bytes = scanner_ ? scanner_->bytes_read() : 0;
  if (stage_ == Stage::scan) now.found += static_cast<int>(calendar_.components.size());
  return now;
}

void Importer::go_on() {
  switch (stage_) {
    case Stage::scan:
      return scan_lines();
    case Stage::changes:
      if (uids_.changes.empty()) return end_stage();
      // A series that is in this calendar has taken its changes with it.
      if (const auto first = uids_.changes.begin(); !uids_.masters.contains(first->first))
        import_changes(calendar_, first->first, first->second);
      uids_.changes.erase(uids_.changes.begin());
      return;
    case Stage::close:
      if (open_.empty())
        at_end_ = true;
      else
        close_series(std::string(open_.begin()->first));
      return;
    default:
      if (at_ >= calendar_.components.size()) return end_stage();
      take_component(calendar_.components[at_]);
      ++at_;
  }
}

void Importer::begin_stage(Stage stage) {
  stage_ = stage;
  at_ = 0;
  if (stage != Stage::scan) return;
  problems_before_ = problems_->problems().size();
  scanner_->begin(calendar_);
}

void Importer::scan_lines() {
  const auto piece = scanner_->scan(calendar_, kLinesAtOnce);
  if (piece == CalendarScanner::Piece::more) return;
  if (piece == CalendarScanner::Piece::end) return begin_stage(Stage::close);
  for (const ScannedComponent& one : calendar_.components) progress_.found += is_item(one);
  if (!calendar_.bare) return begin_calendar();
  if (!choose_counts({})) return begin_stage(Stage::scan);
  counts_->skipped += std::exchange(calendar_.broken_events, 0);
  begin_stage(Stage::cards);
}

// False where the calendar is left out, with all that there was to say about it.
bool Importer::choose_counts(const std::string& name) {
  ImportCounts* counts = counts_of_(name);
  if (counts) {
    counts_ = counts;  // else what is still open stays with the calendar before
  } else {
    problems_->forget_from(problems_before_);
    progress_.named = progress_.done = progress_.found;
  }
  return counts;
}

void Importer::take_component(const ScannedComponent& component) {
  const bool event = component.kind == "VEVENT", zone = component.kind == "VTIMEZONE";
  switch (stage_) {
    case Stage::cards:
      if (component.kind != "VCARD") return;
      import_card(component);
      ++progress_.named, ++progress_.done;
      return;
    case Stage::convert:
      return convert(component);
    case Stage::define:
      zones_alone_ = zones_alone_ && zone;
      if (!zone) return;
      definitions_ += calendar_.text_of(component);
      if (parsed_.parse(calendar_.text_of(component), component.line))
        zones_.define(parsed_.root(), *problems_);
      return;
    case Stage::keep:
      return event ? void() : keep_foreign(component);
    case Stage::name:
      if (event) find_uid(at_);
      progress_.named += event;
      return;
    case Stage::masters: {
      const auto master = uids_.masters.find(uids_.of[at_]);
      if (event && master != uids_.masters.end() && master->second == at_)
        import_master(calendar_, at_, uids_);
      progress_.done += event;
      return;
    }
    case Stage::messages:
      if (!zone) apply_message(at_);
      progress_.named += event, progress_.done += event;
      return;
    default:
      return;
  }
}

void Importer::end_stage() {
  switch (stage_) {
    case Stage::cards:
      return end_cards();
    case Stage::convert:
      return end_conversion();
    case Stage::define:
      return end_zones();
    case Stage::keep:
      uids_.of.resize(calendar_.components.size());
      uids_.masters.reserve(calendar_.components.size());
      return begin_stage(Stage::name);
    case Stage::name:
      return begin_stage(Stage::masters);
    case Stage::masters:
      return begin_stage(Stage::changes);
    case Stage::changes:
      return end_calendar();
    default:
      return begin_stage(Stage::scan);
  }
}

// The rest belongs to a calendar.
void Importer::end_cards() {
  std::erase_if(calendar_.components, [](const auto& one) { return one.kind == "VCARD"; });
  calendar_.components.empty() ? begin_stage(Stage::scan) : begin_calendar();
}

void Importer::begin_calendar() {
  read_header();
  if (!choose_counts(name_)) return begin_stage(Stage::scan);
  counts_->skipped += calendar_.broken_events;
  ++calendar_number_;
  zones_.start_calendar();
  converted_.clear();
  definitions_.clear();
  zones_alone_ = true;
  const bool quoted = calendar_.text.find("QUOTED-PRINTABLE") != std::string::npos;
  begin_stage(old_version_ || quoted ? Stage::convert : Stage::define);
}

void Importer::end_conversion() {
  if (old_version_ && !old_zone_.definition.empty()) {
    calendar_.components.push_back(
        {"VTIMEZONE", converted_.size(), old_zone_.definition.size(), calendar_.line});
    converted_ += old_zone_.definition;
  }
  calendar_.text = std::move(converted_);
  begin_stage(Stage::define);
}

// A message is not a calendar: what it carries goes where it belongs, and nothing else stays.
void Importer::end_zones() {
  if (method_ != Method::keep && method_ != Method::request) return begin_stage(Stage::messages);
  name_calendar();
  items_ = 0;
  begin_stage(Stage::keep);
}

// A calendar that had items is gone with its last one; an empty one stays as it was.
void Importer::end_calendar() {
  if (!key_.empty())
    put_foreign(calendar_key(key_), (items_ > 0 ? "items\n" : "empty\n") + calendar_.header);
  uids_ = {};
  begin_stage(Stage::scan);
}

}  // namespace orvello
