// Contacts as vCards: what the calendar takes of them, and that the rest comes back.
#include "store/embedded/embedded_store.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class ContactTest : public ExchangeTest {
 protected:
  static std::string card(const std::string& lines) {
    return "BEGIN:VCARD\r\n" + lines + "END:VCARD\r\n";
  }
  // "Last, First|first|middle|last|company|a;b;c|categories" of each, in order of coming.
  static std::string shown(RecordStore& store) {
    auto contacts = store.contacts();
    EXPECT_TRUE(contacts);
    std::sort(contacts->begin(), contacts->end(),
              [](const auto& a, const auto& b) { return a.oid < b.oid; });
    std::string text;
    for (const StoreContact& one : *contacts)
      text += to_utf8(one.file_as + u"|" + one.first_name + u"|" + one.middle_name + u"|" +
                      one.last_name + u"|" + one.company + u"|" + one.email[0] + u";" +
                      one.email[1] + u";" + one.email[2] + u"|" + one.categories + u"\n");
    return text;
  }
  std::string shown() { return shown(store); }
  std::string counted(std::string_view text) {
    const auto preview = preview_files({file_of(text)}, open_input_file, store, clock);
    const auto result = import_text(text);
    EXPECT_EQ(preview.counts, result.counts) << "what was said before";
    return counts_line(result.counts);
  }
  static std::string cards(RecordStore& store) {
    const auto text = export_contacts(store);
    EXPECT_TRUE(text) << text.reason();
    return text ? *text : std::string();
  }
  std::string cards() { return cards(store); }
};

TEST_F(ContactTest, FieldsOfEveryVersionAndItsWriters) {
  struct Case {
    const char* lines;
    const char* fields;
  };
  const Case cases[] = {
      {"VERSION:3.0\r\nN:Berg;Ann;Marie,Eva;Dr.;\r\nFN:Dr. Ann Berg\r\nORG:Acme\\, Ltd;Sales\r\n"
       "EMAIL;TYPE=work:ann@work.org\r\nEMAIL;TYPE=\"home,PREF\":ann@home.org\r\n"
       "CATEGORIES:Friends,Old\\, dear\r\nCATEGORIES:Chess\r\nNOTE:one\\ntwo\r\n",
       "Berg, Ann Marie Eva|Ann|Marie Eva|Berg|Acme, Ltd|ann@home.org;ann@work.org;|"
       "Friends,Old  dear,Chess"},
      {"VERSION:4.0\r\nFN:Ludwig van Beethoven\r\nEMAIL;PREF=20:c@x\r\nEMAIL:d@x\r\n"
       "EMAIL;PREF=1:mailto:a@x\r\nitem1.EMAIL;PREF=\"2\":b@x\r\nitem1.X-ABLABEL:work\r\n",
       "Ludwig van Beethoven|Ludwig van Beethoven||||a@x;b@x;c@x|"},
      {"VERSION:2.1\r\nN;LANGUAGE=ru;CHARSET=windows-1251;ENCODING=QUOTED-PRINTABLE:"
       "=C8=E2=E0=\r\n=ED=EE=E2;=C8=E2=E0=ED;;;\r\nEMAIL;INTERNET;HOME:i@x\r\n"
       "EMAIL;X400:c=ru\r\nEMAIL;PREF;INTERNET:i@work\r\nCATEGORIES:A;B\r\nTEL;CELL:1\r\n",
       "Иванов, Иван|Иван||Иванов||i@work;i@x;|A,B"},
      {"VERSION:2.1\nN;QUOTED-PRINTABLE;CHARSET=UTF-8:=D0=AF=3B;x\nPHOTO;BASE64;JPEG:\n"
       "AAAABBBB\nCCCC==\n\nORG:After the picture\nEND:VCALENDAR\n",
       nullptr},
      {"VERSION:2.1\nN;QUOTED-PRINTABLE;CHARSET=UTF-8:=D0=AF=3B;x\nPHOTO;BASE64;JPEG:\n"
       "AAAABBBB\nCCCC==\n\nORG:After the picture\n",
       "Я;, x|x||Я;|After the picture|;;|"},
      {"VERSION:2.1\r\nN:Boss\r\nAGENT:\r\nBEGIN:VCARD\r\nVERSION:2.1\r\nN:Agent\r\n"
       "EMAIL:no@x\r\nEND:VCARD\r\nEMAIL:boss@x\r\n",
       "Boss|||Boss||boss@x;;|"},
      {"VERSION:3.0\r\nN:;;;;\r\nFN:\r\nORG:Only a company\r\n",
       "Only a company||||Only a company|;;|"},
      {"VERSION:3.0\r\nTEL:+49 1\r\n", "+49 1|||||;;|"},
      {"VERSION:3.0\r\nNOTE:nobody\r\n", nullptr},
  };
  for (const Case& one : cases) {
    store.put_back({});
    const std::string text = card(one.lines);
    const auto result = import_text(text);
    EXPECT_EQ(shown(), one.fields ? one.fields + std::string("\n") : "") << text;
    EXPECT_EQ(result.problems.size(), one.fields ? 0u : 1u) << problems_of(result) << text;
    EXPECT_EQ(count(), 0u);
    if (!one.fields) continue;
    const std::string out = cards();
    EXPECT_EQ(missing(text, out), "") << out;
    EXPECT_EQ(counted(out), "0 imported, 1 updated, 0 skipped") << out;
    EXPECT_EQ(cards(), out);
    EXPECT_EQ(exported().find("CARD"), std::string::npos) << "contacts are no part of a calendar";
  }
}

TEST_F(ContactTest, CharsetsOfRawBytes) {
  const std::string ivan = "\xC8\xE2\xE0\xED\xEE\xE2";  // Windows-1251
  for (const char* charset : {";CHARSET=windows-1251", ""}) {
    store.put_back({});
    const std::string text =
        card("VERSION:2.1\r\nN" + std::string(charset) + ":" + ivan + "\r\nNOTE" + charset + ":" +
             ivan + " \xED\xE0 \xE4\xE0\xF7\xE5" + "\r\n");
    import_text(text);
    EXPECT_EQ(shown(), "Иванов|||Иванов||;;|\n");
    const std::string out = cards();
    EXPECT_NE(out.find("N;CHARSET=UTF-8:Иванов\r\n"), std::string::npos) << out;
    EXPECT_NE(out.find("NOTE;CHARSET=UTF-8:Иванов на даче\r\n"), std::string::npos) << out;
  }
}

TEST_F(ContactTest, AnotherImportUpdatesAndDoublesNothing) {
  const std::string ann = card("VERSION:3.0\r\nUID:urn:uuid:a\r\nFN:Ann\r\nTEL:1\r\n");
  const std::string bob = card("VERSION:3.0\r\nFN:Bob\r\nTEL:2\r\n");
  const std::string other_bob = card("VERSION:3.0\r\nFN:Bob\r\nTEL:3\r\n");
  EXPECT_EQ(counted(ann + bob + other_bob), "3 imported, 0 updated, 0 skipped");
  EXPECT_EQ(counted(ann + bob + other_bob), "0 imported, 3 updated, 0 skipped");
  EXPECT_EQ(counted(other_bob), "0 imported, 1 updated, 0 skipped");
  const std::string out = cards();
  EXPECT_NE(out.find("TEL:2\r\n"), std::string::npos) << "one namesake is not the other";
  store.put_back({});
  EXPECT_EQ(counted(out), "3 imported, 0 updated, 0 skipped");
  EXPECT_EQ(counted(ann + bob + other_bob), "0 imported, 3 updated, 0 skipped") << "of the source";
  // Renamed, under the name that version 4 gives the same UID.
  EXPECT_EQ(counted(card("VERSION:4.0\r\nUID:a\r\nFN:Anna\r\n")),
            "0 imported, 1 updated, 0 skipped");
  EXPECT_EQ(shown().substr(0, shown().find('|')), "Anna");
  const auto twice = import_text(ann + bob + bob + card("UID:a\r\nFN:Eve\r\n") +
                                 card("UID:a\r\nFN:Ann\r\nTEL:4\r\n"));
  EXPECT_EQ(counts_line(twice.counts), "1 imported, 2 updated, 2 skipped");
  EXPECT_EQ(problems_of(twice),
            "12: the same card came before; left out\n"
            "21: a card of the same UID came before; this one takes its place\n");
  EXPECT_NE(cards().find("TEL:4"), std::string::npos);
  // One that came by another way has no UID, and is known by what it says.
  store.put_back({});
  StoreContact typed;
  typed.file_as = u"Berg, Ann";
  typed.first_name = u"Ann";
  typed.last_name = u"Berg";
  typed.email[0] = u"ann@x";
  store.put_contact(typed);
  EXPECT_EQ(cards(), card("VERSION:3.0\r\nN:Berg;Ann;;;\r\nFN:Ann Berg\r\nEMAIL:ann@x\r\n"));
  EXPECT_EQ(counted(cards()), "0 imported, 1 updated, 0 skipped");
  // What is changed here replaces the lines that said it.
  typed.oid = store.contacts()->front().oid;
  typed.company = u"Acme";
  typed.email[0] = u"ann@y";
  store.put_contact(typed);
  const std::string changed = cards();
  EXPECT_NE(changed.find("FN:Ann Berg\r\nEMAIL:ann@y\r\nORG:Acme\r\n"), std::string::npos)
      << changed;
}

TEST_F(ContactTest, ABrokenCardCostsItself) {
  const std::string good = card("VERSION:3.0\r\nFN:Good\r\n"), more = card("FN:More\r\n");
  struct Case {
    std::string between;
    const char* problem;
    int skipped = 1;
  };
  const Case cases[] = {
      {"BEGIN:VCARD\r\nFN:No end\r\n", "5: VCARD has no END; left out\n"},
      {card("FN:x\r\nEND:VEVENT\r\n"), "5: VCARD ends with END:VEVENT; left out\n"},
      {card("VERSION:3.0\r\n"), "5: card without a name; left out\n"},
      {card("FN:Odd\r\nthis is no property\r\n"), "7: line is no property; left out\n", 0},
      {card("FN:x\r\nPHOTO:" + std::string(65 << 20, 'x') + "\r\n"),
       "5: VCARD is too large; left out\n"},
  };
  for (const Case& one : cases) {
    store.put_back({});
    const auto result = import_text(good + one.between + more);
    EXPECT_EQ(problems_of(result), one.problem);
    EXPECT_EQ(result.counts.skipped, one.skipped) << one.problem;
    EXPECT_EQ(result.counts.imported, 3 - one.skipped) << one.problem;
  }
  EXPECT_EQ(problems_of(import_text(good + "BEGIN:VCARD\r\nFN:Cut")),
            "5: VCARD is cut off by the end of the file; left out\n");
  // Beside a calendar, and within one, where it is a part of that.
  store.put_back({});
  const std::string inside = calendar(event("UID:a\r\nDTSTART:20260101T100000\r\n") + more);
  EXPECT_EQ(counted(good + inside), "2 imported, 0 updated, 0 skipped");
  EXPECT_EQ(shown(), "Good|Good||||;;|\n");
  EXPECT_EQ(missing(inside, exported()), "");
  // All or nothing.
  const std::string before = cards();
  for (int call = 1;; ++call) {
    store.faults.call = call;
    if (import_text(more + card("FN:New\r\n")).done) break;
    EXPECT_EQ(cards(), before) << call;
  }
  store.faults.call = 0;
  EXPECT_EQ(store.contacts()->size(), 3u);
}

TEST_F(ContactTest, AnyNumberAndSizeInAFileOnADisk) {
  const auto opened = EmbeddedStore::open(folder / "calendar.db", clock);
  ASSERT_TRUE(opened) << opened.reason();
  EmbeddedStore& disk = **opened;
  const auto imported = [&](const std::string& text) {
    return counts_line(import_files({file_of(text)}, open_input_file, disk, clock).counts);
  };
  EXPECT_EQ(cards(disk), "");
  constexpr int kMany = 3000;
  std::string many;
  for (int i = 0; i < kMany; ++i)
    many += card("VERSION:3.0\r\nUID:" + std::to_string(i) + "\r\nFN:Person " + std::to_string(i) +
                 "\r\nEMAIL:p" + std::to_string(i) + "@x\r\nX-A;P=" + std::string(i % 200, 'y') +
                 ":z\r\n");
  EXPECT_EQ(imported(many), "3000 imported, 0 updated, 0 skipped");
  EXPECT_EQ(missing(many, cards(disk)), "");
  EXPECT_EQ(imported(cards(disk)), "0 imported, 3000 updated, 0 skipped");
  const std::string picture(40 << 20, 'A');  // 30 MB
  const std::string large =
      card("VERSION:3.0\r\nUID:0\r\nFN:Large\r\nPHOTO;ENCODING=b;TYPE=JPEG:" + picture + "\r\n");
  EXPECT_EQ(imported(large), "0 imported, 1 updated, 0 skipped");
  EXPECT_TRUE(cards(disk).starts_with(large));
  EXPECT_EQ(disk.contacts()->size(), std::size_t{kMany});
  const auto foreign = disk.foreign();
  ASSERT_TRUE(foreign);
  EXPECT_TRUE(foreign->empty()) << "cards are the contacts'";
  // A contact takes its card along.
  const auto all = disk.contacts();
  ASSERT_TRUE(all && disk.begin());
  for (const StoreContact& one : *all) ASSERT_TRUE(one.oid <= 2 || disk.erase_contact(one.oid));
  ASSERT_TRUE(disk.commit());
  const auto names = disk.card_names();
  ASSERT_TRUE(names);
  EXPECT_EQ(names->size(), 2u);
}

// Half of the contacts would take the place of a file that had all of them.
TEST_F(ContactTest, AnExportThatCannotReadOneContactFails) {
  import_text(card("VERSION:3.0\r\nUID:1\r\nFN:Ann\r\nNOTE:a\r\n") +
              card("VERSION:3.0\r\nUID:2\r\nFN:Bob\r\nNOTE:b\r\n"));
  const std::string whole = cards();
  int failed = 0;
  for (int nth = 1; nth < 100; ++nth) {
    store.faults.read = nth;
    const auto text = export_contacts(store);
    const bool met = store.faults.read == 0;
    store.faults = {};
    if (!met) break;
    EXPECT_FALSE(text) << nth << "th read";
    ++failed;
  }
  EXPECT_GE(failed, 4) << "contacts, names and two cards";
  EXPECT_EQ(cards(), whole);
}

}  // namespace
}  // namespace orvello
