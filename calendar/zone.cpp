#include "calendar/zone.h"

#include <algorithm>
#include <cstdlib>

#include "calendar/instance_stream.h"
#include "calendar/rule_days.h"
#include "calendar/rule_text.h"

namespace orvello {
namespace {

constexpr int kWidestOffset = 26 * 3600;
constexpr LocalSeconds kFirstOnset = midnight_of(Day(-109571));  // 1 January 1600
constexpr LocalSeconds kHorizon = midnight_of(Day(109575));      // 1 January 2200
// A real zone has at most two changes a year; a hostile rule by the second must not fill memory.
constexpr std::size_t kMostOnsets = 4096;
constexpr std::size_t kMostObservances = 4096;
constexpr std::size_t kMostChanges = 1 << 16;  // of all observances together

bool is_sane(const Observance& observance) {
  return std::abs(observance.offset_from) <= kWidestOffset &&
         std::abs(observance.offset_to) <= kWidestOffset;
}

std::vector<LocalSeconds> onsets_of(const Observance& observance) {
  std::vector<LocalSeconds> onsets{observance.start};
  onsets.insert(onsets.end(), observance.dates.begin(), observance.dates.end());
  if (!observance.rule || observance.rule->frequency < Frequency::daily) return onsets;
  Rule rule = *observance.rule;
  // UNTIL of an onset is written in UTC, its instances are local to the offset before.
  if (rule.until && rule.until_is_utc) *rule.until += observance.offset_from;
  RuleMembers(rule, observance.start)
      .append(std::max(observance.start, kFirstOnset), kHorizon, kMostOnsets, onsets);
  if (onsets.size() > kMostOnsets) onsets.resize(kMostOnsets);
  return onsets;
}

// A name as printable ASCII without the characters that divide a definition.
std::string escaped(const std::string& name) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (unsigned char unit : name) {
    if (unit > 32 && unit < 127 && unit != '%' && unit != '|') {
      text += static_cast<char>(unit);
    } else {
      text += '%';
      text += kDigits[unit >> 4];
      text += kDigits[unit & 15];
    }
  }
  return text;
}

int hex_digit(char unit) {
  if (unit >= '0' && unit <= '9') return unit - '0';
  return unit >= 'A' && unit <= 'F' ? unit - 'A' + 10 : -1;
}

std::optional<std::string> unescaped(std::string_view text) {
  std::string name;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      name += text[i];
      continue;
    }
    if (i + 2 >= text.size() || hex_digit(text[i + 1]) < 0 || hex_digit(text[i + 2]) < 0)
      return std::nullopt;
    name += static_cast<char>(hex_digit(text[i + 1]) * 16 + hex_digit(text[i + 2]));
    i += 2;
  }
  return name;
}

std::optional<Observance> parse_observance(std::string_view text) {
  const auto fields = split_bytes(text, ' ');
  if (fields.size() != 5) return std::nullopt;
  const auto start = parse_moment(fields[0]);
  const auto from = parse_whole_number(fields[1]);
  const auto to = parse_whole_number(fields[2]);
  if (!start || !from || !to) return std::nullopt;
  Observance observance{*start, *from, *to, std::nullopt, {}};
  if (*from < -kWidestOffset || *from > kWidestOffset || *to < -kWidestOffset ||
      *to > kWidestOffset)
    return std::nullopt;
  if (fields[3] != "-") {
    auto rule = parse_rule(fields[3]);
    if (!rule) return std::nullopt;
    observance.rule = *rule;
  }
  if (fields[4] == "-") return observance;
  for (auto date : split_bytes(fields[4], ',')) {
    const auto moment = parse_moment(date);
    if (!moment) return std::nullopt;
    observance.dates.push_back(*moment);
  }
  std::sort(observance.dates.begin(), observance.dates.end());
  return observance;
}

}  // namespace

Zone::Zone(std::string name, std::vector<Observance> observances)
    : name_(std::move(name)), observances_(std::move(observances)) {
  std::erase_if(observances_, [](const Observance& each) { return !is_sane(each); });
  struct Onset {
    UtcSeconds at;
    int before, after;
  };
  std::vector<Onset> onsets;
  if (observances_.size() > kMostObservances) observances_.resize(kMostObservances);
  for (const Observance& each : observances_) {
    if (onsets.size() > kMostChanges) break;
    for (LocalSeconds local : onsets_of(each))
      onsets.push_back({utc_at_offset(local, each.offset_from), each.offset_from, each.offset_to});
  }
  std::stable_sort(onsets.begin(), onsets.end(),
                   [](const Onset& a, const Onset& b) { return a.at < b.at; });
  if (!onsets.empty()) first_offset_ = onsets.front().before;
  int offset = first_offset_;
  for (const Onset& onset : onsets) {
    if (onset.after == offset) continue;
    // The clock shows the new time from the later of the two readings on: a skipped time belongs
    // to the offset before, and so does the first of two equal ones.
    LocalSeconds local = local_at_offset(onset.at, std::max(offset, onset.after));
    if (!transitions_.empty()) local = std::max(local, transitions_.back().local);
    transitions_.push_back({onset.at, local, onset.after});
    offset = onset.after;
  }
}

UtcSeconds Zone::to_utc(LocalSeconds local) const {
  const auto next = std::upper_bound(
      transitions_.begin(), transitions_.end(), local,
      [](LocalSeconds moment, const Transition& each) { return moment < each.local; });
  return utc_at_offset(local, next == transitions_.begin() ? first_offset_ : (next - 1)->offset);
}

LocalSeconds Zone::from_utc(UtcSeconds utc) const {
  const auto next =
      std::upper_bound(transitions_.begin(), transitions_.end(), utc,
                       [](UtcSeconds moment, const Transition& each) { return moment < each.utc; });
  return local_at_offset(utc, next == transitions_.begin() ? first_offset_ : (next - 1)->offset);
}

std::vector<int> Zone::offsets_between(UtcSeconds from, UtcSeconds to) const {
  std::vector<int> offsets;
  int before = first_offset_;
  for (const Transition& each : transitions_) {
    if (each.utc >= to) break;
    before = each.offset;
    if (each.utc >= from) offsets.push_back(each.offset);
  }
  if (offsets.empty()) offsets.push_back(before);
  std::sort(offsets.begin(), offsets.end());
  offsets.erase(std::unique(offsets.begin(), offsets.end()), offsets.end());
  return offsets;
}

// NAME|START FROM TO RULE DATES|..., with "-" for no rule and for no dates.
std::string Zone::definition() const {
  std::string text = escaped(name_);
  for (const Observance& each : observances_) {
    text += '|' + moment_text(each.start) + ' ' + std::to_string(each.offset_from) + ' ' +
            std::to_string(each.offset_to) + ' ' + (each.rule ? rule_text(*each.rule) : "-") + ' ';
    for (LocalSeconds date : each.dates)
      text += (date == each.dates.front() ? "" : ",") + moment_text(date);
    if (each.dates.empty()) text += '-';
  }
  return text;
}

Result<Zone> Zone::parse(std::string_view definition) {
  const auto pieces = split_bytes(definition, '|');
  const auto name = unescaped(pieces[0]);
  if (!name || name->empty()) return Result<Zone>::failure("time zone: the name is damaged");
  if (pieces.size() > kMostObservances + 1)
    return Result<Zone>::failure("time zone " + *name + ": too many observances");
  std::vector<Observance> observances;
  for (std::size_t i = 1; i < pieces.size(); ++i) {
    const auto observance = parse_observance(pieces[i]);
    if (!observance)
      return Result<Zone>::failure("time zone " + *name + ": \"" + std::string(pieces[i]) +
                                   "\" is not understood");
    observances.push_back(*observance);
  }
  return Zone(*name, std::move(observances));
}

}  // namespace orvello
