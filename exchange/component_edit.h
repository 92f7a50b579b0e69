// Small changes to the kept text of a component.
#pragma once

#include <string>
#include <string_view>

namespace orvello {

// The text with `line` (with its ending) in the place of the first component's property of that
// name, or behind its first line where it has none. A text that cannot be read stays as it is.
std::string with_property(std::string text, std::string_view name, std::string_view line);

// An attendee's answer: PARTSTAT, and to whom it was delegated ("\"mailto:bob@sample.org\"") or
// empty.
struct Participation {
  std::string status;
  std::string delegated_to;
};

// Sets the answer of the first component's ATTENDEE with that address ("ann@sample.org", in any
// case). False when it has none.
bool set_participation(std::string& text, std::string_view address, const Participation& answer);

// The first component with one more ATTENDEE, behind those that it has.
void add_attendee(std::string& text, std::string_view line);

}  // namespace orvello
