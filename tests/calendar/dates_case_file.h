// Reads a file of cases: one a line, "#" starts a comment line.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "calendar/dates.h"
#include "tests/data_path.h"

namespace orvello {

inline std::vector<std::string> case_lines(const std::string& name) {
  std::ifstream file(std::string(ORVELLO_TEST_DATA) + "/" + name);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);)
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  EXPECT_FALSE(lines.empty()) << name;
  return lines;
}

inline MonthDayYear read_date(const std::string& text) {
  MonthDayYear date;
  EXPECT_EQ(std::sscanf(text.c_str(), "%d-%d-%d", &date.year, &date.month, &date.day), 3) << text;
  return date;
}

}  // namespace orvello
