// An import in steps: given up at any of them it leaves nothing, single calendars stay out, and a
// preview says what comes of it.
#include "exchange/import_run.h"

#include <filesystem>

#include "exchange/import_list.h"
#include "exchange/import_recorder.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class ImportRuns : public ExchangeTest {
 protected:
  static std::string look(const MemoryStore& store) {
    std::string all;
    for (const auto& [oid, record] : store.contents().records)
      all += std::to_string(oid) + record.uid + to_utf8(record.fields.subject) +
             moment_text(record.start) + record.residue + "\n";
    for (const ForeignComponent& one : store.contents().foreign) all += one.key + one.text + "\n";
    for (const auto& [oid, card] : store.contents().cards) all += card.text + "\n";
    return all;
  }
  static std::vector<std::string> samples() {
    std::vector<std::string> files;
    for (const auto& one : std::filesystem::directory_iterator(data_file("")))
      files.push_back(one.path().string());
    std::sort(files.begin(), files.end());
    return files;
  }
  std::vector<ImportItem> preview(ImportRequest request, ImportResult* result = nullptr) {
    ImportList list;
    ImportRun run(std::move(request), store, clock, false, &list);
    const ImportResult got = run.finish();
    EXPECT_TRUE(got.done) << got.failure;
    if (result) *result = got;
    return list.take_items();
  }
};

TEST_F(ImportRuns, LeaveNothingWhenTheyAreGivenUpAtAnyStep) {
  import_text(calendar(event("UID:mine\r\nDTSTART:20260105T090000\r\nSUMMARY:Mine\r\n")));
  const std::string before = look(store);
  const ImportRequest request{samples(), open_input_file};
  bool ended = false;
  for (int steps = 0; !ended; steps += 1 + steps / 16) {
    {
      ImportRun run(request, store, clock, true);
      double part = 0;
      for (int i = 0; i < steps && !ended; ++i) {
        ended = !run.step();
        EXPECT_GE(run.progress().part, part - 0.05);
        part = run.progress().part;
      }
      const ImportProgress progress = run.progress();
      EXPECT_LE(progress.done, progress.total);
      if (ended) {
        EXPECT_EQ(part, 1);
        EXPECT_TRUE(progress.exact);
        EXPECT_EQ(progress.done, progress.total);
      }
    }
    EXPECT_EQ(look(store) == before, !ended) << "after " << steps << " steps";
  }
}

// Of what has just been imported, nothing is new or different.
TEST_F(ImportRuns, ArePreviewedAsTheyCome) {
  for (const std::string& file : samples()) {
    SCOPED_TRACE(file);
    ImportResult result;
    const auto first = preview({{file}, open_input_file}, &result);
    const ImportResult imported = import_files({file}, open_input_file, store, clock);
    EXPECT_EQ(result.counts, imported.counts);
    EXPECT_EQ(first.size(),
              static_cast<std::size_t>(imported.counts.imported + imported.counts.updated));
    const auto again = preview({{file}, open_input_file});
    ASSERT_EQ(again.size(), first.size());
    for (std::size_t i = 0; i < first.size(); ++i) {
      const ImportItem &one = first[i], &other = again[i];
      EXPECT_TRUE(one.subject == other.subject && one.start == other.start &&
                  one.recurring == other.recurring && one.all_day == other.all_day);
      EXPECT_EQ(one.change, ImportItem::Change::added);
      EXPECT_EQ(other.change, ImportItem::Change::unchanged) << to_utf8(other.subject);
    }
  }
}

TEST_F(ImportRuns, TellWhatEachItemIsToTheCalendar) {
  import_text(calendar(event("UID:same\r\nDTSTART:20260105T090000\r\nSUMMARY:Same\r\n") +
                       event("UID:moved\r\nDTSTART:20260106T090000\r\nSUMMARY:Moved\r\n") +
                       event("UID:off\r\nDTSTART:20260107T090000\r\nSUMMARY:Off\r\n")));
  const std::string file =
      file_of(calendar(event("UID:new\r\nDTSTART;VALUE=DATE:20260301\r\nRRULE:FREQ=YEARLY\r\n") +
                       event("UID:same\r\nDTSTART:20260105T090000\r\nSUMMARY:Same\r\nX-ODD:1\r\n") +
                       event("UID:moved\r\nDTSTART;TZID=Europe/Berlin:20260206T150000\r\n"
                             "SUMMARY:Moved\r\n") +
                       event("UID:off\r\nDTSTART:20260107T090000\r\nSTATUS:CANCELLED\r\n")) +
              "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Ann\r\nEND:VCARD\r\n");
  std::string told;
  for (const ImportItem& one : preview({{file}, open_input_file}))
    told += moment_text(one.start) + " " + to_utf8(one.subject) + " " +
            std::to_string(static_cast<int>(one.change)) + (one.all_day ? " day" : "") +
            (one.recurring ? " repeats" : "") + (one.contact ? " contact" : "") + "\n";
  EXPECT_EQ(told,
            "20260105T090000 Same 2\n"
            "20260107T090000 Off 3\n"
            "20260206T160000 Moved 1\n"
            "20260301T000000  0 day repeats\n"
            "18991230T000000 Ann 0 contact\n");
}

TEST_F(ImportRuns, LeaveSingleCalendarsOut) {
  const auto named = [](const std::string& name, const std::string& uid) {
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + name +
           event("UID:" + uid + "\r\nDTSTART:20260105T090000\r\n") +
           event("UID:bad" + uid + "\r\nDTSTART:20260231T090000\r\n") + "END:VCALENDAR\r\n";
  };
  const std::string card = "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Ann\r\nEND:VCARD\r\n";
  const std::string both =
      file_of(named("X-WR-CALNAME:Work\r\n", "w") + named("NAME:Home\r\n", "h") +
                  named("X-WR-CALNAME:Work\r\n", "w2") + card,
              "both.ics");
  const std::string other = file_of(named("X-WR-CALNAME:Work\r\n", "o"), "other.ics");
  const auto run = [&](std::set<ImportSource> left_out, bool writes) {
    return ImportRun({{both, other}, open_input_file, std::move(left_out)}, store, clock, writes)
        .finish();
  };
  const auto told = [](const ImportResult& result) {
    std::string text;
    for (const ImportedCalendar& one : result.calendars)
      text += std::to_string(one.source.file) + one.source.name + " " +
              std::to_string(one.counts.imported) + ", ";
    return text + std::to_string(result.counts.imported) + " " +
           std::to_string(result.counts.skipped) + " " + std::to_string(result.problems.size());
  };
  EXPECT_EQ(told(run({}, false)), "0 1, 0Home 1, 0Work 2, 1Work 1, 5 4 4");
  EXPECT_EQ(told(run({{0, "Work"}, {0, ""}}, false)), "0 0, 0Home 1, 0Work 0, 1Work 1, 2 2 2");
  EXPECT_EQ(told(run({{0, "Home"}, {1, "Work"}}, true)), "0 1, 0Home 0, 0Work 2, 1Work 0, 3 2 2");
  EXPECT_TRUE(of_uid("w") && of_uid("w2"));
  EXPECT_EQ(count(), 2u);
  // A change of a stored series is put at the file's end, behind a calendar that is left out.
  import_text(calendar(event("UID:s\r\nDTSTART:20260105T090000\r\nRRULE:FREQ=DAILY\r\n")));
  const std::string change = file_of(
      calendar(event("UID:s\r\nRECURRENCE-ID:20260106T090000\r\nDTSTART:20260106T100000\r\n")) +
      named("NAME:Home\r\n", "h"));
  const ImportResult changed =
      ImportRun({{change}, open_input_file, {{0, "Home"}}}, store, clock, true).finish();
  EXPECT_EQ(changed.counts, (ImportCounts{0, 1, 0}));
  EXPECT_EQ(of_uid("s")->exceptions.size(), 1u);
}

// The next day with something new, also of a series that began long ago.
TEST_F(ImportRuns, FindTheFirstDayWithSomethingNew) {
  import_text(calendar(event("UID:mine\r\nDTSTART:20260605T090000\r\n")));
  const auto first = [&](const std::string& events) {
    FreshAppointments fresh;
    EXPECT_TRUE(
        ImportRun({{file_of(calendar(events))}, open_input_file}, store, clock, true, &fresh)
            .finish()
            .done);
    return fresh.first_day(store, day_of(2026, 6, 1));
  };
  EXPECT_EQ(first(event("UID:mine\r\nDTSTART:20260605T100000\r\n")), std::nullopt);
  EXPECT_EQ(first(event("UID:past\r\nDTSTART:20260531T090000\r\n")), std::nullopt);
  EXPECT_EQ(first(event("UID:far\r\nDTSTART:20310307T090000\r\n") +
                  event("UID:yearly\r\nDTSTART:19980217T090000\r\nRRULE:FREQ=YEARLY\r\n")),
            day_of(2027, 2, 17));
  EXPECT_EQ(
      first(event("UID:long\r\nDTSTART;VALUE=DATE:20260520\r\nDTEND;VALUE=DATE:20260610\r\n")),
      day_of(2026, 6, 1));
  for (int day = 2; day < 30; ++day) {
    const std::string digits = (day < 10 ? "0" : "") + std::to_string(day);
    EXPECT_EQ(first(event("UID:d" + digits + "\r\nDTSTART:202606" + digits + "T090000\r\n")),
              day_of(2026, 6, day));
  }
}

// As a device's own store, which knows patterns alone.
struct PatternsOnly : MemoryStore, RecordLimits {
  using MemoryStore::MemoryStore;
  bool has_place_for(const AppointmentRecord& record) override { return record.rules.empty(); }
};

TEST_F(ImportRuns, LeaveOutWhatTheStoreHasNoPlaceFor) {
  PatternsOnly narrow(clock);
  ImportRecorder recorder(narrow);
  const auto result = import_files(
      {file_of(calendar(
          event("UID:a\r\nDTSTART:20260605T090000\r\nSUMMARY:Fits\r\n") +
          event("UID:b\r\nDTSTART:20260131T090000\r\nRRULE:FREQ=MONTHLY\r\nSUMMARY:Odd\r\n") +
          event("UID:b\r\nRECURRENCE-ID:20260331T090000\r\nDTSTART:20260331T100000\r\n") +
          event("UID:c\r\nDTSTART:20260605T090000\r\nRRULE:FREQ=DAILY\r\n")))},
      open_input_file, recorder, clock);
  EXPECT_TRUE(result.done) << result.failure;
  EXPECT_EQ(result.counts, (ImportCounts{2, 0, 1}));
  EXPECT_EQ(narrow.contents().records.size(), 2u);
  EXPECT_NE(problems_of(result).find("\"Odd\" is nothing that this device's calendar"),
            std::string::npos)
      << problems_of(result);
}

}  // namespace
}  // namespace orvello
