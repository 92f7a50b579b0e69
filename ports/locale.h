// The user's locale. Called on the user-interface thread; the answer does not change while the
// program runs.
#pragma once

#include "calendar/locale_data.h"

namespace orvello {

class Locale {
 public:
  virtual ~Locale() = default;
  virtual LocaleData data() const = 0;
  // The language of menus, dialogs and strings: true for Russian, false for English.
  virtual bool russian_resources() const = 0;
};

}  // namespace orvello
