#include <cstdlib>

#include "editor/rule_phrases.h"

namespace orvello {
namespace {

enum class Gender { masculine, feminine, neuter };

constexpr TextView kOf[] = {u"января", u"февраля", u"марта",    u"апреля",  u"мая",    u"июня",
                            u"июля",   u"августа", u"сентября", u"октября", u"ноября", u"декабря"};
constexpr TextView kIn[] = {u"январе", u"феврале", u"марте",    u"апреле",  u"мае",    u"июне",
                            u"июле",   u"августе", u"сентябре", u"октябре", u"ноябре", u"декабре"};

// One, two to four, five and more: "1 день, 2 дня, 5 дней, 21 день".
int plural_form(int count) {
  const int last = count % 10, teens = count / 10 % 10;
  if (teens == 1 || last == 0 || last > 4) return 2;
  return last == 1 ? 0 : 1;
}

struct Unit {
  Gender gender;
  TextView forms[3];  // as after a number
  TextView each;      // "each second": in the accusative
};
constexpr Unit kRussianUnits[] = {
    {Gender::feminine, {u"секунду", u"секунды", u"секунд"}, u"секунду"},
    {Gender::feminine, {u"минуту", u"минуты", u"минут"}, u"минуту"},
    {Gender::masculine, {u"час", u"часа", u"часов"}, u"час"},
    {Gender::masculine, {u"день", u"дня", u"дней"}, u"день"},
    {Gender::feminine, {u"неделю", u"недели", u"недель"}, u"неделю"},
    {Gender::masculine, {u"месяц", u"месяца", u"месяцев"}, u"месяц"},
    {Gender::masculine, {u"год", u"года", u"лет"}, u"год"}};

struct DayWord {
  Gender gender;
  TextView on;    // "on the first ...": in the accusative
  TextView each;  // "on ...s": in the dative's plural
  TextView is;    // "if it is ...": in the nominative
};
constexpr DayWord kDays[] = {
    {Gender::neuter, u"воскресенье", u"воскресеньям", u"воскресенье"},
    {Gender::masculine, u"понедельник", u"понедельникам", u"понедельник"},
    {Gender::masculine, u"вторник", u"вторникам", u"вторник"},
    {Gender::feminine, u"среду", u"средам", u"среда"},
    {Gender::masculine, u"четверг", u"четвергам", u"четверг"},
    {Gender::feminine, u"пятницу", u"пятницам", u"пятница"},
    {Gender::feminine, u"субботу", u"субботам", u"суббота"},
    {Gender::masculine, u"рабочий день", u"рабочим дням", u"рабочий день"},
    {Gender::masculine, u"выходной день", u"выходным дням", u"выходной день"},
    {Gender::masculine, u"день", u"дням", u"день"}};

// The last but one, the last, none, the first to the fifth; in the accusative.
constexpr TextView kMasculine[] = {u"предпоследний", u"последний", u"",          u"первый",
                                   u"второй",        u"третий",    u"четвёртый", u"пятый"};
constexpr TextView kFeminine[] = {u"предпоследнюю", u"последнюю", u"",          u"первую",
                                  u"вторую",        u"третью",    u"четвёртую", u"пятую"};
constexpr TextView kNeuter[] = {u"предпоследнее", u"последнее", u"",          u"первое",
                                u"второе",        u"третье",    u"четвёртое", u"пятое"};

// "второй", "20-ю", "3-е с конца"
Text ordinal(int number, Gender gender) {
  const auto& words = gender == Gender::masculine  ? kMasculine
                      : gender == Gender::feminine ? kFeminine
                                                   : kNeuter;
  if (number >= -2 && number <= 5 && number != 0) return Text(words[number + 2]);
  const TextView ending = gender == Gender::masculine  ? u"й"
                          : gender == Gender::feminine ? u"ю"
                                                       : u"е";
  return format(u"%d-%s%s", std::abs(number), Text(ending), Text(number < 0 ? u" с конца" : u""));
}

// "в" becomes "во" before these.
Text in_front_of(const Text& word) { return (starts_with(word, u"вто") ? u"во " : u"в ") + word; }

class RussianPhrases : public RulePhrases {
 public:
  Text every(Frequency frequency, int interval) const override {
    const Unit& unit = kRussianUnits[static_cast<int>(frequency)];
    const bool feminine = unit.gender == Gender::feminine;
    const Text one = feminine ? u"Каждую " : u"Каждый ";
    if (interval == 1) return one + Text(unit.each);
    const int form = plural_form(interval);
    return (form == 0 ? one : Text(u"Каждые ")) +
           format(u"%d %s", interval, Text(unit.forms[form]));
  }
  Text on_weekdays(const std::vector<int>& weekdays) const override {
    std::vector<Text> pieces;
    for (const int day : weekdays) pieces.emplace_back(kDays[day].each);
    return u" по " + joined(pieces);
  }
  Text on_class(int kind) const override {
    return kind == kNamedAnyDay ? Text(u" во все дни") : u" по " + Text(kDays[kind].each);
  }
  Text on_counted_days(const std::vector<CountedDay>& days) const override {
    std::vector<Text> pieces;
    for (const CountedDay& day : days) {
      const DayWord& word = kDays[day.kind];
      pieces.push_back(in_front_of(ordinal(day.ordinal, word.gender)) + u" " + Text(word.on));
    }
    return u" " + joined(pieces);
  }
  Text on_month_days(const std::vector<int>& days) const override {
    std::vector<Text> dates, others;
    for (const int day : days)
      if (day > 0)
        dates.push_back(format(u"%d-го", day));
      else
        others.push_back(in_front_of(ordinal(day, Gender::masculine)) + u" день");
    if (!dates.empty()) others.insert(others.begin(), joined(dates) + u" числа");
    return u" " + joined(others);
  }
  Text on_clipped_day(int day) const override {
    return format(u" %d-го числа или в последний день", day);
  }
  Text if_weekday(const std::vector<int>& weekdays) const override {
    Text text = u", если это ";
    for (std::size_t i = 0; i < weekdays.size(); ++i)
      text += (i > 0 ? u" или " : u"") + Text(kDays[weekdays[i]].is);
    return text;
  }
  Text on_date(int day, int month) const override {
    return format(u" %d %s", day, Text(kOf[month - 1]));
  }
  Text of_the_year() const override { return u" года"; }
  Text in_months(const std::vector<int>& months, bool of) const override {
    std::vector<Text> pieces;
    for (const int month : months) pieces.emplace_back((of ? kOf : kIn)[month - 1]);
    return (of ? u" " : u" в ") + joined(pieces);
  }
  Text in_weeks(const std::vector<int>& weeks) const override {
    return u" " + all_in_front(weeks, Gender::feminine) + u" неделю года";
  }
  Text on_year_days(const std::vector<int>& days) const override {
    return u" " + all_in_front(days, Gender::masculine) + u" день года";
  }
  Text only_some(const std::vector<int>& positions) const override {
    return u" (из этих дней только " + joined(ordinals(positions, Gender::masculine)) + u")";
  }
  Text at_times(const std::vector<Text>& times) const override { return u" в " + joined(times); }
  Text at_many_times() const override { return u" в определённое время"; }
  Text so_often(int count) const override {
    return format(plural_form(count) == 1 ? u", всего %d раза" : u", всего %d раз", count);
  }
  Text until(const SystemTime& day) const override {
    return format(u" по %d %s %d г.", day.day, Text(kOf[day.month - 1]), day.year);
  }
  Text more_days(int count, bool alone) const override {
    const Text days = format(u"%d %s", count, Text(kRussianUnits[3].forms[plural_form(count)]));
    if (!alone) return u" и ещё " + days;
    return (plural_form(count) == 0 ? u"Только " : u"Отдельные дни: ") + days;
  }
  Text except_days(int count) const override {
    return format(plural_form(count) == 0 ? u", кроме %d дня" : u", кроме %d дней", count);
  }
  Text except_rule(TextView words) const override { return u", кроме: " + Text(words); }
  Text rule_of_its_own() const override { return u"По особому правилу"; }
  TextView conjunction() const override { return u" и "; }

 private:
  static std::vector<Text> ordinals(const std::vector<int>& numbers, Gender gender) {
    std::vector<Text> pieces;
    for (const int number : numbers) pieces.push_back(ordinal(number, gender));
    return pieces;
  }
  Text all_in_front(const std::vector<int>& numbers, Gender gender) const {
    return in_front_of(joined(ordinals(numbers, gender)));
  }
};

}  // namespace

std::unique_ptr<RulePhrases> russian_phrases() { return std::make_unique<RussianPhrases>(); }

}  // namespace orvello
