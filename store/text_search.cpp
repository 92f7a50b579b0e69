#include "store/text_search.h"

#include <algorithm>
#include <cstring>

#include "base/fold_text.h"

namespace orvello {
namespace {

// The next piece up to a zero, which it goes past.
std::string_view take_piece(const std::string& text, std::size_t& at) {
  const std::string_view piece(text.c_str() + at);
  at += piece.size() + 1;
  return piece;
}

void append_piece(std::string& out, TextView text) {
  out += to_utf8(text.substr(0, text.find(u'\0')));
  out += '\0';
}

}  // namespace

TextQuery::TextQuery(TextView typed) {
  const std::string text = folded(typed);
  bool quoted = false;
  std::string part;
  const auto end_part = [&] {
    while (!part.empty() && part.back() == ' ') part.pop_back();
    if (!part.empty()) parts_.push_back(std::move(part));
    part.clear();
  };
  for (const char c : text) {
    if (c == '"') {
      end_part();
      quoted = !quoted;
    } else if (c == ' ' && !quoted) {
      end_part();
    } else if (c != ' ' || !part.empty()) {
      part += c;
    }
  }
  end_part();
}

bool TextQuery::found_in(std::string_view folded) const {
  return std::all_of(parts_.begin(), parts_.end(), [&](const std::string& part) {
    return folded.find(part) != std::string_view::npos;
  });
}

bool TextQuery::matches(const StoreTexts& texts) const {
  std::string searched;
  append_searched(searched, texts);
  return found_in(searched);
}

void append_searched(std::string& out, const StoreTexts& texts) {
  const AppointmentSummary& summary = *texts.item.summary;
  const auto add = [&out](TextView text) {
    append_folded(out, text);
    out += '\n';
  };
  for (const TextView text : {TextView(summary.subject), TextView(summary.location),
                              TextView(summary.categories), TextView(texts.body)})
    add(text);
  for (const StoreRecipient& one : texts.recipients) {
    add(one.name);
    add(one.address);
  }
}

void TextIndex::add(const StoreTexts& texts) {
  const StoreItem& item = texts.item;
  const AppointmentSummary& summary = *item.summary;
  Entry& entry = entries_.emplace_back();
  entry.oid = summary.oid;
  entry.dated = item.start != kNoDate;
  entry.start = to_seconds(item.start);
  entry.end = to_seconds(item.end);
  entry.all_day = summary.all_day;
  entry.recurring = summary.recurring;
  entry.changed_occurrence = texts.changed_occurrence;
  entry.many = item.many != 0;
  entry.text = texts_.size();
  append_searched(texts_, texts);
  for (std::size_t at = entry.text; at < texts_.size(); ++at)
    ++bytes_[static_cast<unsigned char>(texts_[at])];
  entry.shown = shown_.size();
  for (const Text* text : {&summary.subject, &summary.location, &summary.categories})
    append_piece(shown_, *text);
}

// A part that is looked for, by its byte that is the rarest in all texts: most of them are passed
// over at the speed of memory.
struct TextIndex::Needle {
  Needle(const std::string& wanted, const std::array<std::size_t, 256>& bytes) : part(wanted) {
    for (std::size_t i = 0; i < part.size(); ++i)
      if (const std::size_t count = bytes[static_cast<unsigned char>(part[i])]; count < seldom) {
        seldom = count;
        at = i;
      }
  }
  // Where it begins, from `from` on; npos: nowhere.
  std::size_t find(std::string_view text, std::size_t from) const {
    while (from + part.size() <= text.size()) {
      const std::size_t left = text.size() - part.size() - from + 1;
      const void* found = std::memchr(text.data() + from + at, part[at], left);
      if (!found) break;
      from = static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) - at;
      if (text.compare(from, part.size(), part) == 0) return from;
      ++from;
    }
    return std::string_view::npos;
  }

  std::string_view part;
  std::size_t at = 0, seldom = std::string::npos;
};

bool TextIndex::is_of_series(const Entry& series, const Entry& entry) const {
  return entry.changed_occurrence && !series.changed_occurrence && series.oid == entry.oid;
}

// The entries in which all parts are, in order; of a series that is one of them, itself alone.
std::vector<std::uint32_t> TextIndex::matching(const TextQuery& query) const {
  std::vector<std::uint32_t> found;
  if (query.empty() || entries_.empty()) return found;
  std::vector<Needle> needles;
  for (const std::string& part : query.parts()) needles.emplace_back(part, bytes_);
  std::sort(needles.begin(), needles.end(),
            [](const Needle& a, const Needle& b) { return a.seldom < b.seldom; });
  const auto end_of = [this](std::size_t entry) {
    return entry + 1 < entries_.size() ? entries_[entry + 1].text : texts_.size();
  };
  const std::string_view all(texts_);
  std::size_t entry = 0, at = 0;
  while ((at = needles[0].find(all, at)) != std::string_view::npos) {
    while (end_of(entry) <= at) ++entry;
    const std::size_t end = end_of(entry);
    const std::string_view text = all.substr(entries_[entry].text, end - entries_[entry].text);
    at = end;
    const bool others = std::all_of(needles.begin() + 1, needles.end(), [&](const Needle& one) {
      return one.find(text, 0) != std::string_view::npos;
    });
    if (!others) continue;
    if (!found.empty() && is_of_series(entries_[found.back()], entries_[entry])) continue;
    found.push_back(static_cast<std::uint32_t>(entry));
  }
  return found;
}

TextHits TextIndex::find(const TextQuery& query, CalendarDate now, std::size_t most) const {
  const LocalSeconds moment = to_seconds(now);
  std::vector<std::uint32_t> found = matching(query);
  const auto before = [&](std::uint32_t a, std::uint32_t b) {
    const Entry &one = entries_[a], &other = entries_[b];
    const bool past = one.end < moment, other_past = other.end < moment;
    if (one.dated != other.dated) return one.dated;
    if (past != other_past) return other_past;
    if (one.start != other.start) return past ? one.start > other.start : one.start < other.start;
    return a < b;
  };
  TextHits hits;
  hits.count = found.size();
  const auto shown = static_cast<std::ptrdiff_t>(std::min(most, found.size()));
  std::partial_sort(found.begin(), found.begin() + shown, found.end(), before);
  for (auto one = found.begin(); one != found.begin() + shown; ++one)
    hits.first.push_back(hit(*one, moment));
  return hits;
}

TextHit TextIndex::hit(std::size_t number, LocalSeconds now) const {
  const Entry& entry = entries_[number];
  auto summary = std::make_shared<AppointmentSummary>();
  std::size_t at = entry.shown;
  summary->oid = entry.oid;
  for (Text* text : {&summary->subject, &summary->location, &summary->categories})
    *text = to_utf16(take_piece(shown_, at));
  summary->all_day = entry.all_day;
  summary->recurring = entry.recurring;
  TextHit hit;
  if (entry.dated) {
    hit.item.start = to_calendar_date(entry.start);
    hit.item.end = to_calendar_date(entry.end);
  }
  hit.item.summary = std::move(summary);
  hit.item.many = entry.many ? StoreItem::kUncounted : 0;
  hit.past = entry.dated && entry.end < now;
  return hit;
}

}  // namespace orvello
