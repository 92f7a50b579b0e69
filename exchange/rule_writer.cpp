#include "exchange/rule_writer.h"

namespace orvello {
namespace {

void make_foreign(Rule& rule, const Moment& start) {
  if (!rule.until || rule.until_is_utc) return;
  if (start.is_date) {
    rule.until_is_date = true;
  } else if (start.zone) {
    rule.until = start.zone->to_utc(*rule.until);
    rule.until_is_date = false;
    rule.until_is_utc = true;
  }
}

}  // namespace

std::string rule_value(const RecurrencePattern& pattern, const Moment& start) {
  Rule rule = rule_from_pattern(pattern);
  make_foreign(rule, start);
  return rule_text(rule);
}

std::string rule_value(std::string_view kept, const Moment& start) {
  Result<Rule> rule = parse_rule(kept);
  if (!rule || !rule->until) return std::string(kept);
  make_foreign(*rule, start);
  return rule_text(*rule);
}

}  // namespace orvello
