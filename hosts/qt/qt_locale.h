// The user's locale as the environment states it.
#pragma once

#include <optional>
#include <string>

#include "ports/locale.h"

namespace orvello {

class QtLocale : public Locale {
 public:
  // Names as in the environment ("ru_RU.UTF-8", "C", ""): the one for messages and the one for
  // dates and times. `russian` overrides the language of both.
  QtLocale(const std::string& messages, const std::string& times, std::optional<bool> russian);
  // From the process's environment.
  static QtLocale of_environment(std::optional<bool> russian);

  LocaleData data() const override { return data_; }
  bool russian_resources() const override { return russian_; }

 private:
  bool russian_;
  LocaleData data_;
};

}  // namespace orvello
