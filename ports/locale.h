// The user's locale. Called on the user-interface thread; the answer does not change while the
// program runs.
#pragma once

#include "base/text.h"
#include "calendar/locale_data.h"

namespace orvello {

class Locale {
 public:
  virtual ~Locale() = default;
  virtual LocaleData data() const = 0;
  // The order of a phone book: below 0 when `a` comes first, above when `b` does, 0 when neither.
  virtual int compare(TextView a, TextView b) const = 0;
  // The code of the language that menus, dialogs and strings are wanted in: "ru", "pt-BR". Texts
  // need not exist in it.
  virtual Text language() const = 0;
};

}  // namespace orvello
