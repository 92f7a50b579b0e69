#include "exchange/rule_writer.h"

#include <algorithm>

#include "calendar/rule_text.h"

namespace orvello {
namespace {

void make_foreign(Rule& rule, const Moment& start) {
  if (!rule.until || rule.until_is_utc) return;
  if (start.is_date) {
    rule.until_is_date = true;
  } else if (start.zone) {
    rule.until = local_at_offset(start.zone->to_utc(*rule.until), 0);
    rule.until_is_date = false;
    rule.until_is_utc = true;
  } else {
    rule.until_is_date = false;  // a bare date would end before that day's occurrence for many
  }
}

}  // namespace

std::string rule_value(const RecurrencePattern& pattern, const Moment& start) {
  Rule rule = rule_from_pattern(pattern);
  make_foreign(rule, start);
  return rule_text(rule);
}

std::string with_until(std::string text, const Rule& rule) {
  for (std::size_t i = 0; i + 6 < text.size(); ++i) {
    if (!equal_ignoring_case(std::string_view(text).substr(i, 6), "UNTIL=")) continue;
    const std::size_t end = std::min(text.find(';', i), text.size());
    const std::string until = rule.until_is_date ? day_text(*rule.until) : moment_text(*rule.until);
    text.replace(i + 6, end - i - 6, until + (rule.until_is_utc ? "Z" : ""));
    break;
  }
  return text;
}

std::string rule_value(std::string_view kept, const Moment& start) {
  Result<Rule> rule = parse_rule(kept);
  if (!rule || !rule->until) return std::string(kept);
  make_foreign(*rule, start);
  return with_until(std::string(kept), *rule);
}

}  // namespace orvello
