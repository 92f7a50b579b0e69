// The person's locale as the system's settings have it.
#pragma once

#include <string>

#include "ports/locale.h"

namespace orvello {

class Win32Locale : public Locale {
 public:
  // `formats`: a name ("de-DE"), or empty for what the person has chosen, with all that was changed
  // in it by hand. `texts`: the language that the system's own texts are in, likewise. `language`,
  // a code, overrides that of both unless it is empty.
  Win32Locale(const std::string& formats, const std::string& texts, const std::string& language);
  static Win32Locale of_person(const std::string& language) { return {"", "", language}; }

  LocaleData data() const override { return data_; }
  int compare(TextView a, TextView b) const override;
  Text language() const override { return language_; }

 private:
  Text order_;  // the locale that sorts; empty: the person's
  Text language_;
  LocaleData data_;
};

}  // namespace orvello
