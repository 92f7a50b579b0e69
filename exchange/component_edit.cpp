#include "exchange/component_edit.h"

#include "base/text.h"
#include "exchange/content_line.h"
#include "exchange/event_reader.h"

namespace orvello {
namespace {

std::size_t place_of(std::string_view part, std::string_view text) {
  return static_cast<std::size_t>(part.data() - text.data());
}

// The place of an ATTENDEE's line in the text; nothing of the answer that stood there is left.
std::string answered(const Property& attendee, const Participation& answer) {
  std::string line = "ATTENDEE;PARTSTAT=" + answer.status;
  if (!answer.delegated_to.empty()) line += ";DELEGATED-TO=" + answer.delegated_to;
  for (const std::string_view one : split_values(attendee.parameters, ';')) {
    const std::string_view name = trimmed(one.substr(0, one.find('=')));
    const bool old = equal_ignoring_case(name, "PARTSTAT") ||
                     (!answer.delegated_to.empty() && equal_ignoring_case(name, "DELEGATED-TO"));
    if (!name.empty() && !old) line.append(";").append(one);
  }
  line = folded(line + ":" + std::string(attendee.value));
  line.resize(line.size() - 2);
  return line;
}

}  // namespace

std::string with_property(std::string text, std::string_view name, std::string_view line) {
  ParsedComponent parsed;
  if (!parsed.parse(text, 1)) return text;
  const std::string_view bare = line.substr(0, line.find_last_not_of("\r\n") + 1);
  if (const Property* property = parsed.root().find(name))
    return text.replace(place_of(property->raw, text), property->raw.size(), bare);
  return text.insert(text.find('\n') + 1, std::string(bare) + "\n");
}

bool set_participation(std::string& text, std::string_view address, const Participation& answer) {
  ParsedComponent parsed;
  if (!parsed.parse(text, 1)) return false;
  for (const Property& property : parsed.root().properties) {
    if (!property.named("ATTENDEE") ||
        !equal_ignoring_case(to_utf8(read_recipient(property).address), address))
      continue;
    const std::string line = answered(property, answer);
    text.replace(place_of(property.raw, text), property.raw.size(), line);
    return true;
  }
  return false;
}

void add_attendee(std::string& text, std::string_view line) {
  ParsedComponent parsed;
  if (!parsed.parse(text, 1)) return;
  std::size_t place = text.find('\n') + 1;
  for (const Property& property : parsed.root().properties)
    if (property.named("ATTENDEE"))
      place = text.find('\n', place_of(property.raw, text) + property.raw.size()) + 1;
  text.insert(place, line);
}

}  // namespace orvello
