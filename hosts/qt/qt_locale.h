// The user's locale as the environment states it.
#pragma once

#include <QCollator>
#include <optional>
#include <string>

#include "ports/locale.h"

namespace orvello {

class QtLocale : public Locale {
 public:
  // Names as in the environment ("ru_RU.UTF-8", "C", ""): the one for messages, the one for dates
  // and times, and the one for the order of texts. `russian` overrides the language of the first
  // two; an order without a language is that of the dates.
  QtLocale(const std::string& messages, const std::string& times, std::optional<bool> russian,
           const std::string& order = {});
  // From the process's environment.
  static QtLocale of_environment(std::optional<bool> russian);

  LocaleData data() const override { return data_; }
  int compare(TextView a, TextView b) const override;
  bool russian_resources() const override { return russian_; }

 private:
  bool russian_;
  LocaleData data_;
  QCollator collator_;
};

}  // namespace orvello
