#include "exchange/charset.h"

#include "tests/exchange/exchange_fixture.h"
#include "tests/exchange/in_charset.h"

namespace orvello {
namespace {

using CharsetImport = ExchangeTest;

TEST(Charset, IsGuessedByWhatTheBytesLookLike) {
  struct Case {
    const char* charset;
    const char* text;
  };
  const Case cases[] = {
      {"Windows-1251", "Встреча"},
      {"Windows-1251", "ВСТРЕЧА"},
      {"Windows-1251", "Обед в «Праге», №5 – Ёлка"},
      {"Windows-1251", "SUMMARY:День рождения, Room 5"},
      {"Windows-1251", "Зустріч із лікарем"},
      {"KOI8-R", "Встреча с врачом"},
      {"KOI8-R", "СОБРАНИЕ ЖИЛЬЦОВ"},
      {"Windows-1252", "Café"},
      {"Windows-1252", "Grüße an Frau Müller, Straße 5"},
      {"Windows-1252", "Übung: Äpfel, Öl"},
      {"Windows-1252", "À bientôt, ça va très bien à l’hôtel"},
      {"Windows-1252", "¿Qué mañana? – “Señor” Å Ørsted"},
      {"Windows-1252", "50 € @ 20°"},
      {"Windows-1250", "Spotkanie z żoną w Łodzi"},
      {"Windows-1250", "Książka, ćwiczenia, Źródło"},
  };
  for (const Case& one : cases)
    EXPECT_EQ(guess_charset(in_charset(one.text, one.charset)), one.charset) << one.text;
}

TEST_F(CharsetImport, DeclaredGuessedAndDamagedTexts) {
  struct Case {
    const char* version;
    std::string summary;  // from behind "SUMMARY"
    const char16_t* subject;
    const char* problems;
  };
  const std::string russian = "Встреча";
  const char* kBad = "5: bytes that are no text are shown as \xEF\xBF\xBD\n";
  const Case cases[] = {
      {"2.0", ";CHARSET=WINDOWS-1251:" + in_charset(russian, "CP1251"), u"Встреча", ""},
      {"2.0", ";CHARSET=cp-1251;LANGUAGE=ru:" + in_charset(russian, "CP1251"), u"Встреча", ""},
      {"2.0", ";CHARSET=ISO-8859-5:" + in_charset(russian, "ISO-8859-5"), u"Встреча", ""},
      {"2.0", ";CHARSET=ISO-8859-1:" + russian, u"Встреча", ""},  // not what it says
      {"2.0", ";CHARSET=x-unknown:" + in_charset(russian, "CP1251"), u"Встреча",
       "5: text is not UTF-8; read as Windows-1251\n"},
      {"2.0", ":" + in_charset(russian, "KOI8-R"), u"Встреча",
       "5: text is not UTF-8; read as KOI8-R\n"},
      {"2.0", ":Встр\xFFеча", u"Встр\uFFFDеча", kBad},
      {"2.0", ":Встреча\xD0", u"Встреча\uFFFD", kBad},
      {"2.0", ":Встр\xD0\r\n \xB5ча", u"Встреча", ""},
      {"1.0",
       ";CHARSET=SHIFT_JIS:"
       "\x95\x5C\x8E\xA6\x82\xB7\x82\xE9",
       u"表示する", ""},
      {"2.0",
       ";CHARSET=ISO-2022-JP:"
       "\x1B$BI=<($9$k\x1B(B",
       u"表示する", ""},
      {"1.0", ";ENCODING=QUOTED-PRINTABLE;CHARSET=KOI8-R:=F7=D3=D4=D2=C5=DE=C1", u"Встреча", ""},
      {"1.0", ";ENCODING=QUOTED-PRINTABLE:=C2=F1=F2=F0=E5=F7=E0", u"Встреча", ""},
      {"1.0", ";ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=D0=92=D1=\r\n=81=D1= \r\n=82=D1=80",
       u"Встр", ""},
      {"2.0",
       ";LANGUAGE=ru;ENCODING=QUOTED-PRINTABLE;CHARSET=windows-1251:=C2=F1=\r\n=F2\\, =F0=0D=0A.",
       u"Вст, р\n.", ""},
      {"1.0", ";ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-16LE:=12=04=41=04", u"Вс", ""},
  };
  for (const Case& one : cases) {
    store.put_back({});
    const auto result = import_text(std::string("BEGIN:VCALENDAR\r\nVERSION:") + one.version +
                                    "\r\nBEGIN:VEVENT\r\nUID:c\r\nSUMMARY" + one.summary +
                                    "\r\nDTSTART:20260701T120000\r\nEND:VEVENT\r\n"
                                    "END:VCALENDAR\r\n");
    EXPECT_EQ(problems_of(result), one.problems) << one.summary;
    ASSERT_TRUE(of_uid("c")) << one.summary;
    EXPECT_EQ(of_uid("c")->fields.subject, one.subject) << one.summary;
    const std::string out = exported();
    EXPECT_TRUE(is_utf8(out));
    store.put_back({});
    import_text(out);
    EXPECT_EQ(of_uid("c")->fields.subject, one.subject) << out;
  }
}

}  // namespace
}  // namespace orvello
