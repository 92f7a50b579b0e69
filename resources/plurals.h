// How languages count: "1 day, 2 days". The forms of a text stand in this order, for each family.
#pragma once

namespace orvello {

enum class Plurals {
  one_form,     // Japanese, Chinese, Korean, Vietnamese
  one_or_many,  // English, German, Hebrew: 1, all others
  up_to_one,    // French, Brazilian: 0 and 1, all others
  east_slavic,  // Russian, Ukrainian: 1, 21; 2 to 4, 22 to 24; all others
  polish,       // 1; 2 to 4, 22 to 24; all others
  czech,        // 1; 2 to 4; all others
  arabic,       // 0; 1; 2; 3 to 10, 103 to 110; 11 to 99; all others
};

constexpr int plural_forms(Plurals plurals) {
  switch (plurals) {
    case Plurals::one_form:
      return 1;
    case Plurals::one_or_many:
    case Plurals::up_to_one:
      return 2;
    case Plurals::east_slavic:
    case Plurals::polish:
    case Plurals::czech:
      return 3;
    case Plurals::arabic:
      break;
  }
  return 6;
}

// The number of the form that goes with `count`, from 0.
constexpr int plural_form(Plurals plurals, int count) {
  const int last = count % 10, hundred = count % 100;
  const bool few = last >= 2 && last <= 4 && (hundred < 12 || hundred > 14);
  switch (plurals) {
    case Plurals::one_form:
      return 0;
    case Plurals::one_or_many:
      return count == 1 ? 0 : 1;
    case Plurals::up_to_one:
      return count <= 1 ? 0 : 1;
    case Plurals::east_slavic:
      return last == 1 && hundred != 11 ? 0 : few ? 1 : 2;
    case Plurals::polish:
      return count == 1 ? 0 : few ? 1 : 2;
    case Plurals::czech:
      return count == 1 ? 0 : count >= 2 && count <= 4 ? 1 : 2;
    case Plurals::arabic:
      break;
  }
  if (count <= 2) return count;
  return hundred >= 3 && hundred <= 10 ? 3 : hundred >= 11 ? 4 : 5;
}

}  // namespace orvello
