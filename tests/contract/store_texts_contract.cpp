// What every calendar store gives a search.
#include "tests/contract/calendar_store_contract.h"

namespace orvello::test {
namespace {

constexpr std::int32_t kTextsMonday = 46202;  // 29 June 2026
constexpr CalendarDate kTextsNoon = kTextsMonday + 2.5;

std::string texts_moment(CalendarDate date) {
  if (date == kNoDate) return "none";
  const auto minutes = static_cast<int>(time_of_day(date) * 1440 + 0.5);
  return std::to_string(whole_day(date).number() - kTextsMonday) + "d" +
         std::to_string(minutes / 60);
}

// "subject start-end", a changed occurrence with a star; all texts behind it.
std::vector<std::string> texts_at(StoreApplication& app, CalendarDate now) {
  std::vector<std::string> all;
  const auto folder = app.default_folder(kFolderCalendar);
  std::optional<std::int32_t> at = 0;
  do {
    std::int32_t last = *at;
    at = folder->each_text(*at, now, [&](StoreTexts& texts) {
      const AppointmentSummary& summary = *texts.item.summary;
      EXPECT_GE(summary.oid, last);
      last = summary.oid;
      std::string text = to_utf8(summary.subject) + (texts.changed_occurrence ? "*" : "") + " " +
                         texts_moment(texts.item.start) + "-" + texts_moment(texts.item.end);
      for (const Text& part : {summary.location, summary.categories, texts.body})
        if (!part.empty()) text += " " + to_utf8(part);
      for (const auto& one : texts.recipients) text += " " + to_utf8(one.name + one.address);
      all.push_back(text);
    });
    EXPECT_TRUE(at && (*at == 0 || *at == last));
  } while (at && *at != 0);
  return all;
}

}  // namespace

TEST_P(CalendarStoreContract, TextsAreOfAllItemsAndSeriesStandAtTheirNextOccurrence) {
  EXPECT_TRUE(texts_at(*app_, kTextsNoon).empty());
  const std::int32_t first = add(u"Single", kTextsMonday + 0.375, kTextsMonday + 10 / 24.0);
  auto item = app_->item_from_oid(first);
  AppointmentFields fields;
  ASSERT_TRUE(item->read(fields));
  fields.location = u"place";
  fields.categories = u"label";
  fields.body = u"notes";
  write_all(*item, fields);
  item->set_recipients({{u"Name", u"@address"}});
  ASSERT_TRUE(item->save());
  add(u"Fair", kTextsMonday, kTextsMonday + 1.99, true);
  add_series(u"Ended", weekly(kTextsMonday - 70, 2, 3));
  add_series(u"Later", weekly(kTextsMonday + 700, 2));
  const std::int32_t series = add_series(u"Series", weekly(kTextsMonday - 700, 2));
  for (const auto& [subject, day] : {std::pair{u"Changed", 7}, {u"", 14}}) {
    const auto whole = app_->item_from_oid(series);
    OccurrenceError error = OccurrenceError::none;
    const auto one = whole->pattern()->occurrence(kTextsMonday + day + 0.375, error);
    ASSERT_TRUE(one);
    if (day == 14) {
      ASSERT_TRUE(one->remove());
      continue;
    }
    one->read(fields);
    fields.subject = subject;
    fields.start += 100;
    fields.end += 100;
    fields.body = u"own notes";
    write_all(*one, fields);
    ASSERT_TRUE(one->save());
  }
  EXPECT_EQ(texts_at(*app_, kTextsNoon),
            (std::vector<std::string>{"Single 0d9-0d10 place label notes Name@address",
                                      "Fair 0d0-1d23", "Ended -56d9--56d10", "Later 700d9-700d10",
                                      "Series 21d9-21d10", "Changed* 107d9-107d10 own notes"}));
  EXPECT_EQ(texts_at(*app_, kTextsMonday + 9.5 / 24)[4], "Series 0d9-0d10") << "while it goes on";
  ASSERT_TRUE(app_->item_from_oid(first)->remove());
  EXPECT_EQ(texts_at(*app_, kTextsNoon).size(), 5u);
  EXPECT_EQ(app_->default_folder(kFolderContacts)->each_text(0, kTextsNoon, [](StoreTexts&) {}), 0);
}

}  // namespace orvello::test
