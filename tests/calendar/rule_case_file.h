// Reads the file of recurrence rules and their instances.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "base/text.h"
#include "calendar/rule.h"
#include "calendar/rule_text.h"
#include "tests/data_path.h"

namespace orvello {

struct RuleCase {
  std::string line;
  Rule rule;
  LocalSeconds start;
  std::vector<LocalSeconds> expected;
  bool ends = false;
};

// A line that cannot be read throws: the test that reads the file then fails.
inline RuleCase read_rule_case(const std::string& line) {
  RuleCase one;
  one.line = line;
  const auto fields = split_bytes(line, '|');
  one.rule = *parse_rule(trimmed(fields.at(1)));
  one.start = parse_moment(trimmed(fields[0])).value();
  std::istringstream words{std::string(fields.at(2))};
  std::string time;
  for (std::string word; words >> word;) {
    if (word == "end") {
      one.ends = true;
      break;
    }
    if (word.size() > 8) time = word.substr(8);
    one.expected.push_back(parse_moment(word.substr(0, 8) + time).value());
  }
  return one;
}

inline std::vector<RuleCase> read_rule_cases() {
  std::ifstream file(ORVELLO_TEST_DATA "/rules.txt");
  std::vector<RuleCase> cases;
  for (std::string line; std::getline(file, line);)
    if (!line.empty() && line[0] != '#') cases.push_back(read_rule_case(line));
  return cases;
}

inline std::string moments_text(const std::vector<LocalSeconds>& moments) {
  std::string text;
  for (LocalSeconds moment : moments) text += moment_text(moment) + " ";
  return text;
}

}  // namespace orvello
