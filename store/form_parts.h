// The parts of an appointment that a person changes and that two of them may change at once: what
// of a form is written, what was changed elsewhere meanwhile, and how a box names it.
#pragma once

#include "resources/strings.h"
#include "store/appointment_form.h"

namespace orvello {

enum class FormPart {
  subject,
  location,
  times,  // of a series with a pattern they belong to its recurrence
  recurrence,
  reminder,
  privacy,
  status,
  categories,
  attendees,
  notes
};
inline constexpr int kFormParts = 10;

class FormPartSet {
 public:
  constexpr FormPartSet() = default;
  static constexpr FormPartSet all() { return FormPartSet((1u << kFormParts) - 1); }
  constexpr bool empty() const { return bits_ == 0; }
  constexpr bool has(FormPart part) const { return (bits_ & bit_of(part)) != 0; }
  constexpr void set(FormPart part, bool in) {
    bits_ = in ? bits_ | bit_of(part) : bits_ & ~bit_of(part);
  }
  constexpr FormPartSet operator&(FormPartSet other) const {
    return FormPartSet(bits_ & other.bits_);
  }

 private:
  constexpr explicit FormPartSet(std::uint32_t bits) : bits_(bits) {}
  static constexpr std::uint32_t bit_of(FormPart part) {
    return 1u << static_cast<std::uint32_t>(part);
  }
  std::uint32_t bits_ = 0;
};

inline constexpr std::int32_t kPrivateSensitivity = 2;

// How two forms of one appointment differ, as far as that is saved: of one occurrence its file, its
// privacy, the reminder's time, its attendees and the recurrence are those of the series.
FormPartSet differing_parts(const AppointmentForm& form, const AppointmentForm& other);

// "the subject, the times"; for a box.
Text names_of(FormPartSet parts, Language language);

// The fields of these parts as the store has them; attendees and recurrence are no fields.
AppointmentFieldSet fields_in(FormPartSet parts, const AppointmentForm& form);
AppointmentFields fields_of(const AppointmentForm& form, AllDayEnd all_day_end);

// The pattern of a recurring form with the form's times. How many whole days an occurrence lasts is
// told by the pattern's duration, as the form's end date is that of the series.
RecurrencePattern saved_pattern(const AppointmentForm& form);

// Whether the recurrence is set by a pattern; else it is kept as the lines that it has.
inline bool has_pattern(const AppointmentForm& form) {
  return form.recurring && form.rules.empty();
}

}  // namespace orvello
