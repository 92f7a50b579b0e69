// Texts in, records and lines out.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "calendar/rule_text.h"
#include "exchange/content_line.h"
#include "exchange/export.h"
#include "exchange/import.h"
#include "files/input_file.h"
#include "hosts/headless/memory_store.h"
#include "store/restriction.h"
#include "tests/data_path.h"
#include "tests/exchange/eastern_clock.h"
#include "tests/scratch.h"

namespace orvello {

inline std::string data_file(const std::string& name) {
  return std::string(ORVELLO_TEST_DATA) + "/ics/" + name;
}

inline std::vector<std::string> unfolded_lines(std::string_view text) {
  std::vector<std::string> lines;
  std::size_t at = 0;
  for (std::string_view line; next_line(text, at, line);)
    if (!lines.empty() && !line.empty() && (line[0] == ' ' || line[0] == '\t'))
      lines.back() += line.substr(1);
    else if (!line.empty())
      lines.emplace_back(line);
  return lines;
}

class ExchangeTest : public testing::Test {
 protected:
  // In a file of its own, as an import is told file names.
  std::string file_of(std::string_view text, const std::string& name = "input.ics") {
    const std::string path = folder / name;
    put_content(path, std::string(text));
    return path;
  }
  ImportResult import_text(std::string_view text) {
    return import_files({file_of(text)}, open_input_file, store, clock);
  }
  static std::string calendar(std::string_view inside) {
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Sample//EN\r\n" + std::string(inside) +
           "END:VCALENDAR\r\n";
  }
  static std::string event(std::string_view lines) {
    return "BEGIN:VEVENT\r\nDTSTAMP:20260101T000000Z\r\n" + std::string(lines) + "END:VEVENT\r\n";
  }
  std::string exported() {
    const auto text = export_calendar(store, {}, {}, clock);
    EXPECT_TRUE(text) << text.reason();
    return text ? *text : std::string();
  }
  // Lines of `a` that `b` lacks, each as often as it is missing.
  static std::string missing(std::string_view a, std::string_view b) {
    std::vector<std::string> left = unfolded_lines(a), right = unfolded_lines(b), lost;
    std::sort(left.begin(), left.end());
    std::sort(right.begin(), right.end());
    std::set_difference(left.begin(), left.end(), right.begin(), right.end(),
                        std::back_inserter(lost));
    std::string text;
    for (const std::string& line : lost) text += line + "\n";
    return text;
  }
  static const AppointmentRecord* of_uid(std::string_view uid, const MemoryStore& store) {
    for (const auto& [oid, record] : store.contents().records)
      if (record.uid == uid) return &record;
    return nullptr;
  }
  const AppointmentRecord* of_uid(std::string_view uid) const { return of_uid(uid, store); }
  // By hand, as an editor changes it.
  template <typename How>
  void change_of(std::string_view uid, How how) {
    AppointmentRecord record = *of_uid(uid);
    how(record);
    ASSERT_NE(store.put(record), 0) << store.problem();
  }
  // The subjects and starts that the store shows in January and February of 2026.
  std::string shown() {
    const auto app = store.create_application(false);
    EXPECT_TRUE(app->logon(nullptr));
    const auto items = app->default_folder(kFolderCalendar)->items();
    items->set_include_recurrences(true);
    items->sort(u"[Start]", false);
    std::vector<std::string> rows;
    const Text span = restriction_to(day_of(2026, 1, 1), day_of(2026, 2, 28));
    EXPECT_TRUE(each_item(*items, span, [&](const StoreItem& item) {
      rows.push_back(moment_text(to_seconds(item.start)).substr(4, 7) + " " +
                     to_utf8(item.summary->subject));
    }));
    std::sort(rows.begin(), rows.end());
    std::string text;
    for (const std::string& one : rows) text += (text.empty() ? "" : ", ") + one;
    return text;
  }
  std::size_t count() const { return store.contents().records.size(); }
  std::string problems_of(const ImportResult& result) {
    std::string text;
    for (const ImportProblem& problem : result.problems)
      text += std::to_string(problem.line) + ": " + problem.text + "\n";
    return text;
  }

  ScratchFolder folder;
  HeadlessClock clock = eastern_clock();
  MemoryStore store{clock};
};

inline LocalSeconds at(int year, int month, int day, int hour = 0, int minute = 0) {
  return midnight_of(day_of(year, month, day)) + hour * 3600 + minute * 60;
}

}  // namespace orvello
