#include "calendar/instance_stream.h"

#include <algorithm>

#include "calendar/rule_days.h"

namespace orvello {
namespace {

constexpr std::size_t kAtOnce = 256;
constexpr std::int64_t kMemberEffort = 4;  // what asking a rule about a moment costs

Rule without_count(Rule rule, LocalSeconds start) {
  if (rule.count == 0) return rule;
  rule.until = last_instance(rule, start);
  rule.count = 0;
  return rule;
}

}  // namespace

RuleMembers::RuleMembers(const Rule& rule, LocalSeconds start)
    : rule_(without_count(rule, start)),
      start_(start),
      recurs_(can_recur(rule, start)),
      expansion_(rule_, start) {}

bool RuleMembers::has(LocalSeconds moment) {
  bool found = false;
  if (recurs_ && (!rule_.until || moment <= *rule_.until))
    expansion_.walk(moment, moment + 1, [&](LocalSeconds) { return !(found = true); });
  return found;
}

void RuleMembers::append(LocalSeconds from, LocalSeconds to, std::size_t most,
                         std::vector<LocalSeconds>& out) {
  if (rule_.until) to = std::min(to, *rule_.until + 1);
  if (!recurs_ || most == 0 || from >= to) return;
  expansion_.walk(from, to, [&](LocalSeconds moment) {
    out.push_back(moment);
    return --most > 0;
  });
}

InstanceStream::InstanceStream(const RecurrenceSet& set, std::int64_t effort)
    : set_(set), effort_(effort) {
  for (const Rule& rule : set.rules) sources_.emplace_back(rule, set.start);
  for (const Rule& rule : set.excluded_rules) excluded_.emplace_back(rule, set.start);
}

void InstanceStream::seek(LocalSeconds from) {
  at_ = from;
  next_date_ = static_cast<std::size_t>(
      std::lower_bound(set_.dates.begin(), set_.dates.end(), from) - set_.dates.begin());
  for (Source& source : sources_) {
    source.found.clear();
    source.next = 0;
    source.searched_to = from;
  }
}

std::optional<LocalSeconds> InstanceStream::head(Source& source, LocalSeconds to) {
  if (source.next == source.found.size() && source.searched_to < to) {
    source.found.clear();
    source.next = 0;
    source.rule.append(source.searched_to, to, kAtOnce, source.found);
    source.searched_to = source.found.size() < kAtOnce ? to : source.found.back() + 1;
  }
  if (source.next == source.found.size()) return std::nullopt;
  return source.found[source.next];
}

std::optional<LocalSeconds> InstanceStream::next_candidate(LocalSeconds to) {
  LocalSeconds earliest = to;
  if (set_.start >= at_) earliest = std::min(earliest, set_.start);
  if (next_date_ < set_.dates.size()) earliest = std::min(earliest, set_.dates[next_date_]);
  for (Source& source : sources_)
    if (const auto moment = head(source, to)) earliest = std::min(earliest, *moment);
  if (earliest >= to) return std::nullopt;
  at_ = earliest + 1;
  while (next_date_ < set_.dates.size() && set_.dates[next_date_] < at_) ++next_date_;
  for (Source& source : sources_)
    if (source.next < source.found.size() && source.found[source.next] < at_) ++source.next;
  effort_ -= 1 + static_cast<std::int64_t>(sources_.size());
  return earliest;
}

bool InstanceStream::is_excluded(LocalSeconds moment) {
  if (std::binary_search(set_.excluded_dates.begin(), set_.excluded_dates.end(), moment))
    return true;
  for (RuleMembers& rule : excluded_) {
    effort_ -= kMemberEffort;
    if (rule.has(moment)) return true;
  }
  return false;
}

LeftOut InstanceStream::append(LocalSeconds from, LocalSeconds to, std::size_t most,
                               std::vector<LocalSeconds>& out) {
  LeftOut left;
  seek(from);
  while (const auto moment = next_candidate(to)) {
    if (effort_ <= 0) {
      if (left.count == 0) left.first = *moment;
      left.count = LeftOut::kUncounted;
      left.last = to - 1;
      return left;
    }
    if (is_excluded(*moment)) continue;
    if (most > 0) {
      --most;
      out.push_back(*moment);
      continue;
    }
    if (left.count++ == 0) left.first = *moment;
    left.last = *moment;
  }
  return left;
}

LeftOut append_some(const PlainSeries& series, LocalSeconds from, LocalSeconds to, std::size_t most,
                    std::vector<LocalSeconds>& out) {
  if (series.kind != PlainSeries::Kind::steps || series.count > 0) {
    std::vector<LocalSeconds> all;
    if (series.start >= from && series.start < to) all.push_back(series.start);
    append_series(series, from, to, all);
    const std::size_t wanted = std::min(most, all.size());
    out.insert(out.end(), all.begin(), all.begin() + static_cast<std::ptrdiff_t>(wanted));
    if (wanted == all.size()) return {};
    return {static_cast<std::int64_t>(all.size() - wanted), all[wanted], all.back()};
  }
  from = std::max({from, series.start, kFirstRuleSecond});
  to = std::min({to, series.until + 1, kEndOfRules});
  auto at = series.start + ceil_div(from - series.start, series.step) * series.step;
  for (; at < to && most > 0; --most, at += series.step) out.push_back(at);
  if (at >= to) return {};
  const auto steps = (to - 1 - at) / series.step;
  return {steps + 1, at, at + steps * series.step};
}

}  // namespace orvello
