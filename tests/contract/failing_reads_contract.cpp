#include "tests/contract/failing_reads_contract.h"

#include <string>

#include "store/record_appointment.h"
#include "tests/contract/calendar_store_contract.h"

namespace orvello::test {
namespace {

using Store = RecordCalendarStore;
// What was asked, as text; nothing when the store said that it failed.
using Answer = std::optional<std::string>;
struct Question {
  const char* name;
  std::function<Answer(Store&, StoreApplication&)> ask;
};

constexpr std::int32_t kDay = 46205;
constexpr std::int32_t kSingle = 1, kZoned = 2, kSeries = 3;

AppointmentRecord record(std::string uid, std::int32_t day, TextView body) {
  AppointmentRecord one;
  one.uid = std::move(uid);
  one.start = midnight_of(Day(day)) + 9 * 3600;
  one.end = one.start + 1800;
  one.fields.subject = u"subject";
  one.fields.categories = u"Work";
  one.fields.body = body;
  one.recipients = {{u"A", u"a@test"}, {u"B", u"b@test"}};
  one.modified = UtcSeconds(7);
  return one;
}

// Enough that reading it takes many pages.
void fill(Store& store) {
  ASSERT_TRUE(store.begin());
  ASSERT_TRUE(store.put_zone(Zone("Own/Zone", {{{}, 3600, 3600, std::nullopt, {}}})));
  const Text notes(3000, u'n');
  store.put(record("single", kDay, notes));
  auto zoned = record("zoned", kDay, notes);
  zoned.zone = "Own/Zone";
  store.put(zoned);
  auto series = record("series", kDay, notes);
  series.zone = "Own/Zone";
  series.rules = "RRULE:FREQ=DAILY;COUNT=40";
  for (int i = 1; i <= 8; ++i) {
    AppointmentException one;
    one.original_start = series.start + i * kSecondsPerDay;
    one.deleted = i % 3 == 0;
    one.start = one.original_start + 3600;
    one.end = one.start + 60;
    one.zone = series.zone;
    one.fields.subject = u"changed";
    one.fields.body = Text(500, u'c');
    if (!one.deleted) one.recipients = {{u"C", u"c@test"}};
    series.exceptions.push_back(one);
  }
  store.put(series);
  for (int i = 0; i < 12; ++i) store.put(record("other" + std::to_string(i), kDay + i, notes));
  for (int i = 0; i < 12; ++i) {
    StoreContact contact;
    contact.file_as = Text(300, static_cast<char16_t>(u'a' + i % 20));
    contact.categories = u"Label" + to_utf16(std::to_string(i));
    const std::int32_t oid = store.put_contact(contact);
    ASSERT_TRUE(store.put_card({oid, "card" + std::to_string(i), std::string(6000, 'c')}));
    ASSERT_TRUE(store.put_foreign({"key" + std::to_string(i), std::string(900, 'f')}));
  }
  ASSERT_TRUE(store.commit());
}

std::string text_of(const AppointmentRecord& record) {
  // A UID that was made up is another one each time.
  const bool made_up = record.uid.find('@') != std::string::npos;
  std::string text = (made_up ? "" : record.uid) + "/" + record.zone + "/" + record.rules + "/" +
                     to_utf8(record.fields.subject) + std::to_string(record.fields.body.size()) +
                     "/" + std::to_string(record.start.count()) + "+" +
                     std::to_string(record.fields.start);
  for (const auto& one : record.recipients) text += to_utf8(one.name + one.address);
  for (const auto& one : record.exceptions) {
    text += "\n" + std::to_string(one.original_start.count()) + (one.deleted ? "-" : "=") +
            std::to_string(one.fields.start) + "/" + std::to_string(one.fields.body.size());
    for (const auto& other : one.recipients) text += to_utf8(other.name + other.address);
  }
  return text + "\n";
}

Answer whole_text(Store& store) {
  StoreReading reading(store);
  if (!reading) return std::nullopt;
  const auto oids = store.oids({}, {});
  if (!oids) return std::nullopt;
  std::string text;
  for (const std::int32_t oid : *oids) {
    const auto one = store.load(oid);
    if (!one || !*one) return std::nullopt;
    text += text_of(**one);
  }
  return text;
}

std::string text_of(const StoreItem& item) {
  return std::to_string(item.start) + to_utf8(item.summary->subject) + "\n";
}

std::unique_ptr<StoreItems> items_of(StoreApplication& app) {
  const auto folder = app.default_folder(kFolderCalendar);
  auto items = folder ? folder->items() : nullptr;
  if (!items) return nullptr;
  items->set_include_recurrences(true);
  items->sort(u"[Start]", false);
  return items;
}

Answer searched(Store&, StoreApplication& app) {
  const auto items = items_of(app);
  std::string text;
  if (!items || !each_item(*items, u"[Start] >= <46200",
                           [&](const StoreItem& item) { text += text_of(item); }))
    return std::nullopt;
  return text;
}

Answer restricted(Store&, StoreApplication& app) {
  const auto all = items_of(app);
  if (!all) return std::nullopt;
  const auto items = all->restrict_to(u"[Start] >= <46200");
  EXPECT_EQ(items == nullptr, all->failed());
  std::string text;
  if (!each_item(items.get(), [&](const StoreItem& item) { text += text_of(item); }))
    return std::nullopt;
  return text;
}

Answer texts(Store&, StoreApplication& app) {
  const auto folder = app.default_folder(kFolderCalendar);
  if (!folder) return std::nullopt;
  std::string text;
  for (std::optional<std::int32_t> at = 0;;) {
    at = folder->each_text(*at, kDay, [&](const StoreTexts& one) {
      text += text_of(one.item) + std::to_string(one.body.size() + one.recipients.size());
    });
    if (!at) return std::nullopt;
    if (*at == 0) return text;
  }
}

Answer labels(Store&, StoreApplication& app) {
  const auto folder = app.default_folder(kFolderContacts);
  const auto text = folder ? folder->category_text() : std::nullopt;
  return text ? Answer(to_utf8(*text)) : std::nullopt;
}

Answer contacts(Store&, StoreApplication& app) {
  const auto folder = app.default_folder(kFolderContacts);
  const auto list = folder ? folder->contacts() : std::nullopt;
  if (!list) return std::nullopt;
  std::string text;
  for (const StoreContact& one : *list) text += to_utf8(one.file_as + one.categories);
  return text;
}

Answer cards(Store& store, StoreApplication&) {
  const auto names = store.card_names();
  if (!names) return std::nullopt;
  std::string text;
  for (const ContactCard& one : *names) {
    const auto words = store.card_text(one.oid);
    if (!words) return std::nullopt;
    text += one.uid + *words;
  }
  return text;
}

Answer exceptions(Store&, StoreApplication& app) {
  const auto item = app.item_from_oid(kSeries);
  const auto pattern = item ? item->pattern() : nullptr;
  const auto count = pattern ? pattern->exception_count() : std::nullopt;
  if (!count) return std::nullopt;
  std::string text;
  for (int i = 1; i <= *count; ++i) {
    const auto one = pattern->exception(i);
    if (!one) return std::nullopt;
    text += std::to_string(one->original_start) + "=" + std::to_string(one->start) + "\n";
  }
  return text;
}

template <typename Change>
Answer of_occurrence(StoreApplication& app, Change change) {
  const auto item = app.item_from_oid(kSeries);
  const auto pattern = item ? item->pattern() : nullptr;
  if (!pattern) return std::nullopt;
  OccurrenceError error = OccurrenceError::none;
  const auto one = pattern->occurrence(kDay + 10.0 / 24 + 1, error);
  EXPECT_EQ(one == nullptr, error == OccurrenceError::unreadable);
  return one ? change(*one) : std::nullopt;
}

template <typename Change>
Answer of_pattern(StoreApplication& app, Change change) {
  const auto item = app.item_from_oid(kSeries);
  const auto pattern = item ? item->pattern() : nullptr;
  return pattern ? change(*item, *pattern) : std::nullopt;
}

template <typename Change>
Answer of_following(StoreApplication& app, Change change) {
  return of_pattern(app, [&](Appointment&, StorePattern& pattern) {
    OccurrenceError error = OccurrenceError::none;
    const auto rest = pattern.following(kDay + 10.0 / 24 + 1, error);
    EXPECT_EQ(rest == nullptr, error == OccurrenceError::unreadable);
    return rest ? change(*rest) : std::nullopt;
  });
}

RecurrencePattern every_third_day() {
  RecurrencePattern pattern;
  pattern.pattern_start_date = kDay;
  pattern.interval = 3;
  return pattern;
}

Answer done(bool good) { return good ? Answer("done") : std::nullopt; }

const Question kQuestions[] = {
    {"search", searched},
    {"restriction", restricted},
    {"texts", texts},
    {"labels", labels},
    {"contacts", contacts},
    {"cards", cards},
    {"exceptions", exceptions},
    {"everything", [](Store& store, StoreApplication&) { return whole_text(store); }},
    {"days",
     [](Store& store, StoreApplication&) {
       const auto oids = store.oids(Day(kDay), Day(kDay + 3));
       return oids ? Answer(std::to_string(oids->size())) : std::nullopt;
     }},
    {"uid",
     [](Store& store, StoreApplication&) {
       const auto oid = store.oid_of_uid("other9");
       return oid ? Answer(std::to_string(oid->value_or(0))) : std::nullopt;
     }},
    {"zone",
     [](Store& store, StoreApplication&) {
       const auto zone = store.zone("Own/Zone");
       return zone ? Answer(*zone ? "there" : "none") : std::nullopt;
     }},
    {"uses",
     [](Store& store, StoreApplication&) {
       const auto uses = store.category_use_counts();
       return uses ? Answer(std::to_string(uses->size())) : std::nullopt;
     }},
    {"foreign",
     [](Store& store, StoreApplication&) {
       const auto list = store.foreign();
       return list ? Answer(std::to_string(list->size())) : std::nullopt;
     }},
    {"occurrence",
     [](Store&, StoreApplication& app) {
       return of_occurrence(app, [](Appointment& one) {
         AppointmentFields fields;
         one.read(fields);
         return Answer(to_utf8(fields.body) + std::to_string(one.recipients()->size()));
       });
     }},
    {"state",
     [](Store&, StoreApplication& app) {
       const auto item = app.item_from_oid(kSeries);
       const auto state = item ? item->state() : nullptr;
       return state ? Answer(text_of(dynamic_cast<RecordState&>(*state).record)) : std::nullopt;
     }},
    {"pattern",
     [](Store&, StoreApplication& app) {
       const auto item = app.item_from_oid(kSeries);
       const auto pattern = item ? item->pattern() : nullptr;
       const auto fields = pattern ? pattern->fields() : decltype(pattern->fields())::failure("");
       return fields ? Answer(*fields ? "one" : "none") : std::nullopt;
     }},
    {"changes that a pattern would let go",
     [](Store&, StoreApplication& app) {
       return of_pattern(app, [](Appointment&, StorePattern& pattern) {
         const auto lost = pattern.lost_changes(every_third_day());
         return lost ? Answer(std::to_string(*lost)) : std::nullopt;
       });
     }},
    {"what follows",
     [](Store&, StoreApplication& app) {
       return of_following(app, [](Appointment& rest) -> Answer {
         const auto pattern = rest.pattern();
         const auto count = pattern ? pattern->exception_count() : std::nullopt;
         const auto fields = pattern ? pattern->fields() : decltype(pattern->fields())::failure("");
         if (!count || !fields || !*fields) return std::nullopt;
         return std::to_string(*count) + "/" + std::to_string((*fields)->occurrences);
       });
     }},
    // What writes.
    {"divide",
     [](Store&, StoreApplication& app) {
       return of_following(app, [](Appointment& rest) {
         AppointmentFields fields;
         rest.read(fields);
         fields.body = u"new";
         fields.start += 1;
         return done(
             rest.write(fields, {AppointmentField::body, AppointmentField::start}).empty() &&
             rest.save());
       });
     }},
    {"end",
     [](Store&, StoreApplication& app) {
       return of_following(app, [](Appointment& rest) { return done(rest.remove()); });
     }},
    {"another pattern",
     [](Store&, StoreApplication& app) {
       return of_pattern(app, [](Appointment& item, StorePattern& pattern) {
         return done(pattern.set_fields(every_third_day()) && item.save());
       });
     }},
    {"rename",
     [](Store&, StoreApplication& app) {
       const auto item = app.item_from_oid(kZoned);
       if (!item) return Answer();
       AppointmentFields fields;
       item->read(fields);
       fields.subject = u"renamed";
       write_all(*item, fields);
       return done(item->save());
     }},
    {"move a series",
     [](Store&, StoreApplication& app) {
       const auto item = app.item_from_oid(kSeries);
       AppointmentFields fields;
       if (!item || !item->read(fields)) return Answer();
       fields.start += 1 / 24.0;
       return done(item->write(fields, {AppointmentField::start}).empty() && item->save());
     }},
    {"write ink",
     [](Store&, StoreApplication& app) {
       const auto item = app.item_from_oid(kSingle);
       AppointmentFields fields;
       fields.body_ink = "ink";
       return done(item && item->write(fields, {AppointmentField::ink}).empty() && item->save());
     }},
    {"restore",
     [](Store&, StoreApplication& app) {
       const auto item = app.item_from_oid(kSeries);
       const auto state = item ? item->state() : nullptr;
       return done(state &&
                   app.all_or_nothing([&] { return item->remove() && app.restore(*state); }));
     }},
    {"rename a series",
     [](Store&, StoreApplication& app) {
       const auto item = app.item_from_oid(kSeries);
       if (!item) return Answer();
       item->set_recipients({});
       return done(item->save());
     }},
    {"change an occurrence",
     [](Store&, StoreApplication& app) {
       return of_occurrence(app, [](Appointment& one) { return done(one.save()); });
     }},
    {"delete an occurrence",
     [](Store&, StoreApplication& app) {
       return of_occurrence(app, [](Appointment& one) { return done(one.remove()); });
     }},
    {"delete",
     [](Store&, StoreApplication& app) {
       const auto item = app.item_from_oid(kSeries);
       return done(item && item->remove());
     }},
    {"move",
     [](Store&, StoreApplication& app) {
       const auto item = app.item_from_oid(kSingle);
       if (!item) return Answer();
       const auto copy = item->copy();
       return done(app.all_or_nothing([&] { return copy->save() && item->remove(); }));
     }},
    {"import",
     [](Store& store, StoreApplication&) {
       if (!store.begin()) return Answer();
       auto known = store.load(kSeries);
       if (known && *known) (*known)->fields.subject = u"imported";
       const bool good = known && *known && store.put(**known) != 0 &&
                         store.put_zone(Zone("Other/Zone", {{{}, 0, 0, std::nullopt, {}}}));
       if (good) return done(store.commit());
       store.rollback();
       return Answer();
     }},
};

}  // namespace

TEST_P(FailingReads, AreToldWhereverTheyFailAndNothingIsSavedFromThem) {
  TestClock clock;
  const auto place = GetParam()();
  for (const Question& question : kQuestions) {
    SCOPED_TRACE(question.name);
    std::string expected, before, after;
    int told = 0;
    // First without a failure, then with one at each place in turn.
    for (int number = 0;; ++number) {
      auto store = place->filled(clock, fill);
      ASSERT_TRUE(store);
      auto app = store->create_application(false);
      ASSERT_TRUE(app->logon(nullptr));
      place->fail_read(*store, number);
      const Answer answer = question.ask(*store, *app);
      const bool reached = place->reached(*store);
      if (!answer) {
        EXPECT_TRUE(!store->problem().empty() || place->is_silent(number)) << number;
        EXPECT_TRUE(reached);
        ++told;
      }
      place->fail_read(*store, 0);
      app.reset();
      store = place->again(std::move(store), clock);
      const Answer there = whole_text(*store);
      ASSERT_TRUE(there) << store->problem();
      if (number == 0) {
        ASSERT_TRUE(answer) << store->problem();
        expected = *answer;
        after = *there;
        before = *whole_text(*place->filled(clock, fill));
        continue;
      }
      EXPECT_EQ(answer.value_or(expected), expected) << number;
      EXPECT_EQ(*there, answer ? after : before) << number;
      if (!reached || HasFailure()) break;
    }
    EXPECT_TRUE(told > 0 || !place->reads(question.name)) << "no read was made to fail";
  }
}

}  // namespace orvello::test
