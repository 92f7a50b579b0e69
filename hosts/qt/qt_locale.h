// The user's locale as the environment states it.
#pragma once

#include <QCollator>
#include <string>

#include "ports/locale.h"

namespace orvello {

class QtLocale : public Locale {
 public:
  // Names as in the environment ("ru_RU.UTF-8", "C", ""): the one for messages, the one for dates
  // and times, and the one for the order of texts. `language`, a code, overrides that of the first
  // two unless it is empty; an order without a language is that of the dates.
  QtLocale(const std::string& messages, const std::string& times, const std::string& language,
           const std::string& order = {});
  // From the process's environment.
  static QtLocale of_environment(const std::string& language);

  LocaleData data() const override { return data_; }
  int compare(TextView a, TextView b) const override;
  Text language() const override { return language_; }

 private:
  Text language_;
  LocaleData data_;
  QCollator collator_;
};

}  // namespace orvello
